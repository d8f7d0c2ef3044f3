#include "engine/CSScenarioInstance.h"

#include "engine/Truth.h"
#include "scenario/ConstraintEvaluation.h"

#include <utility>

double CSScenarioInstance::m_const_TimeSearch = 600.0;

CSScenarioInstance::CSScenarioInstance(
    std::shared_ptr<CSScenario> scenario,
    std::shared_ptr<CSTimeStamp> start,
    std::shared_ptr<CSTimeStamp> end)
    : m_scenario(std::move(scenario))
    , m_start(std::move(start))
    , m_end(std::move(end))
{
}

CSScenarioInstance::CSScenarioInstance(const CSScenarioInstance& other)
    : m_scenario(other.m_scenario)
    , m_start(other.m_start)
    , m_end(other.m_end)
    , m_confidence(other.m_confidence)
    , m_id(other.m_id)
    , m_bindings(other.m_bindings)
{
}

CSScenarioInstance::~CSScenarioInstance() = default;

std::size_t CSScenarioInstance::verifyConstraints()
{
    const auto agentOf = [this](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
        static const std::shared_ptr<CSAgent> none;
        const auto bound = m_bindings.find(leaf.m_value);
        return bound == m_bindings.end() ? none : bound->second;
    };
    m_confidence = 1.0;
    double confidence = 1.0;
    std::size_t held = 0;
    for (const auto& constraint : m_scenario->m_constraints) {
        const auto value = scenariomatch::evaluateConstraint(*constraint, agentOf);
        const scenariomatch::Truth truth(value.get());
        if (!truth.holds) {
            return held;
        }
        confidence *= truth.confidence;
        ++held;
    }
    m_confidence = confidence;
    return held;
}

bool CSScenarioInstance::recognisePrimitiveState()
{
    return verifyConstraints() == m_scenario->m_constraints.size();
}
