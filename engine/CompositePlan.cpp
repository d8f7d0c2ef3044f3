#include "engine/CompositePlan.h"

#include "engine/Agents.h"
#include "engine/Candidate.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

std::vector<std::string> variablesOf(const CSScenario& model)
{
    std::vector<std::string> variables;
    for (const auto& [position, variable] : model.m_physicalObjects) {
        variables.push_back(variable);
    }
    for (const auto& component : model.m_components) {
        variables.push_back(component->m_variable);
        variables.insert(
            variables.end(), component->m_arguments.begin(), component->m_arguments.end());
    }
    std::sort(variables.begin(), variables.end());
    variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
    return variables;
}

} // namespace

struct CompositePlan::Reader
{
    CompositePlan& plan;

    const std::shared_ptr<CSAgent>& agentOf(std::int32_t slot) const
    {
        static const std::shared_ptr<CSAgent> none;
        const auto* agent = slot < 0 ? nullptr : plan.m_agents[static_cast<std::size_t>(slot)];
        return agent == nullptr ? none : *agent;
    }

    CSPlainValue attribute(const Expression::Node& node) const
    {
        const std::shared_ptr<CSAgent>& agent = agentOf(node.slot);
        if (!agent) {
            return {};
        }
        const std::string& name = plan.m_attributes[static_cast<std::size_t>(node.attribute)];
        const LateAttributes* late = agent->m_late.get();
        if (late != nullptr && late->isRead()) {
            const CSPlainValue interval =
                node.attribute == plan.m_interval ? late->interval() : CSPlainValue();
            if (!interval.isNone()) {
                return interval;
            }
            agent->makeUp();
        }
        const auto found = agent->m_attributes.find(name);
        return CSPlainValue(found == agent->m_attributes.end() ? nullptr : found->second.get());
    }

    const CSBasicType* objects(const CConstraint& part) const
    {
        return plan.m_kept
            .emplace_back(evaluateConstraint(
                part, [this](const CConstraint& leaf) { return agentOf(leaf.m_slot); }))
            .get();
    }

    template <class Compute>
    CSPlainValue shared(const Expression::Node& /*node*/, Compute&& compute) const
    {
        return compute();
    }
};

CompositePlan::CompositePlan(const CSScenario& model, OperatorPromises& promises)
    : m_model(model)
    , m_variables(variablesOf(model))
{
    const Expression::Numbering numbering{
        [this](const std::string& attribute) {
            const auto found = std::find(m_attributes.begin(), m_attributes.end(), attribute);
            const auto number = static_cast<std::int32_t>(found - m_attributes.begin());
            if (found == m_attributes.end()) {
                m_attributes.push_back(attribute);
            }
            return number;
        },
        nullptr};
    for (const auto& constraint : model.m_constraints) {
        assignSlots(*constraint, m_variables);
        for (const std::int32_t slot : slotsOf(*constraint)) {
            m_readSlots.push_back(static_cast<std::size_t>(slot));
        }
        auto& expression = m_expressions.emplace_back();
        if (promises.isPure(*constraint)) {
            expression.emplace(*constraint, promises, numbering);
        }
    }
    std::sort(m_readSlots.begin(), m_readSlots.end());
    m_readSlots.erase(std::unique(m_readSlots.begin(), m_readSlots.end()), m_readSlots.end());
    m_agents.resize(m_variables.size());
    m_interval = numbering.attribute("Interval");
}

void CompositePlan::bind(const CSScenarioInstance& instance)
{
    // What binds as many variables as the model has mostly binds these: then each stands at its
    // slot, and one comparison tells.
    const auto& bindings = instance.m_bindings;
    const bool isWhole = bindings.size() == m_variables.size();
    auto bound = bindings.begin();
    std::size_t place = 0;
    for (const std::size_t slot : m_readSlots) {
        const std::string& variable = m_variables[slot];
        for (; isWhole && place < slot; ++place) {
            ++bound;
        }
        const auto found = isWhole && bound->first == variable ? bound : bindings.find(variable);
        m_agents[slot] = found == bindings.end() ? nullptr : &found->second;
    }
}

void CompositePlan::bind(const Candidate& candidate)
{
    for (const std::size_t slot : m_readSlots) {
        m_agents[slot] = candidate.seeding->agentOf(m_variables[slot], *candidate.origin);
    }
}

std::size_t CompositePlan::verify(CSScenarioInstance& instance)
{
    bind(instance);
    return verifyBound(instance.m_confidence);
}

std::size_t CompositePlan::verify(Candidate& candidate)
{
    if (candidate.instance) {
        return verify(*candidate.instance);
    }
    bind(candidate);
    return verifyBound(candidate.confidence());
}

std::size_t CompositePlan::verifyBound(double& confidence)
{
    double product = 1.0;
    std::size_t held = 0;
    for (; held < m_expressions.size(); ++held) {
        const Truth truth = evaluate(held);
        if (!truth.holds) {
            break;
        }
        product *= truth.confidence;
    }
    m_kept.clear();
    confidence = held == m_expressions.size() ? product : 1.0;
    return held;
}

Truth CompositePlan::evaluate(std::size_t constraint)
{
    Reader reader{*this};
    const auto& expression = m_expressions[constraint];
    return expression ? Truth(expression->evaluate(reader))
                      : Truth(reader.objects(*m_model.m_constraints[constraint]));
}

} // namespace scenariomatch
