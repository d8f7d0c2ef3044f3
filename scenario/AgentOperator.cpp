#include "scenario/AgentOperator.h"

#include "scenario/OperatorCall.h"

#include <algorithm>
#include <utility>

namespace scenariomatch
{

namespace
{

bool isOfType(const std::string& variableType, const std::string& type)
{
    if (variableType == type) {
        return true;
    }
    const auto types = CSAgent::m_allObjectTypes.find(type);
    return types != CSAgent::m_allObjectTypes.end() &&
           std::find(types->second.begin(), types->second.end(), variableType) !=
               types->second.end();
}

void collectAccessors(const CConstraint& node, std::vector<CSAccessorAgent>& accessors)
{
    if (node.m_operatorName == "->") {
        accessors.emplace_back(node.m_value, node.m_attribute);
    }
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        collectAccessors(*child, accessors);
    }
}

std::size_t countNodes(const CConstraint& node)
{
    std::size_t nodes = 1;
    for (const std::unique_ptr<CConstraint>& child : node.m_children) {
        nodes += countNodes(*child);
    }
    return nodes;
}

// Copies a body's nodes into a constraint, with variables for parameters.
class Substitution
{
public:
    Substitution(
        std::map<std::string, std::string> variables, const std::vector<CSAccessorAgent>& accessors)
        : m_variables(std::move(variables))
        , m_accessor(accessors.begin())
    {
    }

    void putIn(const CConstraint& from, CConstraint& to)
    {
        to.m_operatorName = from.m_operatorName;
        to.m_operator = from.m_operator;
        to.m_isTemporal = from.m_operator != nullptr && from.m_operator->m_isTemporal;
        if (from.m_operatorName == "->") {
            to.m_value = variable(m_accessor->m_agent);
            to.m_attribute = m_accessor->m_attribute;
            ++m_accessor;
        } else {
            to.m_value = variable(from.m_value);
        }
        for (const std::unique_ptr<CConstraint>& child : from.m_children) {
            putIn(*child, *to.m_children.emplace_back(std::make_unique<CConstraint>()));
        }
    }

private:
    const std::string& variable(const std::string& word) const
    {
        const auto variable = m_variables.find(word);
        return variable == m_variables.end() ? word : variable->second;
    }

    std::map<std::string, std::string> m_variables;
    std::vector<CSAccessorAgent>::const_iterator m_accessor;
};

// One walk over a constraint for rewriteCalls.
class CallRewriter
{
public:
    using Declared = std::span<const std::shared_ptr<AgentOperator>>;

    explicit CallRewriter(const std::map<std::string, std::string>& variableTypes)
        : m_variableTypes(variableTypes)
    {
    }

    // `isPutIn` tells that the node comes from a body.
    void visit(CConstraint& node, Declared declared, bool isPutIn)
    {
        const auto matching =
            std::find_if(declared.begin(), declared.end(), [&](const auto& candidate) {
                return candidate->matches(node, m_variableTypes);
            });
        if (matching == declared.end()) {
            for (const std::unique_ptr<CConstraint>& child : node.m_children) {
                visit(*child, declared, isPutIn);
            }
            return;
        }
        m_nodes += countNodes((*matching)->body());
        if (m_nodes > RewrittenCalls::kMaximumNodes) {
            m_result.m_tooLarge = node.m_operatorName;
            return;
        }
        (*matching)->rewrite(node);
        if (!isPutIn) {
            m_result.m_nodes.push_back(&node);
        }
        // A body may call only what is declared before it, so this ends.
        visit(node, declared.first(static_cast<std::size_t>(matching - declared.begin())), true);
    }

    RewrittenCalls takeResult() { return std::move(m_result); }

private:
    const std::map<std::string, std::string>& m_variableTypes;
    RewrittenCalls m_result;
    std::size_t m_nodes = 0;
};

} // namespace

AgentOperator::AgentOperator(
    std::string name, std::vector<Parameter> parameters, std::unique_ptr<CConstraint> body)
    : m_parameters(std::move(parameters))
    , m_body(std::move(body))
{
    m_name = std::move(name);
    m_isTemporal = m_body->m_operator != nullptr && m_body->m_operator->m_isTemporal;
    collectAccessors(*m_body, m_accessors);
}

AgentOperator::~AgentOperator() = default;

std::shared_ptr<CSBasicType> AgentOperator::evaluate(std::vector<std::shared_ptr<CSBasicType>>)
{
    return std::make_shared<CSBool>(false);
}

CSOperatorDescription AgentOperator::describe() const
{
    CSOperatorDescription description;
    description.m_summary = "Declared in the operator description.";
    description.m_arguments.resize(m_parameters.size());
    description.m_requiredArguments = m_parameters.size();
    if (m_body->m_operator == nullptr) {
        return description;
    }
    const CSOperatorDescription inner = describeOperator(*m_body->m_operator);
    description.m_result = inner.m_result;
    if (inner.m_endsFirst && *inner.m_endsFirst < m_body->m_children.size()) {
        const std::string& first = m_body->m_children[*inner.m_endsFirst]->m_value;
        const auto parameter =
            std::find_if(m_parameters.begin(), m_parameters.end(), [&](const Parameter& p) {
                return p.name == first;
            });
        if (parameter != m_parameters.end()) {
            description.m_endsFirst =
                static_cast<std::size_t>(std::distance(m_parameters.begin(), parameter));
        }
    }
    return description;
}

bool AgentOperator::matches(
    const CConstraint& call, const std::map<std::string, std::string>& variableTypes) const
{
    if (call.m_operatorName != m_name || call.isLeaf()) {
        return false;
    }
    if (m_parameters.empty()) {
        // An empty argument list is read as one empty word.
        return call.m_children.size() == 1 && call.m_children.front()->m_operatorName == "NULL" &&
               call.m_children.front()->m_value.empty();
    }
    if (call.m_children.size() != m_parameters.size()) {
        return false;
    }
    for (std::size_t i = 0; i < m_parameters.size(); ++i) {
        const CConstraint& argument = *call.m_children[i];
        const auto type = variableTypes.find(argument.m_value);
        if (argument.m_operatorName != "NULL" || argument.m_isNumeric ||
            type == variableTypes.end() || !isOfType(type->second, m_parameters[i].type)) {
            return false;
        }
    }
    return true;
}

void AgentOperator::rewrite(CConstraint& call) const
{
    std::map<std::string, std::string> variables;
    for (std::size_t i = 0; i < m_parameters.size(); ++i) {
        variables[m_parameters[i].name] = call.m_children[i]->m_value;
    }
    call.m_children.clear();
    Substitution(std::move(variables), m_accessors).putIn(*m_body, call);
}

RewrittenCalls rewriteCalls(
    CConstraint& root,
    std::span<const std::shared_ptr<AgentOperator>> declared,
    const std::map<std::string, std::string>& variableTypes)
{
    CallRewriter rewriter(variableTypes);
    rewriter.visit(root, declared, false);
    return rewriter.takeResult();
}

} // namespace scenariomatch
