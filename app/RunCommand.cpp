#include "app/RunCommand.h"

#include "app/ExitStatus.h"
#include "app/FrameClock.h"
#include "app/Homography.h"
#include "app/InstalledFiles.h"
#include "app/Interrupt.h"
#include "app/ObjectTypeCheck.h"
#include "app/OperatorsCommand.h"
#include "app/RecognitionPlugin.h"
#include "app/RecordView.h"
#include "app/RunFiles.h"
#include "app/RunParameters.h"
#include "app/RunSession.h"
#include "app/StreamRedirection.h"
#include "app/TemporaryFile.h"
#include "host/rhmDataContext.h"
#include "types/CAllClasses.h"
#include "types/NumberText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iostream>
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

constexpr const char* kAlarmLevel = "XML3AlarmLevel";

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
    bool checkOperators();
    bool checkContext();
    bool checkOutputs();
    void warnOfParameters();
    void warnOfObjectTypes();
    bool openOutputs();
    bool prepareProcess();
    bool applySetters();
    bool initProcess();
    bool recognise();
    bool printPlans();
    const RecognitionView* ownView() const;
    bool checkModels();
    bool recogniseFrames(RunSession& session);
    bool judgeReading();
    bool judgeEventFile();
    bool hasProgress() const;
    bool hasEventFile() const;
    std::string textOf(const std::string& key) const;

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
    if (prepareParameters() && checkFiles() && checkOutputs() && prepareReader() && openOutputs()) {
        warnOfParameters();
        warnOfObjectTypes();
        // From here on the plug-in's code runs, which writes to standard output as it likes.
        const StreamRedirection redirection(
            std::cout, m_options.trace.empty() ? nullptr : m_traceFile.rdbuf());
        if (prepareProcess() && checkModels()) {
            m_options.isPlan ? printPlans() : recognise();
        }
        // Ending the process closes its event file.
        m_process.reset();
        judgeEventFile();
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
    if (m_options.isPlan) {
        // The last setting wins. The process empties the file that is named, whether it is to be
        // written or not, and an earlier one is to stay.
        m_sources.settings.emplace_back("saveXML3File", "false");
        m_sources.settings.emplace_back("XML3FileName", "/dev/null");
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
        const std::string name = textOf(key);
        if (!name.empty() && !std::ifstream(name).good()) {
            return fail(kExitModel, fmt::format("{} ({}): {}", name, key, systemReason()));
        }
    }
    if (textOf("scenarioRecognitionModelFileName").empty()) {
        return fail(
            kExitModel, m_options.parameterFile + ": scenarioRecognitionModelFileName is missing");
    }
    return checkOperators() && checkContext();
}

bool Run::checkOperators()
{
    std::error_code error;
    const std::string folder = textOf("OperatorPluginPath");
    if (!std::filesystem::is_directory(folder, error)) {
        return fail(kExitPlugin, folder + " (OperatorPluginPath): there is no such folder");
    }
    const OperatorFolder found = inspectOperatorFolder(folder);
    const std::string hint = fmt::format("`scenariomatch operators --path {}` says why", folder);
    if (!found.hasPlugin && found.skipped.empty()) {
        return fail(kExitPlugin, "no operators in " + folder + " (OperatorPluginPath)");
    }
    if (!found.hasPlugin) {
        const SkippedModule& first = found.skipped.front();
        return fail(
            kExitPlugin,
            fmt::format(
                "no operators in {} (OperatorPluginPath); {}: {}; {}",
                folder,
                first.file,
                first.reason,
                hint));
    }
    if (!found.skipped.empty()) {
        m_talk << fmt::format(
            "scenariomatch run: files of {} (OperatorPluginPath) are skipped: {}; {}\n",
            folder,
            found.skipped.size(),
            hint);
    }
    return true;
}

// The process would go on without a context that cannot be read.
bool Run::checkContext()
{
    const std::string name = textOf("RHMContext");
    rhmDataContext context;
    if (name.empty() || context.read(QString::fromStdString(name))) {
        return true;
    }
    return fail(
        kExitModel,
        context.errors().empty() ? name + ": no context" : context.errors().back().text());
}

// No output may destroy what the run reads, or another output.
bool Run::checkOutputs()
{
    std::vector<RunFile> read{
        {"--tracks", m_options.tracks == "-" ? "/dev/stdin" : m_options.tracks},
        {"--params", m_options.parameterFile},
        {"--homography", m_options.homography}};
    for (const char* key : kNeededFiles) {
        read.push_back({key, textOf(key)});
    }
    const std::string events = m_options.events == "-" ? "/dev/stdout" : m_options.events;
    const std::string eventFile = textOf("XML3FileName");
    const std::string clash = clashOf(
        read, {{"--events", events}, {"--trace", m_options.trace}, {"XML3FileName", eventFile}});
    if (!clash.empty()) {
        return fail(kExitUsage, clash);
    }
    if (hasEventFile() && eventFile.empty()) {
        return fail(kExitUsage, "saveXML3File needs a file name: XML3FileName is missing");
    }
    return true;
}

// What the process takes in its own way without a word.
void Run::warnOfParameters()
{
    const std::string warning = alarmLevelWarning(textOf(kAlarmLevel));
    if (warning.empty()) {
        return;
    }
    const std::string place =
        m_sources.hasSetting(kAlarmLevel)
            ? "scenariomatch run: --set"
            : fmt::format("{}:{}", m_options.parameterFile, m_file.lineOf(kAlarmLevel));
    m_talk << place << ": warning: " << warning << '\n';
}

void Run::warnOfObjectTypes()
{
    const std::string name = textOf("scenarioRecognitionObjectDescription");
    if (name.empty()) {
        return;
    }
    CAllClasses types;
    types.read(name);
    for (const std::string& warning : objectTypeWarnings(name, types.m_classes)) {
        m_talk << warning << '\n';
    }
}

bool Run::prepareReader()
{
    if (m_options.isPlan) {
        return true;
    }
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
    if (m_options.events != "-" && !m_options.isPlan) {
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
    const std::string eventFile = textOf("XML3FileName");
    if (hasEventFile() && !isWritable(eventFile)) {
        return fail(kExitOutput, eventFile + " (XML3FileName): " + systemReason());
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
        if (m_sources.hasSetting(key)) {
            return fail(kExitUsage, "--set: " + reason);
        }
        m_talk << m_options.parameterFile << ':' << m_file.lineOf(key) << ": warning: " << reason
               << '\n';
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

// Null where the process has none.
const RecognitionView* Run::ownView() const
{
    return dynamic_cast<const RecognitionView*>(m_process.get());
}

bool Run::checkModels()
{
    const RecognitionView* const view = ownView();
    if (view != nullptr && view->counters().models == 0) {
        return fail(kExitModel, m_options.parameterFile + ": no model takes part in recognition");
    }
    return true;
}

bool Run::printPlans()
{
    const RecognitionView* const view = ownView();
    if (view == nullptr) {
        return fail(kExitPlugin, "the plug-in does not tell how it matches models");
    }
    view->printPlans(m_data);
    m_data.flush();
    return m_data.good() || fail(kExitOutput, "standard output: the plan cannot be written");
}

bool Run::recognise()
{
    const RecordView records(*m_process);
    const RecognitionView* const view = ownView() == nullptr ? &records : ownView();
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

// The process does not say when its event file cannot be written.
bool Run::judgeEventFile()
{
    const std::string name = textOf("XML3FileName");
    if (!hasEventFile() || hasArrived(name, "</Tarvos>\n")) {
        return true;
    }
    return fail(kExitOutput, name + " (XML3FileName): the events cannot be written");
}

bool Run::hasProgress() const
{
    return m_options.progress == ProgressMode::On ||
           (m_options.progress == ProgressMode::Auto && ::isatty(STDERR_FILENO) == 1);
}

bool Run::hasEventFile() const
{
    return textOf("saveXML3File") == "true";
}

// Empty when the parameter is given nowhere.
std::string Run::textOf(const std::string& key) const
{
    return m_parameters.value(key).value_or("");
}

} // namespace

int runRun(const RunOptions& options, std::ostream& out, std::ostream& talk)
{
    catchInterrupt();
    Run run(options, out, talk);
    return run.perform();
}

} // namespace scenariomatch
