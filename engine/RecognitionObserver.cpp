#include "engine/RecognitionObserver.h"

namespace scenariomatch
{

RecognitionObserver::~RecognitionObserver() = default;

bool RecognitionObserver::needsAllCandidates() const
{
    return true;
}

void RecognitionObserver::frameStarted(FrameView& /*view*/, const CSTimeStamp& /*now*/) {}

void RecognitionObserver::candidateTested(
    const CSScenario& /*model*/, const CConstraint::Bindings& /*bindings*/)
{
}

void RecognitionObserver::constraintFalse(
    const CSScenario& /*model*/,
    const CConstraint::Bindings& /*bindings*/,
    std::size_t /*constraint*/)
{
}

void RecognitionObserver::notConfident(
    const CSScenario& /*model*/, const CConstraint::Bindings& /*bindings*/, double /*confidence*/)
{
}

void RecognitionObserver::instanceNew(const CSScenarioInstance& /*instance*/) {}

void RecognitionObserver::instanceExtended(const CSScenarioInstance& /*instance*/) {}

void RecognitionObserver::completionRejected(
    const CSScenarioInstance& /*candidate*/,
    std::size_t /*component*/,
    const CSScenarioInstance& /*recognised*/,
    CompletionRejection /*reason*/)
{
}

void RecognitionObserver::instanceExpired(const CSScenarioInstance& /*instance*/) {}

} // namespace scenariomatch
