#pragma once

#include "scenario/CSScenario.h"
#include "types/CSAgent.h"
#include "types/CSOperatorInterfaceAbstract.h"
#include "types/CSPlainValue.h"

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// What tests of the plans and their parts are made of: operators, constraint trees, models, agents.
namespace scenariomatch
{

// A pure operator made of a function on plain values, which counts its calls.
class PlainOperator : public CSOperatorInterfaceAbstract
{
public:
    using Arguments = std::vector<CSPlainValue>;
    using Function = std::function<CSPlainValue(const Arguments&)>;

    PlainOperator(const std::string& name, Function function)
        : m_function(std::move(function))
    {
        m_name = name;
        m_description.m_pure = true;
        m_description.m_plain = true;
    }

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override
    {
        ++m_objectCalls;
        Arguments plain;
        for (const auto& argument : arguments) {
            plain.emplace_back(argument.get());
        }
        const CSPlainValue value = m_function(plain);
        if (value.isBool()) {
            return std::make_shared<CSBool>(value.m_truth, value.m_number);
        }
        return value.isNumber() ? std::make_shared<CSDouble>(value.m_number) : nullptr;
    }

    CSPlainValue evaluatePlain(std::span<const CSPlainValue> arguments) override
    {
        ++m_plainCalls;
        return m_function(Arguments(arguments.begin(), arguments.end()));
    }

    CSOperatorDescription describe() const override { return m_description; }

    int calls() const { return m_plainCalls + m_objectCalls; }

    CSOperatorDescription m_description;
    int m_plainCalls = 0;
    int m_objectCalls = 0;

private:
    Function m_function;
};

using Constraint = std::unique_ptr<CConstraint>;

// The leaves and nodes of constraint trees.
inline Constraint attributeOf(const std::string& variable, const std::string& attribute)
{
    auto leaf = std::make_unique<CConstraint>();
    leaf->m_operatorName = "->";
    leaf->m_value = variable;
    leaf->m_attribute = attribute;
    return leaf;
}

inline Constraint word(const std::string& text)
{
    auto leaf = std::make_unique<CConstraint>();
    leaf->m_operatorName = "NULL";
    leaf->m_value = text;
    return leaf;
}

inline Constraint number(double value)
{
    Constraint leaf = word("");
    leaf->m_isNumeric = true;
    leaf->m_numericValue = value;
    return leaf;
}

// An operator that is not loaded.
template <class... Children>
Constraint unloaded(const std::string& name, Children&&... children)
{
    auto node = std::make_unique<CConstraint>();
    node->m_operatorName = name;
    (node->m_children.push_back(std::forward<Children>(children)), ...);
    return node;
}

template <class... Children>
Constraint call(CSOperatorInterfaceAbstract& op, Children&&... children)
{
    Constraint node = unloaded(op.m_name, std::forward<Children>(children)...);
    node->m_operator = &op;
    return node;
}

// A model that declares the variables, each with its type, in that order.
inline std::shared_ptr<CSScenario> modelWith(
    const std::string& name, const std::vector<std::pair<std::string, std::string>>& variables)
{
    auto model = std::make_shared<CSScenario>();
    model->m_name = name;
    for (const auto& [variable, type] : variables) {
        model->m_physicalObjects[static_cast<int>(model->m_physicalObjects.size())] = variable;
        model->m_variablesByType[type].push_back(variable);
        model->m_variableTypes[variable] = type;
    }
    return model;
}

// The agents of a scene by the engine's identifiers.
class Scene
{
public:
    CSAgent& add(const std::string& type, int frame)
    {
        const int id = static_cast<int>(m_agents.size());
        auto agent = std::make_shared<CSAgent>(100 + id, false);
        agent->m_engineID = id;
        agent->m_type = type;
        agent->m_frameID = frame;
        m_agents[id] = agent;
        return *agent;
    }

    CSAgent& addConstant(const std::string& type)
    {
        CSAgent& agent = add(type, 0);
        agent.m_constant = true;
        return agent;
    }

    std::map<int, std::shared_ptr<CSAgent>> m_agents;
};

} // namespace scenariomatch
