#pragma once

#include "app/explain/Evidence.h"
#include "app/explain/Gauge.h"
#include "engine/RecognitionObserver.h"

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace scenariomatch
{

// Watches recognition and says why an event was recognised, down to the primitive states that it is
// made of.
//
// Events are told by the identifiers that recognition gives them. Recognition goes its usual ways.
//
// Example:
//     EvidenceObserver observer(12);
//     view.setObserver(&observer);
//     ... all frames, or until observer.isOver() ...
//     const auto evidence = observer.evidence();
//
// Or of every event, each as soon as nothing more can become of it:
//     EvidenceObserver observer([](const Evidence& evidence) { ... });
//     ... all frames ...
//     observer.finish();
class EvidenceObserver : public RecognitionObserver
{
public:
    using Take = std::function<void(const Evidence& evidence)>;

    explicit EvidenceObserver(int event)
        : m_event(event)
    {
    }

    // Events come in the order in which they are over.
    explicit EvidenceObserver(Take take)
        : m_take(std::move(take))
    {
    }

    bool needsAllCandidates() const override { return false; }

    void frameStarted(FrameView& view, const CSTimeStamp& now) override;
    void instanceNew(const CSScenarioInstance& instance) override;
    void instanceExtended(const CSScenarioInstance& instance) override;
    void instanceExpired(const CSScenarioInstance& instance) override;

    // After the last frame, where every event is asked for: hands on those that are not over.
    void finish();

    // Whether nothing more can become of the event.
    bool isOver() const { return m_isOver; }

    // Null where there has been no such event.
    std::shared_ptr<const Evidence> evidence() const { return m_evidence; }

private:
    using Gauges = std::vector<std::optional<Gauge>>;

    Gauges& gaugesOf(const CSScenario& model);
    void addFindings(const CSScenarioInstance& instance, Evidence& evidence);
    void addParts(const CSScenarioInstance& instance, Evidence& evidence) const;
    void handOn();

    // The event that is asked for; none where all are.
    std::optional<int> m_event;
    Take m_take;
    bool m_isOver = false;
    std::optional<Moment> m_start;
    OperatorPromises m_promises;
    std::unordered_map<const CSScenario*, Gauges> m_gauges;
    // The events that can still become part of another one.
    std::unordered_map<int, std::shared_ptr<Evidence>> m_alive;
    std::shared_ptr<Evidence> m_evidence;
    // Over in the frame at hand, in which what they are made of may still go on.
    std::vector<std::shared_ptr<const Evidence>> m_over;
};

} // namespace scenariomatch
