#include "engine/CompositePlan.h"
#include "engine/PrimitivePlan.h"
#include "engine/Recognition.h"

#include <ostream>
#include <vector>

// How plans are written for people.

namespace scenariomatch
{

void PrimitivePlan::print(std::ostream& out) const
{
    out << m_model->m_kind << ' ' << m_model->m_name << '\n';
    if (m_finder == nullptr) {
        printTests(out, m_always, Sharing::OfParts);
        for (const Step& step : m_steps) {
            printStep(out, step);
        }
    } else {
        out << "    the candidates of " << m_finder->m_model->m_name << '\n';
    }
    for (std::size_t i = m_tested; i < m_model->m_constraints.size(); ++i) {
        out << "    then test " << textOf(*m_model->m_constraints[i]) << '\n';
    }
}

void PrimitivePlan::printStep(std::ostream& out, const Step& step) const
{
    out << "    bind " << m_variables[step.slot] << " to each " << m_types[step.group];
    if (step.nearby) {
        out << " within " << step.nearby->reach << " of "
            << m_variables[m_positions[step.nearby->partner].slot];
    }
    out << '\n';
    if (step.filter) {
        printTests(out, step.filter->tests, Sharing::OfTests);
    }
    printTests(out, step.tests, Sharing::OfParts);
}

void PrimitivePlan::printTests(
    std::ostream& out, const std::vector<Test>& tests, Sharing sharing) const
{
    for (const Test& test : tests) {
        const CConstraint* whole = m_model->m_constraints[test.constraint].get();
        bool isShared = sharing == Sharing::OfTests;
        std::vector<const CConstraint*> parts;
        if (!isShared) {
            test.expression->forEachShared([&](const CConstraint& part) {
                isShared = isShared || &part == whole;
                parts.push_back(&part);
            });
        }
        out << "        test " << textOf(*whole) << (isShared ? ", once for all\n" : "\n");
        for (const CConstraint* part : parts) {
            if (part != whole) {
                out << "            once for all: " << textOf(*part) << '\n';
            }
        }
    }
}

// A component that is looked up when another one has been recognised; the first of these is the
// skipped one.
void CompositePlan::printLookup(
    std::ostream& out, std::size_t component, const ComponentLookups& lookups) const
{
    out << "    look up " << m_model.m_components[component]->m_variable << ", a "
        << m_model.m_components[component]->m_modelName;
    const ComponentLookup& lookup = lookups.of(m_model, component);
    if (!lookup.parentVariable.empty()) {
        out << " on " << lookup.parentVariable;
    }
    out << '\n';
}

void CompositePlan::print(std::ostream& out, const ComponentLookups& lookups) const
{
    out << m_model.m_kind << ' ' << m_model.m_name << '\n';
    const auto trigger = static_cast<std::size_t>(m_model.m_triggerIndex);
    const auto& components = m_model.m_components;
    out << "    when " << components[trigger]->m_variable << ", a "
        << components[trigger]->m_modelName << ", is recognised\n";
    const auto first = static_cast<std::size_t>(m_model.m_skipIndex);
    if (first < components.size()) {
        printLookup(out, first, lookups);
    }
    for (std::size_t i = 0; i < components.size(); ++i) {
        if (i != trigger && i != first) {
            printLookup(out, i, lookups);
        }
    }
    for (const auto& constraint : m_model.m_constraints) {
        out << "    then test " << textOf(*constraint) << '\n';
    }
}

} // namespace scenariomatch

void CSEngine::printPlans(std::ostream& out)
{
    const Recognition& recognition = preparedRecognition();
    for (const auto& [name, plans] : recognition.primitives) {
        for (const Recognition::Primitive& primitive : plans) {
            primitive.plan.print(out);
        }
    }
    if (!m_allScenarios) {
        return;
    }
    for (const auto& [kind, models] : m_allScenarios->m_scenariosByKind) {
        for (const auto& model : models) {
            // One in a circle of components takes no part; one that nothing completes neither.
            const auto plan = recognition.composites.find(model.get());
            const bool takesPart = model->m_used && model->m_triggerIndex >= 0;
            if (takesPart && plan != recognition.composites.end()) {
                plan->second.print(out, recognition.lookups);
            }
        }
    }
}
