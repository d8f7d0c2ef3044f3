#include "engine/Agents.h"
#include "engine/Arguments.h"
#include "engine/ConstraintsHold.h"
#include "engine/CSEngine.h"

#include <cstddef>
#include <utility>

using scenariomatch::agentIdentifier;
using scenariomatch::argumentAt;
using scenariomatch::PrimitivePlan;

namespace
{

CConstraint::Bindings bindingsOf(const PrimitivePlan& plan)
{
    CConstraint::Bindings bindings;
    for (std::size_t slot = 0; slot < plan.variables().size(); ++slot) {
        bindings.emplace_hint(bindings.end(), plan.variables()[slot], plan.agent(slot));
    }
    return bindings;
}

} // namespace

void CSEngine::recognisePrimitiveState(InstancesByModel& newInstances)
{
    m_statistics = {};
    preparePlans();
    if (!m_currentTime) {
        return;
    }
    const AgentsByType present = presentAgents();
    for (auto& [name, plans] : m_primitivePlans) {
        for (PrimitivePlan& plan : plans) {
            recogniseModel(plan, present, newInstances);
        }
    }
}

void CSEngine::recogniseModel(
    PrimitivePlan& plan, const AgentsByType& present, InstancesByModel& newInstances)
{
    const PrimitivePlan::Candidates candidates = candidatesFor(plan, present);
    if (plan.hasCandidates(candidates)) {
        plan.enumerate(candidates, [&] { recogniseCandidate(plan, newInstances); });
    }
}

void CSEngine::preparePlans()
{
    if (m_plansAreCurrent || !m_allScenarios) {
        return;
    }
    m_primitivePlans.clear();
    const auto group = m_allScenarios->m_scenariosByKind.find("PrimitiveState");
    if (group != m_allScenarios->m_scenariosByKind.end()) {
        for (const auto& model : group->second) {
            m_primitivePlans[model->m_name].emplace_back(model);
        }
    }
    m_lookups = scenariomatch::ComponentLookups(*m_allScenarios);
    m_lookups.forEach([this](const std::string& modelName, const std::string& variable) {
        m_recognisedScenarios.indexByParticipant(modelName, variable);
    });
    m_plansAreCurrent = true;
}

CSEngine::AgentsByType CSEngine::presentAgents() const
{
    AgentsByType present;
    for (const auto& [id, agent] : m_agents) {
        if (isPresent(*agent)) {
            present[agent->m_type].push_back(agent);
        }
    }
    return present;
}

PrimitivePlan::Candidates
CSEngine::candidatesFor(const PrimitivePlan& plan, const AgentsByType& present) const
{
    PrimitivePlan::Candidates candidates;
    for (const std::string& type : plan.types()) {
        auto& group = candidates.emplace_back();
        const auto subtypes = m_objectTypes.find(type);
        if (subtypes == m_objectTypes.end()) {
            continue;
        }
        for (const std::string& subtype : subtypes->second) {
            const auto agents = present.find(subtype);
            if (agents != present.end()) {
                group.insert(group.end(), agents->second.begin(), agents->second.end());
            }
        }
    }
    return candidates;
}

void CSEngine::recogniseCandidate(PrimitivePlan& plan, InstancesByModel& newInstances)
{
    double confidence = 1.0;
    if (isAccepted(plan, confidence)) {
        ++m_statistics.accepted;
        seedParents(recordCandidate(plan, confidence), newInstances);
    }
}

bool CSEngine::isAccepted(const PrimitivePlan& plan, double& confidence)
{
    const CSScenario& model = *plan.model();
    ++m_statistics.tested;
    if (m_observer != nullptr) {
        m_observer->candidateTested(model, bindingsOf(plan));
    }
    const auto agentOf = [&plan](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
        static const std::shared_ptr<CSAgent> none;
        return leaf.m_slot < 0 ? none : plan.agent(static_cast<std::size_t>(leaf.m_slot));
    };
    const std::size_t held = scenariomatch::constraintsHeld(model, agentOf, confidence);
    if (held < model.m_constraints.size()) {
        if (m_observer != nullptr) {
            m_observer->constraintFalse(model, bindingsOf(plan), held);
        }
        return false;
    }
    // A component of a primitive state is never bound, and a candidate with an unbound one is not
    // confident.
    const bool isConfident = isAboveThreshold(model, confidence) && model.m_components.empty();
    if (!isConfident && m_observer != nullptr) {
        m_observer->notConfident(model, bindingsOf(plan), confidence);
    }
    return isConfident;
}

CSScenarioInstance& CSEngine::recordCandidate(const PrimitivePlan& plan, double confidence)
{
    m_participants.clear();
    for (std::size_t slot = 0; slot < plan.variables().size(); ++slot) {
        m_participants.push_back(agentIdentifier(plan.agent(slot)));
    }
    auto* earlier = m_recognisedScenarios.findExtensible(
        plan.model(), plan.variables(), m_participants, *m_currentTime, m_constProlongation);
    if (earlier != nullptr) {
        return extendRecognised(*earlier, confidence);
    }
    auto instance =
        std::make_shared<CSScenarioInstance>(plan.model(), m_currentTime, m_currentTime);
    instance->m_bindings = bindingsOf(plan);
    instance->m_confidence = confidence;
    addNew(instance);
    return *instance;
}

void CSEngine::seedParents(const CSScenarioInstance& recognised, InstancesByModel& newInstances)
{
    const auto parents = m_allScenarios->m_parents.find(recognised.m_scenario->m_name);
    if (parents == m_allScenarios->m_parents.end()) {
        return;
    }
    for (const auto& parent : parents->second) {
        auto seed = std::make_shared<CSScenarioInstance>(parent, m_currentTime, m_currentTime);
        for (std::size_t k = 0; k < parent->m_components.size(); ++k) {
            const CComponent& component = *parent->m_components[k];
            const bool isSkipped = static_cast<int>(k) == parent->m_skipIndex;
            if (!isSkipped && component.m_modelName == recognised.m_scenario->m_name) {
                seedComponent(*seed, component, recognised);
            }
        }
        newInstances[parent->m_name].push_back(std::move(seed));
    }
}

void CSEngine::seedComponent(
    CSScenarioInstance& seed, const CComponent& component, const CSScenarioInstance& recognised)
{
    seed.m_bindings[component.m_variable] = refreshComponent(recognised, m_currentTime);
    for (const auto& [position, variable] : recognised.m_scenario->m_physicalObjects) {
        if (const std::string* argument = argumentAt(component, position)) {
            const auto agent = recognised.m_bindings.find(variable);
            seed.m_bindings[*argument] =
                agent == recognised.m_bindings.end() ? nullptr : agent->second;
        }
    }
}

std::shared_ptr<CSAgent> CSEngine::refreshComponent(
    const CSScenarioInstance& recognised, const std::shared_ptr<CSTimeStamp>& end)
{
    const int frame = m_currentTime->m_frameID;
    const std::shared_ptr<CSAgent>& component = m_components[getComponent(recognised.m_id)];
    component->m_confidence = recognised.m_confidence;
    component->set("Interval", std::make_shared<CSInterval>(recognised.m_start, end), frame);
    component->setFrameID(frame);
    component->set("Name", std::make_shared<CSString>(recognised.m_scenario->m_name), frame);
    return component;
}
