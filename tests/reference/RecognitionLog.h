#pragma once

#include "engine/RecognitionObserver.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>

namespace scenariomatch
{

// What one side of a comparison tells about its steps, as text.
//
// Candidates and recognised instances are told in order; instances that complete no candidate in
// order for each model of the candidates; instances that expire in no order.
class RecognitionLog
{
public:
    using Bindings = CConstraint::Bindings;

    void candidateTested(const CSScenario& model, const Bindings& bindings);
    void constraintFalse(const CSScenario& model, const Bindings& bindings, std::size_t constraint);
    // The confidence of a candidate with an unbound component is not told.
    void notConfident(const CSScenario& model, const Bindings& bindings, double confidence);

    // Of either side's instances.
    template <class Instance>
    void instanceNew(const Instance& instance)
    {
        addStep("new", instance.m_id, *instance.m_scenario, instance.m_bindings);
    }

    template <class Instance>
    void instanceExtended(const Instance& instance)
    {
        addStep("extended", instance.m_id, *instance.m_scenario, instance.m_bindings);
    }

    void completionRejected(
        const CSScenario& model, std::size_t component, int recognised, CompletionRejection reason);

    void instanceExpired(int id) { m_expired.insert(id); }

    std::string text() const;
    void clear();

private:
    void addStep(const char* step, int number, const CSScenario& model, const Bindings& bindings);

    std::string m_steps;
    std::map<std::string, std::string> m_rejections;
    std::multiset<int> m_expired;
};

// Hands what the engine tells to a log, which must outlive it.
class LoggingObserver : public RecognitionObserver
{
public:
    explicit LoggingObserver(RecognitionLog& log)
        : m_log(log)
    {
    }

    void candidateTested(const CSScenario& model, const CConstraint::Bindings& bindings) override;
    void constraintFalse(
        const CSScenario& model,
        const CConstraint::Bindings& bindings,
        std::size_t constraint) override;
    void notConfident(
        const CSScenario& model, const CConstraint::Bindings& bindings, double confidence) override;
    void instanceNew(const CSScenarioInstance& instance) override;
    void instanceExtended(const CSScenarioInstance& instance) override;
    void completionRejected(
        const CSScenarioInstance& candidate,
        std::size_t component,
        const CSScenarioInstance& recognised,
        CompletionRejection reason) override;
    void instanceExpired(const CSScenarioInstance& instance) override;

private:
    RecognitionLog& m_log;
};

} // namespace scenariomatch
