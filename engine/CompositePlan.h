#pragma once

#include "engine/ComponentLookups.h"
#include "engine/CSScenarioInstance.h"
#include "engine/Expression.h"
#include "engine/OperatorPromises.h"
#include "engine/Truth.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

struct Candidate;

// How the candidates of a composite model are verified, made once per model: its constraints in
// order, the pure ones without value objects.
//
// The variables of components, their arguments and the model's objects have slots, in the order of
// their names.
class CS_EXPORT CompositePlan
{
public:
    // Also tells the leaves of the model's constraints their slots. The model outlives the plan.
    CompositePlan(const CSScenario& model, OperatorPromises& promises);

    // Evaluates the constraints up to the first that is false. Sets the confidence of the instance
    // or candidate to the product of theirs, 1.0 when one is false, and returns how many hold.
    std::size_t verify(CSScenarioInstance& instance);
    std::size_t verify(Candidate& candidate);

    // Writes the plan for people.
    void print(std::ostream& out, const ComponentLookups& lookups) const;

private:
    struct Reader;

    void
    printLookup(std::ostream& out, std::size_t component, const ComponentLookups& lookups) const;

    void bind(const CSScenarioInstance& instance);
    void bind(const Candidate& candidate);
    std::size_t verifyBound(double& confidence);
    Truth evaluate(std::size_t constraint);

    const CSScenario& m_model;
    std::vector<std::string> m_variables;
    // Of the variables that constraints read, in order.
    std::vector<std::size_t> m_readSlots;
    // By constraint; nothing for one that is evaluated with value objects.
    std::vector<std::optional<Expression>> m_expressions;
    // The names of the attributes that expressions read, by number.
    std::vector<std::string> m_attributes;
    std::int32_t m_interval = -1;
    // Of the instance or candidate at hand: the agents by slot that is read, null where the
    // variable is not bound.
    std::vector<const std::shared_ptr<CSAgent>*> m_agents;
    std::vector<std::shared_ptr<CSBasicType>> m_kept;
};

} // namespace scenariomatch
