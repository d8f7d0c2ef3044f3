#pragma once

#include "scenario/CConstraint.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace scenariomatch {

// An operator declared on agents in terms of loaded operators:
//
//     operator close(p : Person, q : Person) { distance(p->Position, q->Position) < 2 }
//
// It reads as a macro: a call whose arguments are bare variables of matching types is replaced by the body.
//
// The object is also what the operator table holds under a declared name that no plug-in provides: evaluated, it is
// false (a call that could not be replaced); its temporal flag and the argument that ends first are those of the
// body's outermost operator.
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
    ~AgentOperator() override;

    std::shared_ptr<CSBasicType>
    evaluate(std::vector<std::shared_ptr<CSBasicType>> arguments) override;
    CSOperatorDescription describe() const override;

    const std::vector<Parameter>& parameters() const { return m_parameters; }
    const CConstraint& body() const { return *m_body; }

    // Whether the call is one of this operator: every argument a bare variable whose type is the parameter's or
    // derives from it.
    bool matches(const CConstraint& call, const std::map<std::string, std::string>& variableTypes) const;
    // Replaces the call in place by the body with the arguments put in.
    void rewrite(CConstraint& call) const;

private:
    std::vector<Parameter> m_parameters;
    std::unique_ptr<CConstraint> m_body;
};

} // namespace scenariomatch
