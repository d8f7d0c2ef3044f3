#include "engine/PrimitivePlan.h"

#include "engine/CSEngine.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace scenariomatch
{

PrimitivePlan::PrimitivePlan(std::shared_ptr<CSScenario> scenario)
    : m_model(std::move(scenario))
{
    for (const auto& [position, variable] : m_model->m_physicalObjects) {
        m_variables.push_back(variable);
    }
    std::sort(m_variables.begin(), m_variables.end());
    m_variables.erase(std::unique(m_variables.begin(), m_variables.end()), m_variables.end());
    m_slots.resize(m_variables.size());
    for (const auto& [type, variables] : m_model->m_variablesByType) {
        const std::size_t group = m_types.size();
        m_types.push_back(type);
        m_variablesPerType.push_back(static_cast<int>(variables.size()));
        for (const std::string& variable : variables) {
            const auto slot = std::lower_bound(m_variables.begin(), m_variables.end(), variable);
            m_positions.push_back({group, static_cast<std::size_t>(slot - m_variables.begin())});
        }
    }
    for (const auto& constraint : m_model->m_constraints) {
        assignSlots(*constraint);
    }
}

void PrimitivePlan::assignSlots(CConstraint& node) const
{
    const auto slot = std::lower_bound(m_variables.begin(), m_variables.end(), node.m_value);
    const bool isBound = slot != m_variables.end() && *slot == node.m_value;
    node.m_slot = isBound ? static_cast<std::int32_t>(slot - m_variables.begin()) : -1;
    for (const auto& child : node.m_children) {
        assignSlots(*child);
    }
}

bool PrimitivePlan::hasCandidates(const Candidates& candidates) const
{
    if (candidates.empty()) {
        return false;
    }
    std::uint32_t count = 1;
    for (std::size_t group = 0; group < candidates.size(); ++group) {
        const auto agents = static_cast<int>(candidates[group].size());
        count *= permutation(agents, m_variablesPerType[group]);
    }
    return count >= 1;
}

} // namespace scenariomatch
