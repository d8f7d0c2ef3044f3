#pragma once

#include "scenario/ConstraintEvaluation.h"
#include "scenario/CSScenario.h"

#include <cstddef>

namespace scenariomatch
{

// Evaluates the model's constraints in order up to the first that is false and multiplies their
// confidences into `confidence`. Returns how many hold; all, when none is false. A value that is no
// truth value is false.
template <class AgentOf>
std::size_t constraintsHeld(const CSScenario& model, AgentOf&& agentOf, double& confidence)
{
    std::size_t held = 0;
    for (const auto& constraint : model.m_constraints) {
        const auto value = evaluateConstraint(*constraint, agentOf);
        const auto* truth = dynamic_cast<const CSBool*>(value.get());
        if (truth == nullptr || !truth->m_value) {
            break;
        }
        confidence *= truth->m_confidence;
        ++held;
    }
    return held;
}

} // namespace scenariomatch
