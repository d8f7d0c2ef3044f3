#include "app/RuleRun.h"

#include "app/explain/Summary.h"
#include "app/explain/WhyNotObserver.h"
#include "app/FrameClock.h"
#include "app/FrameFeed.h"
#include "app/RecognitionSetup.h"
#include "app/RecordView.h"
#include "app/RunSession.h"
#include "app/SceneTracks.h"
#include "app/StreamRedirection.h"
#include "app/TrackReader.h"
#include "engine/CSEngine.h"
#include "scenario/CSScenario.h"
#include "types/CSAgent.h"
#include "types/NumberText.h"

#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <utility>

namespace scenariomatch
{

namespace
{

class EventList : public EventWriter
{
public:
    void write(const ReportedEvent& event) override { m_events.push_back({event}); }

    void finish() override {}

    std::vector<FoundEvent> take(std::int64_t start)
    {
        for (FoundEvent& event : m_events) {
            event.begin = clockToMilliseconds(event.report.begin.clock) - start;
            event.end = clockToMilliseconds(event.report.end.clock) - start;
        }
        return std::move(m_events);
    }

private:
    std::vector<FoundEvent> m_events;
};

using FrameVisitor = std::function<void(const TrackFrame& frame)>;

// As the readers of tracks do it: a size that is missing is that of the box.
void addSizes(TrackFrame& frame)
{
    const GroundMapper ground;
    for (TrackedActor& actor : frame.actors) {
        const TrackBox& box = actor.box;
        if (!actor.size) {
            actor.size = ground.size(MeasuredBox{
                static_cast<double>(box.x),
                static_cast<double>(box.y),
                static_cast<double>(box.width),
                static_cast<double>(box.height)});
        }
    }
}

// Why the tracks cannot be used; nothing when all frames were shown.
std::optional<std::string>
visitFrames(const RuleTracks& tracks, std::ostream& talk, const FrameVisitor& visit)
{
    TrackFrame frame;
    if (tracks.scene) {
        SceneTracks scene(*tracks.scene);
        while (scene.next(frame)) {
            addSizes(frame);
            visit(frame);
        }
        return std::nullopt;
    }
    TrackReaderOptions options;
    options.framesPerSecond = tracks.framesPerSecond;
    options.ground = GroundMapper(tracks.scale, std::nullopt);
    options.formatOption.clear();
    TrackProblems problems(tracks.file, talk, {});
    TrackFailure failure;
    const std::unique_ptr<TrackReader> reader = openTracks(tracks.file, options, problems, failure);
    if (!reader) {
        return tracks.file + ": " + failure.reason;
    }
    while (reader->next(frame)) {
        visit(frame);
    }
    problems.printSummary();
    if (reader->failure()) {
        return tracks.file + ": " + reader->failure()->reason;
    }
    return std::nullopt;
}

RunParameterSources sourcesOf(const RuleCase& ruleCase)
{
    RunParameterSources sources = RecognitionSetup::sourcesFor(ruleCase.parameterFile);
    sources.settings = ruleCase.settings;
    sources.leaveEventFileAlone();
    return sources;
}

std::set<std::string> modelsOf(const RecognitionView& view)
{
    std::set<std::string> models;
    view.visitModels([&models](const CSScenario& model) { models.insert(model.m_name); });
    return models;
}

RuleRun recognise(
    const RuleCase& ruleCase,
    rhmAbstractProcessEventRecognition& process,
    ConstraintCoverage* coverage,
    std::ostream& talk)
{
    RuleRun run;
    const RecordView records(process);
    auto* const ownView = dynamic_cast<RecognitionView*>(&process);
    if (ownView != nullptr) {
        run.models = modelsOf(*ownView);
    }
    if (ownView != nullptr && coverage != nullptr) {
        coverage->begin(*ownView);
        ownView->setObserver(coverage);
    }
    const RecognitionView* const view = ownView == nullptr ? &records : ownView;
    EventList events;
    const double prolongation =
        stringToDouble(process.parameter("constProlongation").value_or("0"));
    EventCollector collector(events, prolongation, EventCollector::Reporting::WhenOver);
    RunStatistics statistics;
    RunSession session(process, *view, collector, statistics);
    std::optional<std::int64_t> start;
    run.fault = visitFrames(ruleCase.tracks, talk, [&](const TrackFrame& frame) {
        start = start.value_or(clockToMilliseconds(frame.clock));
        session.addFrame(frame);
    });
    if (!run.fault && !start) {
        run.fault = "the tracks have no frame that can be used";
    }
    collector.finish();
    run.events = events.take(start.value_or(0));
    return run;
}

// What the library keeps for the whole program would reach from one case into the next: the times
// of frames of the same number, object types of another description.
void forgetEarlierRuns()
{
    CSEngine::h_currentTime.clear();
    CSAgent::m_constantObjects.clear();
    CSAgent::m_allAttributes.clear();
    CSAgent::m_allObjectTypes.clear();
}

// A stretch of time around the event, as far as the test says when it is.
WhyNotQuestion questionAbout(const RuleCase& ruleCase, const ExpectedEvent& missing)
{
    WhyNotQuestion question;
    question.model = missing.model;
    for (const auto& [variable, object] : missing.objects) {
        question.objects.push_back(object);
    }
    const std::int64_t tolerance = missing.tolerance.value_or(ruleCase.tolerance);
    question.isFromStart = true;
    if (missing.begin) {
        question.window.from = *missing.begin - tolerance;
    }
    if (missing.end) {
        question.window.to = *missing.end + tolerance;
    }
    question.mostCandidates = kMaximumCandidates;
    return question;
}

} // namespace

std::optional<std::string> whyMissing(const RuleCase& ruleCase, const ExpectedEvent& missing)
{
    // What is wrong with the case was told before.
    std::ostringstream ignored;
    RecognitionSetup setup(ignored, ruleCase.name);
    if (!setup.read(sourcesOf(ruleCase))) {
        return std::nullopt;
    }
    const StreamRedirection redirection(std::cout, nullptr);
    const StreamRedirection quiet(std::cerr, ignored.rdbuf());
    forgetEarlierRuns();
    const std::unique_ptr<rhmAbstractProcessEventRecognition> process = setup.createProcess();
    auto* const view = dynamic_cast<RecognitionView*>(process.get());
    if (view == nullptr) {
        return std::nullopt;
    }
    WhyNotQuestion question = questionAbout(ruleCase, missing);
    question.lookBack = stringToDouble(process->parameter("constTimeSearch").value_or("0"));
    WhyNotObserver observer(*view, std::move(question));
    view->setObserver(&observer);
    FrameFeed feed(*process);
    visitFrames(
        ruleCase.tracks, ignored, [&feed](const TrackFrame& frame) { feed.addFrame(frame); });
    const WhyNot why = observer.answer();
    return why.events.empty() ? std::optional(reasonOf(why)) : std::nullopt;
}

RuleTalk::RuleTalk(std::ostream& out)
    : m_out(out)
{
}

void RuleTalk::tellOnce(std::ostringstream& text)
{
    if (m_told.insert(text.str()).second) {
        m_out << text.str();
    }
    text.str({});
}

RuleRun runRuleCase(const RuleCase& ruleCase, ConstraintCoverage* coverage, RuleTalk& talk)
{
    std::ostringstream warnings;
    RecognitionSetup setup(warnings, ruleCase.name + ": 'set'");
    RuleRun run;
    if (!setup.read(sourcesOf(ruleCase))) {
        run.fault = setup.fault()->reason;
        return run;
    }
    // The plug-in's code writes to standard output as it likes.
    const StreamRedirection redirection(std::cout, nullptr);
    forgetEarlierRuns();
    setup.warn();
    // Before the engine has its say.
    talk.tellOnce(warnings);
    const std::unique_ptr<rhmAbstractProcessEventRecognition> process = setup.createProcess();
    talk.tellOnce(warnings);
    if (process) {
        run = recognise(ruleCase, *process, coverage, talk.out());
    } else {
        run.fault = setup.fault()->reason;
    }
    return run;
}

} // namespace scenariomatch
