#include "engine/Agents.h"
#include "engine/CSEngine.h"

#include <iostream>
#include <utility>

using scenariomatch::agentIdentifier;

bool compare_scenario_end(
    const std::shared_ptr<CSScenarioInstance>& a, const std::shared_ptr<CSScenarioInstance>& b)
{
    return *a->m_end > *b->m_end;
}

void CSEngine::infer()
{
    installFailureHandler();
    InstancesByModel newInstances;
    InstancesByModel candidates;
    recognisePrimitiveState(newInstances);
    sortRecognisedScenarios();
    bool isFirstLevel = true;
    while (!newInstances.empty()) {
        createComplexEvent(candidates, newInstances);
        if (std::exchange(isFirstLevel, false)) {
            m_firstLevelCandidates = candidates;
        }
        newInstances.clear();
        recogniseComplexEvent(candidates, newInstances);
        candidates.clear();
        sortRecognisedScenarios();
    }
    cleanRecognisedScenario();
    cleanHistory();
    removeAgents();
}

int CSEngine::addRecognisedEvent(
    const std::shared_ptr<CSScenarioInstance>& instance, std::shared_ptr<CSTimeStamp>& startOut)
{
    if (!m_currentTime) {
        startOut.reset();
        return -1;
    }
    const CSScenarioInstance& recognised = recordInstance(instance);
    startOut = recognised.m_start;
    return recognised.m_id;
}

CSScenarioInstance& CSEngine::recordInstance(const std::shared_ptr<CSScenarioInstance>& instance)
{
    std::vector<std::string> variables;
    m_participants.clear();
    for (const auto& [variable, agent] : instance->m_bindings) {
        variables.push_back(variable);
        m_participants.push_back(agentIdentifier(agent));
    }
    auto* earlier = m_recognisedScenarios.findExtensible(
        instance->m_scenario, variables, m_participants, *m_currentTime, m_constProlongation);
    if (earlier != nullptr) {
        return extendRecognised(*earlier, instance->m_confidence);
    }
    // An object that stands in the list already is recognised a second time as another one.
    const bool isThere = m_recognisedScenarios.has(*instance);
    const auto added = isThere ? std::make_shared<CSScenarioInstance>(*instance) : instance;
    addNew(added);
    return *added;
}

CSScenarioInstance&
CSEngine::extendRecognised(scenariomatch::RecognisedScenarios::Entry& entry, double confidence)
{
    m_recognisedScenarios.extend(entry, m_currentTime, confidence);
    if (m_observer != nullptr) {
        m_observer->instanceExtended(*entry.instance);
    }
    return *entry.instance;
}

// A completed composite keeps the start of the component that was looked up; all else starts now.
void CSEngine::addNew(const std::shared_ptr<CSScenarioInstance>& instance)
{
    instance->m_id = m_nextInstanceId++;
    instance->m_end = m_currentTime;
    const bool startsEarlier = instance->m_start && *instance->m_start < *m_currentTime;
    if (!startsEarlier) {
        instance->m_start = m_currentTime;
    }
    for (const auto& [variable, agent] : instance->m_bindings) {
        if (agent) {
            agent->m_instances[instance->m_id] = 1;
        }
    }
    m_recognisedScenarios.add(instance);
    if (m_observer != nullptr) {
        m_observer->instanceNew(*instance);
    }
}

bool CSEngine::isConfident(const std::shared_ptr<CSScenarioInstance>& instance) const
{
    for (const auto& component : instance->m_scenario->m_components) {
        const auto bound = instance->m_bindings.find(component->m_variable);
        if (bound == instance->m_bindings.end() || !bound->second) {
            return false;
        }
        instance->m_confidence *= bound->second->m_confidence;
    }
    return isAboveThreshold(*instance->m_scenario, instance->m_confidence);
}

bool CSEngine::isAboveThreshold(const CSScenario& model, double& confidence) const
{
    confidence /= m_bayesianRatio;
    return !(model.m_confidenceThreshold > confidence);
}

void CSEngine::cleanRecognisedScenario()
{
    if (!m_currentTime) {
        return;
    }
    m_recognisedScenarios.removeExpired(
        *m_currentTime, m_constTimeSearch, [this](const CSScenarioInstance& instance) {
            for (const auto& [variable, agent] : instance.m_bindings) {
                if (agent) {
                    agent->m_instances.erase(instance.m_id);
                }
            }
            m_components.erase(instance.m_id);
            if (m_observer != nullptr) {
                m_observer->instanceExpired(instance);
            }
        });
}

void CSEngine::sortRecognisedScenarios()
{
    m_recognisedScenarios.sort();
}

const std::list<std::shared_ptr<CSScenarioInstance>>& CSEngine::recognisedScenarios() const
{
    return m_recognisedScenarios.list();
}

namespace
{

void printBindings(const CSScenarioInstance& instance)
{
    std::cout << '\t';
    for (const auto& [variable, agent] : instance.m_bindings) {
        std::cout << variable << ' ' << agentIdentifier(agent) << " | ";
    }
    std::cout << '\n';
}

} // namespace

void CSEngine::printRecognisedScenario(const std::string& type) const
{
    for (const auto& instance : recognisedScenarios()) {
        const bool isOfType = type.empty() || instance->m_scenario->m_kind == type;
        if (!isOfType || instance->m_end->duration(*m_currentTime) != 0.0) {
            continue;
        }
        std::cout << instance->m_id << ' ' << instance->m_scenario->m_name << " ["
                  << instance->m_start->m_frameID << ' ' << instance->m_end->m_frameID
                  << "] [Conf:" << instance->m_confidence << "]\n";
        printBindings(*instance);
    }
}

void CSEngine::printAllRecognisedScenario() const
{
    for (const auto& instance : recognisedScenarios()) {
        std::cout << instance->m_id << ' ' << instance->m_scenario->m_name << ' '
                  << instance->m_start->m_frameID << ' ' << instance->m_end->m_frameID << " ["
                  << instance->m_confidence << "]\n";
        printBindings(*instance);
    }
}
