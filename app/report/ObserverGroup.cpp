#include "app/report/ObserverGroup.h"

namespace scenariomatch
{

void ObserverGroup::frameStarted(FrameView& view, const CSTimeStamp& now)
{
    for (RecognitionObserver* const observer : m_observers) {
        observer->frameStarted(view, now);
    }
}

void ObserverGroup::candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings)
{
    for (RecognitionObserver* const observer : m_observers) {
        observer->candidateTested(model, bindings);
    }
}

void ObserverGroup::constraintFalse(
    const CSScenario& model, const CConstraint::Bindings& bindings, std::size_t constraint)
{
    for (RecognitionObserver* const observer : m_observers) {
        observer->constraintFalse(model, bindings, constraint);
    }
}

void ObserverGroup::notConfident(
    const CSScenario& model, const CConstraint::Bindings& bindings, double confidence)
{
    for (RecognitionObserver* const observer : m_observers) {
        observer->notConfident(model, bindings, confidence);
    }
}

void ObserverGroup::instanceNew(const CSScenarioInstance& instance)
{
    for (RecognitionObserver* const observer : m_observers) {
        observer->instanceNew(instance);
    }
}

void ObserverGroup::instanceExtended(const CSScenarioInstance& instance)
{
    for (RecognitionObserver* const observer : m_observers) {
        observer->instanceExtended(instance);
    }
}

void ObserverGroup::instanceExpired(const CSScenarioInstance& instance)
{
    for (RecognitionObserver* const observer : m_observers) {
        observer->instanceExpired(instance);
    }
}

} // namespace scenariomatch
