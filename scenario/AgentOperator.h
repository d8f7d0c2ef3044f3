#pragma once

#include "scenario/CConstraint.h"

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace scenariomatch
{

// An operator declared on agents in terms of loaded operators:
//
//     operator close(p : Person, q : Person) { distance(p->Position, q->Position) < 2 }
//
// It reads as a macro: a call whose arguments are bare variables of matching types is replaced by
// the body.
//
// The object is also what the operator table holds under a declared name that no plug-in provides:
// evaluated, it is false (a call that could not be replaced); its temporal flag and the argument
// that ends first are those of the body's outermost operator.
class CS_EXPORT AgentOperator : public CSOperatorInterfaceAbstract
{
public:
    struct Parameter
    {
        std::string name;
        std::string type;
    };

    AgentOperator(
        std::string name, std::vector<Parameter> parameters, std::unique_ptr<CConstraint> body);
    AgentOperator(const AgentOperator&) = delete;
    AgentOperator(AgentOperator&&) = delete;
    AgentOperator& operator=(const AgentOperator&) = delete;
    AgentOperator& operator=(AgentOperator&&) = delete;
    ~AgentOperator() override;

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override;
    CSOperatorDescription describe() const override;

    const std::vector<Parameter>& parameters() const { return m_parameters; }

    // The body's attribute arguments, (parameter, attribute), in the order of the body.
    const std::vector<CSAccessorAgent>& accessors() const { return m_accessors; }

    const CConstraint& body() const { return *m_body; }

    // Whether the call is one of this operator: every argument a bare variable whose type is the
    // parameter's or derives from it.
    bool
    matches(const CConstraint& call, const std::map<std::string, std::string>& variableTypes) const;
    // Replaces a matching call in place by the body with the arguments put in. Operators and
    // temporal flags are set, constants are not filled.
    void rewrite(CConstraint& call) const;

private:
    std::vector<Parameter> m_parameters;
    std::unique_ptr<CConstraint> m_body;
    std::vector<CSAccessorAgent> m_accessors;
};

using AgentOperators = std::vector<std::shared_ptr<AgentOperator>>;

// What became of the calls of declared operators in one constraint.
struct RewrittenCalls
{
    // The nodes that were calls, in the order of the tree; none of them stands below another.
    std::vector<CConstraint*> m_nodes;
    // Set to the name of a call that was left alone because the bodies put in grow beyond
    // kMaximumNodes.
    std::string m_tooLarge;

    static constexpr std::size_t kMaximumNodes = 2000;
};

// Replaces every call of a declared operator in place, in the body of a call also those of the
// operators declared before it. The operators are tried in order, the first that matches applies.
CS_EXPORT RewrittenCalls rewriteCalls(
    CConstraint& root,
    std::span<const std::shared_ptr<AgentOperator>> declared,
    const std::map<std::string, std::string>& variableTypes);

} // namespace scenariomatch
