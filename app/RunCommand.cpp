#include "app/RunCommand.h"

#include "app/EventCollector.h"
#include "app/EventFileWatch.h"
#include "app/ExitStatus.h"
#include "app/FrameFeed.h"
#include "app/Interrupt.h"
#include "app/isolate/EngineChannel.h"
#include "app/isolate/EngineMessages.h"
#include "app/isolate/IsolatedEngine.h"
#include "app/ProgressBar.h"
#include "app/RecognitionSetup.h"
#include "app/RecordView.h"
#include "app/report/ReportSetup.h"
#include "app/RunFiles.h"
#include "app/RunParameters.h"
#include "app/RunStatistics.h"
#include "app/RunTracks.h"
#include "app/StreamRedirection.h"
#include "types/NumberText.h"

#include <cerrno>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <streambuf>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace scenariomatch
{

namespace
{

std::string systemReason()
{
    return std::generic_category().message(errno);
}

// Takes everything and keeps nothing.
class Nowhere : public std::streambuf
{
protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
};

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
        , m_setup(talk, "scenariomatch run: --set")
    {
    }

    // The exit status.
    int perform();

private:
    bool fail(int status, const std::string& reason);
    bool failAsSetup();

    void recogniseHere();
    bool prepareReader();
    bool prepareParameters(bool isFirst = true);
    bool checkOutputs();
    bool openOutputs();
    bool prepareProcess();
    void watchEventFile();
    bool recognise();
    bool startReport();
    void writeReport();
    void recogniseApart();
    void serve(EngineChannel& channel, const IsolatedEngine::Start& start);
    void answerFrames(EngineChannel& channel);
    bool printPlans();
    RecognitionView* ownView() const;
    using Step = std::function<void(EventCollector& collector, const TrackFrame& frame)>;
    void takeFrame(EventCollector& collector, const RecognitionView& view, const TrackFrame& frame);
    bool collect(const std::string& prolongation, const Step& step);
    bool readFrames(EventCollector& collector, const Step& step);
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
    RecognitionSetup m_setup;
    std::unique_ptr<rhmAbstractProcessEventRecognition> m_process;
    std::optional<ScenePicture> m_picture;
    // Watches the process, and goes before it.
    std::optional<ReportRecorder> m_recorder;
    // Where there is an event file.
    std::optional<EventFileWatch> m_watch;
    RunStatistics m_statistics;
    std::optional<RunFault> m_fault;
};

int Run::perform()
{
    if (prepareParameters() && checkOutputs() && prepareReader() && openOutputs()) {
        if (m_options.isIsolated) {
            recogniseApart();
        } else {
            recogniseHere();
        }
        judgeEventFile();
    }
    m_problems.printSummary();
    if (const std::string imbalance = m_statistics.imbalance(m_problems); !imbalance.empty()) {
        m_talk << "scenariomatch run: " << imbalance << '\n';
    }
    if (m_fault) {
        m_talk << "scenariomatch run: " << m_fault->reason << '\n';
        return m_fault->status;
    }
    return kExitDone;
}

// In this process.
void Run::recogniseHere()
{
    m_setup.warn();
    // From here on the plug-in's code runs, which writes to standard output as it likes.
    const StreamRedirection redirection(
        std::cout, m_options.trace.empty() ? nullptr : m_traceFile.rdbuf());
    if (prepareProcess()) {
        watchEventFile();
        m_options.isPlan ? printPlans() : recognise();
    }
    // Ending the process closes its event file.
    m_process.reset();
}

// Keeps the first fault; always false.
bool Run::fail(int status, const std::string& reason)
{
    if (!m_fault) {
        m_fault = {status, reason};
    }
    return false;
}

bool Run::failAsSetup()
{
    const RunFault& fault = *m_setup.fault();
    return fail(fault.status, fault.reason);
}

// A process that goes on where another one has ended does not begin the event file.
bool Run::prepareParameters(bool isFirst)
{
    std::optional<RunParameterSources> sources = parameterSources(m_options, m_fault);
    if (!sources) {
        return false;
    }
    if (!isFirst) {
        sources->settings.emplace_back("saveXML3File", "false");
    }
    if (m_options.isPlan) {
        sources->leaveEventFileAlone();
    }
    return m_setup.read(std::move(*sources)) || failAsSetup();
}

// No output may destroy what the run reads, or another output.
bool Run::checkOutputs()
{
    std::vector<RunFile> read{
        {"--tracks", m_options.tracks == "-" ? "/dev/stdin" : m_options.tracks},
        {"--params", m_options.parameterFile},
        {"--homography", m_options.homography},
        {"--background", m_options.scene.background}};
    for (const RunFile& file : m_setup.neededFiles()) {
        read.push_back(file);
    }
    const std::string events = m_options.events == "-" ? "/dev/stdout" : m_options.events;
    const std::string eventFile = textOf("XML3FileName");
    const std::string clash = clashOf(
        read,
        {{"--events", events},
         {"--trace", m_options.trace},
         {"--report", m_options.report},
         {"XML3FileName", eventFile}});
    if (!clash.empty()) {
        return fail(kExitUsage, clash);
    }
    const auto noReports = m_options.report.empty() ? std::nullopt : faultOfReports();
    if (noReports) {
        return fail(noReports->status, noReports->reason);
    }
    const auto noPicture = readPicture(m_options.scene, m_picture);
    if (noPicture) {
        return fail(noPicture->status, noPicture->reason);
    }
    if (hasEventFile() && eventFile.empty()) {
        return fail(kExitUsage, "saveXML3File needs a file name: XML3FileName is missing");
    }
    return true;
}

bool Run::prepareReader()
{
    if (m_options.isPlan) {
        return true;
    }
    m_reader = openRunTracks(m_options, m_problems, m_fault);
    return m_reader != nullptr;
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
    const auto noReport = m_options.report.empty() ? std::nullopt : faultOfOutput(m_options.report);
    if (noReport) {
        return fail(noReport->status, noReport->reason);
    }
    const std::string eventFile = textOf("XML3FileName");
    if (hasEventFile() && !isWritable(eventFile)) {
        return fail(kExitOutput, eventFile + " (XML3FileName): " + systemReason());
    }
    return true;
}

bool Run::prepareProcess()
{
    m_process = m_setup.createProcess();
    return m_process || failAsSetup();
}

void Run::watchEventFile()
{
    if (hasEventFile()) {
        m_watch.emplace(textOf("XML3FileName"));
    }
}

// Null where the process has none.
RecognitionView* Run::ownView() const
{
    return dynamic_cast<RecognitionView*>(m_process.get());
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

// True without a report, and where one can be made.
bool Run::startReport()
{
    if (m_options.report.empty()) {
        return true;
    }
    RecognitionView* const view = ownView();
    if (view == nullptr) {
        return fail(kExitPlugin, "the plug-in does not tell what it does");
    }
    ReportTerms terms = reportTerms(m_options, m_setup, *m_process);
    terms.picture = std::move(m_picture);
    m_recorder.emplace(*view, std::move(terms));
    return true;
}

void Run::writeReport()
{
    const std::optional<RunFault> fault =
        scenariomatch::writeReport(m_options.report, m_recorder->finish());
    if (m_recorder->unexplained() > 0) {
        m_talk << "scenariomatch run: " << m_recorder->unexplainedText() << '\n';
    }
    if (fault) {
        fail(fault->status, fault->reason);
    }
}

bool Run::recognise()
{
    if (!startReport()) {
        return false;
    }
    const RecordView records(*m_process);
    const RecognitionView* const own = ownView();
    const RecognitionView& view = own == nullptr ? records : *own;
    FrameFeed feed(*m_process);
    return collect(
        m_process->parameter("constProlongation").value_or("0"),
        [&](EventCollector& collector, const TrackFrame& frame) {
            feed.addFrame(frame);
            takeFrame(collector, view, frame);
            if (m_recorder) {
                m_recorder->addFrame(frame);
            }
        });
}

// In a process of its own.
void Run::recogniseApart()
{
    IsolatedEngine engine(
        {.serve =
             [this](EngineChannel& channel, const IsolatedEngine::Start& start) {
                 serve(channel, start);
             },
         .talk = m_talk,
         .clean =
             [this] {
                 if (m_watch) {
                     m_watch->cut();
                 }
             },
         .secondsPerFrame = m_options.secondsPerFrame});
    if (engine.start()) {
        watchEventFile();
        collect(engine.prolongation(), [&](EventCollector& collector, const TrackFrame& frame) {
            if (engine.recognise(frame)) {
                takeFrame(collector, engine.view(), frame);
            } else {
                // Nobody has recognised in it.
                m_problems.countDropped(frame.actors.size());
            }
            if (engine.fault()) {
                fail(engine.fault()->status, engine.fault()->reason);
            }
            m_statistics.setRestarts(engine.deaths());
        });
    } else {
        fail(engine.fault()->status, engine.fault()->reason);
    }
    if (!engine.finish() && m_watch) {
        m_watch->close();
    }
}

// What the process of the engine's own does.
void Run::serve(EngineChannel& channel, const IsolatedEngine::Start& start)
{
    const std::string isSaved = textOf("saveXML3File");
    const StreamRedirection redirection(
        std::cout, m_options.trace.empty() ? nullptr : m_traceFile.rdbuf());
    Nowhere nowhere;
    std::optional<StreamRedirection> silence;
    if (!start.isFirst) {
        // All of it has been said.
        silence.emplace(m_talk, &nowhere);
    }
    const bool isRead = start.isFirst || prepareParameters(false);
    if (isRead) {
        m_setup.warn();
    }
    if (!isRead || !prepareProcess()) {
        channel.send(readinessMessage({m_fault->status, m_fault->reason, ""}));
        return;
    }
    if (!start.isFirst) {
        m_process->setParameter("saveXML3File", isSaved.empty() ? "false" : isSaved);
        if (RecognitionView* const view = ownView()) {
            view->setNextEventId(start.nextEventId);
        }
    }
    silence.reset();
    channel.send(
        readinessMessage({0, "", m_process->parameter("constProlongation").value_or("0")}));
    answerFrames(channel);
    // Ending the process closes its event file.
    m_process.reset();
    std::cout.flush();
}

void Run::answerFrames(EngineChannel& channel)
{
    const RecordView records(*m_process);
    const RecognitionView* const own = ownView();
    const RecognitionView& view = own == nullptr ? records : *own;
    FrameFeed feed(*m_process);
    std::string message;
    while (channel.receive(message, -1) == EngineChannel::Reading::Message) {
        const std::optional<TrackFrame> frame = readFrameMessage(message);
        if (!frame) {
            return;
        }
        feed.addFrame(*frame);
        // What an operator's end leaves behind is not lost.
        std::cout.flush();
        channel.send(eventsMessage(view));
    }
}

void Run::takeFrame(EventCollector& collector, const RecognitionView& view, const TrackFrame& frame)
{
    collector.addFrame(view, frame.clock);
    m_statistics.addFrame(frame, view.counters());
    if (m_watch) {
        m_watch->addFrame(frame.number);
    }
}

// Hands every frame to the step, and writes what it collects.
bool Run::collect(const std::string& prolongation, const Step& step)
{
    const std::unique_ptr<EventWriter> writer = makeEventWriter(m_options.eventFormat, m_data);
    CountingEventWriter counter(*writer, m_statistics);
    EventCollector collector(
        counter,
        stringToDouble(prolongation),
        m_options.isEveryFrame ? EventCollector::Reporting::EveryFrame
                               : EventCollector::Reporting::WhenOver);
    readFrames(collector, step);
    collector.finish();
    m_data.flush();
    if (!m_data) {
        const std::string name = m_options.events == "-" ? "standard output" : m_options.events;
        fail(kExitOutput, name + ": the events cannot be written");
    }
    if (m_options.hasStatistics) {
        m_statistics.setLostFrames(m_watch ? m_watch->lost() : 0);
        m_statistics.print(m_talk, m_problems);
    }
    const bool isRead = judgeReading();
    // A run that fails leaves an earlier page as it is.
    if (m_recorder && !m_fault) {
        writeReport();
    }
    m_recorder.reset();
    return isRead;
}

bool Run::readFrames(EventCollector& collector, const Step& step)
{
    std::optional<ProgressBar> bar;
    if (hasProgress()) {
        bar.emplace(m_talk);
    }
    TrackFrame frame;
    while (m_data && !m_fault && !isInterrupted() && m_reader->next(frame)) {
        step(collector, frame);
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
    const std::optional<RunFault> fault =
        faultOfReading(m_options, *m_reader, m_problems, m_statistics.frames() > 0);
    if (fault) {
        return fail(fault->status, fault->reason);
    }
    if (isInterrupted()) {
        m_talk << "scenariomatch run: interrupted; the events so far are written\n";
    }
    return true;
}

// The process does not say when its event file cannot be written.
bool Run::judgeEventFile()
{
    const std::string reason = m_watch ? m_watch->judgeEnd() : "";
    return reason.empty() ||
           fail(kExitOutput, textOf("XML3FileName") + " (XML3FileName): " + reason);
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
    return m_setup.textOf(key);
}

} // namespace

int runRun(const RunOptions& options, std::ostream& out, std::ostream& talk)
{
    catchInterrupt();
    Run run(options, out, talk);
    return run.perform();
}

} // namespace scenariomatch
