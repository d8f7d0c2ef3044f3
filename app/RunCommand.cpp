#include "app/RunCommand.h"

#include "app/ExitStatus.h"
#include "app/FrameClock.h"
#include "app/Homography.h"
#include "app/InstalledFiles.h"
#include "app/Interrupt.h"
#include "app/RecognitionPlugin.h"
#include "app/RecordView.h"
#include "app/RunParameters.h"
#include "app/RunSession.h"
#include "app/StreamRedirection.h"
#include "app/TemporaryFile.h"
#include "types/NumberText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace scenariomatch
{

namespace
{

// The parameters that name files which must be there.
constexpr std::array<const char*, 4> kNeededFiles{
    "scenarioRecognitionModelFileName",
    "scenarioRecognitionObjectDescription",
    "scenarioRecognitionOperatorDescription",
    "RHMContext"};

// Why a run ends before its time.
struct RunFault
{
    int status;
    std::string reason;
};

std::string systemReason()
{
    return std::generic_category().message(errno);
}

void addTrackOptions(CLI::App& command, RunOptions& options)
{
    const std::map<std::string, TrackFormat> formats{
        {"auto", TrackFormat::Auto},
        {"jsonl", TrackFormat::JsonLines},
        {"mot", TrackFormat::Mot},
        {"cvml", TrackFormat::Cvml},
        {"trajectory", TrackFormat::Trajectory}};
    command.add_option("--tracks", options.tracks, "Tracks, plain or gzip; - is standard input")
        ->required();
    command
        .add_option(
            "--format",
            options.format,
            "auto (default: told by the content), jsonl, mot, cvml or trajectory")
        ->transform(CLI::CheckedTransformer(formats).description(""))
        ->type_name("FORMAT");
    command
        .add_option("--fps", options.framesPerSecond, "Frames per second of tracks without a clock")
        ->check(CLI::PositiveNumber);
    command
        .add_option(
            "--start",
            options.start,
            "Time of the first frame of tracks without a clock (2000-01-01T00:00:00)")
        ->type_name("TIME");
    command
        .add_option(
            "--scale", options.scale, "Multiplies positions and sizes; 0.01 makes metres of cm")
        ->check(CLI::PositiveNumber);
    command.add_option(
        "--homography",
        options.homography,
        "OpenCV file with a 3x3 matrix from pixels to metres on the ground");
    command.add_option("--type", options.type, "Type of objects whose tracks name none (PERSON)")
        ->type_name("NAME");
    command.add_flag("--strict", options.isStrict, "Stop at the first malformed line (status 4)");
}

void addParameterOptions(CLI::App& command, RunOptions& options)
{
    command.add_option("--params", options.parameterFile, "Parameter file (OpenCV's YAML or XML)")
        ->required();
    command
        .add_option(
            "--set", options.settings, "Set a parameter; wins over the file, may be repeated")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    command
        .add_option(
            "--common-path",
            options.commonPath,
            "Put before the file names in the parameter file instead of its own folder")
        ->type_name("PREFIX");
}

void addOutputOptions(CLI::App& command, RunOptions& options)
{
    const std::map<std::string, EventFormat> formats{
        {"jsonl", EventFormat::JsonLines}, {"csv", EventFormat::Csv}, {"text", EventFormat::Text}};
    const std::map<std::string, ProgressMode> modes{
        {"auto", ProgressMode::Auto}, {"on", ProgressMode::On}, {"off", ProgressMode::Off}};
    command.add_option(
        "--events", options.events, "File for the events; - (default) is standard output");
    command.add_option("--events-format", options.eventFormat, "jsonl (default), csv or text")
        ->transform(CLI::CheckedTransformer(formats).description(""))
        ->type_name("FORMAT");
    command.add_flag(
        "--every-frame",
        options.isEveryFrame,
        "Write an event in every frame that it is recognised in, not once when it is over");
    command.add_option(
        "--trace", options.trace, "File for the plug-in's traces (dropped otherwise)");
    command.add_option("--progress", options.progress, "auto (default: on a terminal), on or off")
        ->transform(CLI::CheckedTransformer(modes).description(""))
        ->type_name("MODE");
    command.add_flag(
        "--stats", options.hasStatistics, "Write figures of the run to standard error");
}

// One run, step by step; every step leaves the fault behind when it fails.
class Run
{
public:
    Run(const RunOptions& options, std::ostream& out, std::ostream& talk)
        : m_options(options)
        , m_talk(talk)
        , m_data(out.rdbuf())
        , m_problems(
              options.tracks == "-" ? "standard input" : options.tracks,
              talk,
              TrackProblemOptions{.isStrict = options.isStrict})
    {
    }

    // The exit status.
    int perform();

private:
    bool fail(int status, const std::string& reason);

    bool prepareReader();
    bool prepareGround(TrackReaderOptions& readerOptions);
    bool prepareParameters();
    bool checkFiles();
    bool openOutputs();
    bool prepareProcess();
    bool applySetters();
    bool initProcess();
    bool recognise();
    bool recogniseFrames(RunSession& session);
    bool judgeReading();
    bool hasProgress() const;
    std::size_t lineOf(const std::string& key) const;

    const RunOptions& m_options;
    std::ostream& m_talk;
    // Writes to the caller's stream, also while that one is redirected.
    std::ostream m_data;
    std::ofstream m_eventFile;
    std::ofstream m_traceFile;
    TrackProblems m_problems;
    std::unique_ptr<TrackReader> m_reader;
    StorageFile m_file;
    RunParameterSources m_sources;
    RunParameters m_parameters;
    std::unique_ptr<rhmAbstractProcessEventRecognition> m_process;
    RunStatistics m_statistics;
    std::optional<RunFault> m_fault;
};

int Run::perform()
{
    if (prepareParameters() && checkFiles() && prepareReader() && openOutputs()) {
        // From here on the plug-in's code runs, which writes to standard output as it likes.
        const StreamRedirection redirection(
            std::cout, m_options.trace.empty() ? nullptr : m_traceFile.rdbuf());
        if (prepareProcess()) {
            recognise();
        }
        // Ending the process closes its event file.
        m_process.reset();
    }
    m_problems.printSummary();
    if (m_fault) {
        m_talk << "scenariomatch run: " << m_fault->reason << '\n';
        return m_fault->status;
    }
    return kExitDone;
}

// Keeps the first fault; always false.
bool Run::fail(int status, const std::string& reason)
{
    if (!m_fault) {
        m_fault = {status, reason};
    }
    return false;
}

bool Run::prepareParameters()
{
    m_sources.file = m_options.parameterFile;
    m_sources.commonPath = m_options.commonPath;
    m_sources.operatorFolder = installedOperatorFolder().string();
    m_sources.operatorDescription = installedVocabulary().string();
    for (const std::string& text : m_options.settings) {
        const std::optional<NamedText> setting = parseSetting(text);
        if (!setting) {
            return fail(kExitUsage, "--set needs KEY=VALUE, not \"" + text + "\"");
        }
        m_sources.settings.push_back(*setting);
    }
    std::string error;
    std::optional<StorageFile> file = readStorageFile(m_options.parameterFile, error);
    if (!file) {
        return fail(kExitModel, error);
    }
    m_file = *std::move(file);
    std::optional<RunParameters> parameters = mergeParameters(m_file, m_sources, error);
    if (!parameters) {
        return fail(kExitUsage, "--set: " + error);
    }
    m_parameters = *std::move(parameters);
    return true;
}

// A missing file would only be told of in the traces, or not at all.
bool Run::checkFiles()
{
    for (const char* key : kNeededFiles) {
        const std::string name = m_parameters.value(key).value_or("");
        if (!name.empty() && !std::ifstream(name).good()) {
            return fail(kExitModel, fmt::format("{} ({}): {}", name, key, systemReason()));
        }
    }
    if (m_parameters.value("scenarioRecognitionModelFileName").value_or("").empty()) {
        return fail(
            kExitModel, m_options.parameterFile + ": scenarioRecognitionModelFileName is missing");
    }
    std::error_code error;
    const std::string folder = m_parameters.value("OperatorPluginPath").value_or("");
    if (!std::filesystem::is_directory(folder, error)) {
        return fail(kExitPlugin, folder + " (OperatorPluginPath): there is no such folder");
    }
    return true;
}

bool Run::prepareReader()
{
    TrackReaderOptions readerOptions;
    readerOptions.format = m_options.format;
    readerOptions.framesPerSecond = m_options.framesPerSecond;
    readerOptions.defaultType = m_options.type;
    if (!m_options.start.empty()) {
        const std::optional<TrackClock> start = parseClock(m_options.start);
        if (!start) {
            return fail(
                kExitUsage,
                "--start needs a time such as 2026-05-04T10:00:00, not \"" + m_options.start +
                    "\"");
        }
        readerOptions.start = *start;
    }
    if (!prepareGround(readerOptions)) {
        return false;
    }
    TrackFailure failure;
    m_reader = openTracks(m_options.tracks, readerOptions, m_problems, failure);
    if (!m_reader) {
        return fail(
            failure.isUsage ? kExitUsage : kExitTracks, m_options.tracks + ": " + failure.reason);
    }
    return true;
}

bool Run::prepareGround(TrackReaderOptions& readerOptions)
{
    std::optional<GroundMapper::Matrix> homography;
    if (!m_options.homography.empty()) {
        std::string error;
        homography = readHomography(m_options.homography, error);
        if (!homography) {
            return fail(kExitModel, error);
        }
    }
    readerOptions.ground = GroundMapper(m_options.scale, homography);
    return true;
}

bool Run::openOutputs()
{
    if (m_options.events != "-") {
        m_eventFile.open(m_options.events, std::ios::binary | std::ios::trunc);
        if (!m_eventFile) {
            return fail(kExitOutput, m_options.events + ": " + systemReason());
        }
        m_data.rdbuf(m_eventFile.rdbuf());
    }
    if (!m_options.trace.empty()) {
        m_traceFile.open(m_options.trace, std::ios::binary | std::ios::trunc);
        if (!m_traceFile) {
            return fail(kExitOutput, m_options.trace + ": " + systemReason());
        }
    }
    return true;
}

bool Run::prepareProcess()
{
    std::string error;
    m_process = createRecognitionProcess(installedPluginPath(), error);
    if (!m_process) {
        return fail(kExitPlugin, error);
    }
    return applySetters() && initProcess();
}

bool Run::applySetters()
{
    for (const NamedText& setter : m_parameters.setters) {
        const auto& [key, value] = setter;
        if (m_process->setParameter(key, value)) {
            continue;
        }
        const bool isKnown = m_process->parameter(key).has_value();
        const std::string reason = isKnown ? fmt::format("{} cannot be \"{}\"", key, value)
                                           : fmt::format("there is no parameter \"{}\"", key);
        const bool isSetting = std::any_of(
            m_sources.settings.begin(),
            m_sources.settings.end(),
            [&setter](const NamedText& other) { return other.first == setter.first; });
        if (isSetting) {
            return fail(kExitUsage, "--set: " + reason);
        }
        m_talk << m_options.parameterFile << ':' << lineOf(key) << ": warning: " << reason << '\n';
    }
    return true;
}

bool Run::initProcess()
{
    const TemporaryFile file("scenariomatch-", ".yml", m_parameters.text);
    if (!file.isGood()) {
        return fail(kExitOutput, file.path() + ": the parameters cannot be written");
    }
    std::set<std::string> given;
    for (const NamedText& value : m_parameters.values) {
        given.insert(value.first);
    }
    for (const NamedText& setter : m_parameters.setters) {
        given.erase(setter.first);
    }
    m_process->setParameterFile(file.path());
    std::ostream trace(std::cout.rdbuf());
    MissingParameterFilter filter(given, *std::cerr.rdbuf(), trace);
    const StreamRedirection redirection(std::cerr, &filter);
    if (!m_process->init()) {
        return fail(kExitModel, m_options.parameterFile + ": the process cannot be initialised");
    }
    return true;
}

bool Run::recognise()
{
    const RecordView records(*m_process);
    const auto* view = dynamic_cast<const RecognitionView*>(m_process.get());
    if (view != nullptr && view->counters().models == 0) {
        return fail(kExitModel, m_options.parameterFile + ": no model takes part in recognition");
    }
    view = view == nullptr ? &records : view;
    const std::string prolongation = m_process->parameter("constProlongation").value_or("0");
    const std::unique_ptr<EventWriter> writer = makeEventWriter(m_options.eventFormat, m_data);
    CountingEventWriter counter(*writer, m_statistics);
    EventCollector collector(
        counter,
        stringToDouble(prolongation),
        m_options.isEveryFrame ? EventCollector::Reporting::EveryFrame
                               : EventCollector::Reporting::WhenOver);
    RunSession session(*m_process, *view, collector, m_statistics);
    recogniseFrames(session);
    collector.finish();
    m_data.flush();
    if (!m_data) {
        const std::string name = m_options.events == "-" ? "standard output" : m_options.events;
        fail(kExitOutput, name + ": the events cannot be written");
    }
    if (m_options.hasStatistics) {
        m_statistics.print(m_talk);
    }
    return judgeReading();
}

bool Run::recogniseFrames(RunSession& session)
{
    std::optional<ProgressBar> bar;
    if (hasProgress()) {
        bar.emplace(m_talk);
    }
    TrackFrame frame;
    while (m_data && !isInterrupted() && m_reader->next(frame)) {
        session.addFrame(frame);
        m_data.flush();
        if (bar) {
            bar->show(m_statistics.frames(), m_reader->progress());
        }
    }
    return m_data.good();
}

// What the tracks were like, once the events are written.
bool Run::judgeReading()
{
    const std::optional<TrackFailure>& failure = m_reader->failure();
    if (failure) {
        return fail(
            failure->isUsage ? kExitUsage : kExitTracks, m_options.tracks + ": " + failure->reason);
    }
    if (m_problems.isStopped()) {
        return fail(kExitTracks, m_options.tracks + ": stopped at the first problem");
    }
    if (m_statistics.frames() == 0 && m_problems.total() > 0) {
        return fail(kExitTracks, m_options.tracks + ": there is no frame that can be used");
    }
    if (isInterrupted()) {
        m_talk << "scenariomatch run: interrupted; the events so far are written\n";
    }
    return true;
}

bool Run::hasProgress() const
{
    return m_options.progress == ProgressMode::On ||
           (m_options.progress == ProgressMode::Auto && ::isatty(STDERR_FILENO) == 1);
}

std::size_t Run::lineOf(const std::string& key) const
{
    const auto found = std::find_if(
        m_file.entries.begin(), m_file.entries.end(), [&key](const StorageEntry& entry) {
            return entry.key == key;
        });
    return found == m_file.entries.end() ? 0 : found->line;
}

} // namespace

CLI::App* addRunCommand(CLI::App& program, RunOptions& options)
{
    CLI::App* const command = program.add_subcommand("run", "Recognise events in tracks");
    addParameterOptions(*command, options);
    addTrackOptions(*command, options);
    addOutputOptions(*command, options);
    command->footer("Examples:\n"
                    "  scenariomatch synth examples/lobby/scenes/bag.yaml --output bag.jsonl\n"
                    "  scenariomatch run --params examples/lobby/lobby.yaml --tracks bag.jsonl "
                    "--events-format text");
    return command;
}

int runRun(const RunOptions& options, std::ostream& out, std::ostream& talk)
{
    catchInterrupt();
    Run run(options, out, talk);
    return run.perform();
}

} // namespace scenariomatch
