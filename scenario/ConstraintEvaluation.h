#pragma once

#include "scenario/CConstraint.h"
#include "scenario/OperatorCall.h"

#include <memory>
#include <utility>
#include <vector>

namespace scenariomatch
{

// The value of a constraint, depth first and left to right. `agentOf(leaf)` gives the agent of an
// attribute leaf, empty when its variable is not bound.
//
// A number is a new CSDouble, a word a new CSString, an attribute the agent's own pointer (entered
// empty into an agent that lacks it); an attribute of an empty agent is an empty value. An operator
// that is not loaded is a false CSBool.
//
// Example:
//     evaluateConstraint(root, [&](const CConstraint& leaf) { return slots[slotOf(leaf)]; });
template <class AgentOf>
std::shared_ptr<CSBasicType> evaluateConstraint(const CConstraint& node, AgentOf&& agentOf)
{
    if (node.m_operatorName == "NULL") {
        if (node.m_isNumeric) {
            return std::make_shared<CSDouble>(node.m_numericValue);
        }
        return std::make_shared<CSString>(node.m_value);
    }
    if (node.m_operatorName == "->") {
        const std::shared_ptr<CSAgent>& agent = agentOf(node);
        return agent ? agent->get(node.m_attribute) : nullptr;
    }
    std::vector<std::shared_ptr<CSBasicType>> arguments;
    arguments.reserve(node.m_children.size());
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        arguments.push_back(evaluateConstraint(*child, agentOf));
    }
    if (node.m_operator == nullptr) {
        return std::make_shared<CSBool>(false);
    }
    return callOperator(*node.m_operator, std::move(arguments));
}

} // namespace scenariomatch
