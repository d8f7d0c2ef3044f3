#pragma once

#include "engine/RecognitionObserver.h"

#include <utility>
#include <vector>

namespace scenariomatch
{

// Tells several observers what one is told.
//
// The observers outlive it; none of them needs all candidates.
class ObserverGroup : public RecognitionObserver
{
public:
    explicit ObserverGroup(std::vector<RecognitionObserver*> observers)
        : m_observers(std::move(observers))
    {
    }

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
    void instanceExpired(const CSScenarioInstance& instance) override;

private:
    std::vector<RecognitionObserver*> m_observers;
};

} // namespace scenariomatch
