#include "app/report/ReportCommand.h"

#include "app/ExitStatus.h"
#include "app/HelpFooter.h"
#include "app/Interrupt.h"
#include "app/OptionChecks.h"
#include "app/Replay.h"
#include "app/report/EventFile.h"
#include "app/report/ReportSetup.h"
#include "app/RunFiles.h"
#include "app/StreamRedirection.h"

#include <fmt/format.h>
#include <iostream>
#include <utility>

namespace scenariomatch
{

namespace
{

// One report, step by step; every step leaves the fault behind when it fails.
class Report
{
public:
    Report(const ReportCommandOptions& options, std::ostream& talk)
        : m_options(options)
        , m_talk(talk)
        , m_replay(options.input, "report", talk)
    {
    }

    // The exit status.
    int perform();

private:
    bool fail(const std::optional<RunFault>& fault);
    bool checkOutput();
    bool readEvents();
    bool recognise();

    const ReportCommandOptions& m_options;
    std::ostream& m_talk;
    Replay m_replay;
    std::optional<ScenePicture> m_picture;
    std::optional<std::vector<ReportedEvent>> m_events;
};

int Report::perform()
{
    const bool isReady = !fail(faultOfReports()) &&
                         !fail(readPicture(m_options.input.scene, m_picture)) && readEvents() &&
                         m_replay.prepare() && checkOutput();
    if (isReady) {
        m_replay.setup().warn();
        // From here on the plug-in's code runs, which writes to standard output as it likes.
        const StreamRedirection redirection(std::cout, nullptr);
        recognise();
        m_replay.end();
    }
    return m_replay.report();
}

// Whether there is one.
bool Report::fail(const std::optional<RunFault>& fault)
{
    if (fault) {
        m_replay.fail(fault->status, fault->reason);
    }
    return fault.has_value();
}

bool Report::readEvents()
{
    if (m_options.events.empty()) {
        return true;
    }
    EventReading reading = readEventFile(m_options.events);
    if (reading.problem) {
        return m_replay.fail(kExitModel, *reading.problem);
    }
    m_events = std::move(reading.events);
    return true;
}

// The page may not destroy what it is made from.
bool Report::checkOutput()
{
    const RunOptions& input = m_options.input;
    std::vector<RunFile> read{
        {"--tracks", input.tracks == "-" ? "/dev/stdin" : input.tracks},
        {"--params", input.parameterFile},
        {"--homography", input.homography},
        {"--events", m_options.events},
        {"--background", input.scene.background}};
    for (const RunFile& file : m_replay.setup().neededFiles()) {
        read.push_back(file);
    }
    const std::string clash = clashOf(read, {{"--output", m_options.output}});
    if (!clash.empty()) {
        return m_replay.fail(kExitUsage, clash);
    }
    return !fail(faultOfOutput(m_options.output));
}

bool Report::recognise()
{
    if (!m_replay.start()) {
        return false;
    }
    ReportTerms terms = reportTerms(m_options.input, m_replay.setup(), m_replay.process());
    terms.picture = std::move(m_picture);
    terms.events = std::move(m_events);
    ReportRecorder recorder(m_replay.view(), std::move(terms));
    const bool isShown = m_replay.showFrames(
        [](const TrackFrame& /*next*/) { return false; },
        [&recorder](const TrackFrame& frame) { recorder.addFrame(frame); });
    if (!isShown) {
        return false;
    }
    const ReportData data = recorder.finish();
    if (recorder.unexplained() > 0) {
        m_talk << "scenariomatch report: " << recorder.unexplainedText() << '\n';
    }
    return !fail(writeReport(m_options.output, data));
}

// Throws where the options do not go together.
void checkOptions(const ReportCommandOptions& options)
{
    if (options.input.tracks.empty()) {
        throw CLI::RequiredError("--tracks");
    }
    checkSceneOptions(options.input.scene);
}

} // namespace

CLI::App* addReportCommand(CLI::App& program, ReportCommandOptions& options)
{
    CLI::App* const command =
        program.add_subcommand("report", "Write a page that shows what happened and why");
    addParameterOptions(*command, options.input);
    addTrackOptions(*command, options.input, "REQUIRED", "--tracks-format");
    command
        ->add_option(
            "--events",
            options.events,
            "Show the events of this file (JSON Lines, as run writes them) instead of those "
            "recognised")
        ->type_name("FILE")
        ->check(notEmpty());
    command->add_option("--output", options.output, "File for the page (HTML)")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    addSceneOptions(*command, options.input.scene);
    command->callback([&options] { checkOptions(options); });
    command->footer(footerText(
        {.description =
             "Recognises events as run does and writes one HTML file, which a browser opens from "
             "disk without any network: the scene from above with everybody's way, a time line, "
             "the list of events, and of each why it was recognised; of a model why it did not "
             "match.",
         .environment = {kPluginPathVariable, kTemporaryFolderVariable},
         .examples = {
             "scenariomatch synth examples/lobby/scenes/bag.yaml --output bag.jsonl",
             "scenariomatch report --params examples/lobby/lobby.yaml --tracks bag.jsonl --pixels "
             "--output bag.html"}}));
    return command;
}

int runReport(const ReportCommandOptions& options, std::ostream& talk)
{
    catchInterrupt();
    return Report(options, talk).perform();
}

} // namespace scenariomatch
