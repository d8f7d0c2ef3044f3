#pragma once

#include "app/explain/Apart.h"
#include "app/explain/KnownEvents.h"
#include "app/explain/ModelSet.h"
#include "app/explain/ModelWatch.h"
#include "app/explain/ObjectFilter.h"
#include "app/explain/WhyNot.h"
#include "engine/RecognitionObserver.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch
{

// What is asked about a model that did not match.
struct WhyNotQuestion
{
    std::string model;
    // Tracked objects by number, those of the scene by name; all must take part.
    std::vector<std::string> objects = {};
    TimeWindow window = {};
    // Whether the window counts from the first frame.
    bool isFromStart = false;
    // For how many seconds recognition looks back at events.
    double lookBack = 0.0;
    // How many candidates of a model are tried in a frame; 0 for all.
    std::uint64_t mostCandidates = 0;
};

// Watches recognition and says afterwards why a model did not match.
//
// Recognition goes its usual ways. What the model is made of is watched with it. The process whose
// view is given outlives the observer.
//
// Example:
//     WhyNotObserver observer(view, {.model = "BagLeft"});
//     view.setObserver(&observer);
//     ... all frames ...
//     const WhyNot answer = observer.answer();
class WhyNotObserver : public RecognitionObserver
{
public:
    // The model must be one that the view shows.
    WhyNotObserver(const RecognitionView& view, WhyNotQuestion question);
    ~WhyNotObserver() override;
    WhyNotObserver(const WhyNotObserver&) = delete;
    WhyNotObserver(WhyNotObserver&&) = delete;
    WhyNotObserver& operator=(const WhyNotObserver&) = delete;
    WhyNotObserver& operator=(WhyNotObserver&&) = delete;

    bool needsAllCandidates() const override { return false; }

    void frameStarted(FrameView& view, const CSTimeStamp& now) override;
    void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings) override;
    void constraintFalse(
        const CSScenario& model,
        const CConstraint::Bindings& bindings,
        std::size_t constraint) override;
    void notConfident(
        const CSScenario& model, const CConstraint::Bindings& bindings, double confidence) override;
    void instanceNew(const CSScenarioInstance& instance) override;
    void instanceExtended(const CSScenarioInstance& instance) override;

    // After the last frame, once.
    WhyNot answer();

private:
    struct Watched;

    void start();
    void noteSeen(FrameView& view);
    // Null where the model, the objects or the time is none of those asked for. The watch is there
    // from the first frame on.
    Watched* watched(const CSScenario& model, const CConstraint::Bindings& bindings);
    void noteRecognised(const CSScenarioInstance& instance);
    WhyNot answerFor(const Watched& watched);
    const Watched* find(const std::string& model) const;
    void addEvents(const Watched& watched, WhyNot& why) const;
    void addComponents(const Watched& watched, WhyNot& why);
    std::vector<std::shared_ptr<const KnownEvent>>
    eventsOf(const Watched& watched, const TimeWindow& window) const;
    std::shared_ptr<const WhyNot> whyMissing(const Watched& watched);

    ModelSet m_models;
    WhyNotQuestion m_question;
    ObjectFilter m_filter;
    KnownEvents m_events;
    std::vector<std::unique_ptr<Watched>> m_watched;
    // What is said of models of which there were no events, by name.
    std::map<std::string, std::shared_ptr<const WhyNot>> m_missing;
    std::set<std::string> m_seen;
    bool m_isStarted = false;
    Moment m_start;
    Moment m_now;
    std::optional<Moment> m_first;
    Moment m_last;
    std::uint64_t m_frames = 0;
};

} // namespace scenariomatch
