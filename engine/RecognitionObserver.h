#pragma once

#include "engine/CSScenarioInstance.h"

#include <cstddef>
#include <cstdint>

namespace scenariomatch
{

class FrameView;

// Why a recognised instance could not complete a candidate.
enum class CompletionRejection : std::uint8_t {
    // The instance already fills another component.
    SameInstance,
    // A variable that both share is bound to different agents.
    DifferentParticipant,
    // One physical object would be bound to two variables.
    ObjectTwice,
};

// Is told what recognition does, step by step: what explainers build on.
//
// All members do nothing unless overridden. Recognition never depends on an observer. What is
// passed lives for the call only. Called on the thread that runs recognition. Does not call the
// engine itself, but to read from it.
class CS_EXPORT RecognitionObserver
{
public:
    RecognitionObserver() = default;
    RecognitionObserver(const RecognitionObserver&) = delete;
    RecognitionObserver(RecognitionObserver&&) = delete;
    RecognitionObserver& operator=(const RecognitionObserver&) = delete;
    RecognitionObserver& operator=(RecognitionObserver&&) = delete;
    virtual ~RecognitionObserver();

    // Whether every candidate of a primitive state is to be shown, at the cost of trying each in
    // full. Without it those alone are shown of which the leading constraints hold, up to the first
    // that is not pure, and recognition takes its usual ways. Always the same answer.
    virtual bool needsAllCandidates() const;
    // Recognition begins in a frame: the agents have their values, nothing has been tested yet. Who
    // looks on may ask for more types and attributes.
    virtual void frameStarted(FrameView& view, const CSTimeStamp& now);
    // A candidate with these bindings is about to be tested.
    virtual void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings);
    // The constraint at this position of the model's list was false for the candidate.
    virtual void constraintFalse(
        const CSScenario& model, const CConstraint::Bindings& bindings, std::size_t constraint);
    // All constraints hold; the candidate's confidence is below the model's threshold or a
    // component is unbound.
    virtual void
    notConfident(const CSScenario& model, const CConstraint::Bindings& bindings, double confidence);
    virtual void instanceNew(const CSScenarioInstance& instance);
    // An earlier recognition was extended to the current time.
    virtual void instanceExtended(const CSScenarioInstance& instance);
    // The recognised instance was tried as the component at this position and turned down.
    virtual void completionRejected(
        const CSScenarioInstance& candidate,
        std::size_t component,
        const CSScenarioInstance& recognised,
        CompletionRejection reason);
    virtual void instanceExpired(const CSScenarioInstance& instance);
};

} // namespace scenariomatch
