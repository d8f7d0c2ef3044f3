#include "engine/CSScenarioInstance.h"

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
    , m_bindings(other.m_bindings)
    , m_start(other.m_start)
    , m_end(other.m_end)
    , m_id(other.m_id)
    , m_confidence(other.m_confidence)
{
}

CSScenarioInstance::~CSScenarioInstance() = default;

bool CSScenarioInstance::recognisePrimitiveState()
{
    m_confidence = 1.0;
    for (const auto& constraint : m_scenario->m_constraints) {
        const auto value = CConstraint::verify(*constraint, m_bindings);
        const auto truth = std::dynamic_pointer_cast<CSBool>(value);
        if (!truth || !truth->m_value) {
            m_confidence = 1.0;
            return false;
        }
        m_confidence *= truth->m_confidence;
    }
    return true;
}
