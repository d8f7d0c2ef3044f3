#include "engine/Agents.h"
#include "engine/Recognition.h"
#include "engine/RecognitionObserver.h"

#include <iostream>
#include <string>
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
    Recognition& recognition = *m_recognition;
    recognition.slow.startFrame();
    recognition.dropLevels();
    Seeds seeds{recognition.seeded};
    recognisePrimitives(seeds);
    sortRecognisedScenarios();
    bool isFirstLevel = true;
    while (!recognition.seeded.empty()) {
        completeSeeds(recognition.completed, recognition.seeded);
        Seeds above{recognition.seeded};
        recogniseComposites(recognition.completed, above);
        if (std::exchange(isFirstLevel, false)) {
            recognition.keepFirstLevel(recognition.completed, m_currentTime);
        }
        recognition.completed.clear();
        sortRecognisedScenarios();
    }
    cleanRecognisedScenario();
    cleanHistory();
    removeAgents();
    recognition.slow.endFrame(m_reportFailure);
}

// Of composites nobody knows how many candidates there are.
void CSEngine::noteCut(const std::string& modelName, std::uint64_t candidates)
{
    ++m_candidateCuts;
    if (m_cutModels.insert(modelName).second && m_reportFailure) {
        m_reportFailure(
            "Model " + modelName + " has too many candidates in frame " +
            std::to_string(m_currentTime->m_frameID) +
            (candidates > 0 ? " (" + std::to_string(candidates) + ")" : "") + ": those after " +
            std::to_string(m_candidateLimit) + " tries are left out");
    }
}

int CSEngine::addRecognisedEvent(
    const std::shared_ptr<CSScenarioInstance>& instance, std::shared_ptr<CSTimeStamp>& startOut)
{
    if (!m_currentTime) {
        startOut.reset();
        return -1;
    }
    const CSScenarioInstance& recognised =
        *recordInstance(instance, m_recognition->outcomeOf(*instance->m_scenario, *m_allScenarios))
             .instance;
    startOut = recognised.m_start;
    return recognised.m_id;
}

scenariomatch::RecognisedEntry&
CSEngine::recordComposite(scenariomatch::Candidate& candidate, Outcome& outcome)
{
    if (candidate.instance) {
        return recordInstance(candidate.instance, outcome);
    }
    const scenariomatch::Seeding& seeding = *candidate.seeding;
    std::vector<int>& participants = m_recognition->participants;
    participants.clear();
    for (std::size_t place = 0; place < seeding.variables().size(); ++place) {
        participants.push_back(seeding.identifier(place, *candidate.origin));
    }
    auto* earlier = m_recognition->recognised.findExtensible(
        *outcome.index,
        *seeding.parent(),
        seeding.variables(),
        participants,
        {*m_currentTime, m_constProlongation});
    if (earlier != nullptr) {
        extendRecognised(*earlier, candidate.confidence());
        return *earlier;
    }
    return addNew(candidate.made(m_currentTime), outcome);
}

scenariomatch::RecognisedEntry&
CSEngine::recordInstance(const std::shared_ptr<CSScenarioInstance>& instance, Outcome& outcome)
{
    auto& recognition = *m_recognition;
    recognition.participants.clear();
    for (const auto& [variable, agent] : instance->m_bindings) {
        recognition.participants.push_back(agentIdentifier(agent));
    }
    auto* earlier = m_recognition->recognised.findExtensible(
        *outcome.index, *instance, recognition.participants, {*m_currentTime, m_constProlongation});
    if (earlier != nullptr) {
        extendRecognised(*earlier, instance->m_confidence);
        return *earlier;
    }
    // An object that stands in the list already is recognised a second time as another one.
    const bool isThere = recognition.recognised.has(*instance);
    return addNew(isThere ? std::make_shared<CSScenarioInstance>(*instance) : instance, outcome);
}

void CSEngine::extendRecognised(scenariomatch::RecognisedEntry& entry, double confidence)
{
    m_recognition->recognised.extend(entry, m_currentTime, confidence);
    if (m_observer != nullptr) {
        m_observer->instanceExtended(*entry.instance);
    }
}

// A completed composite keeps the start of the component that was looked up; all else starts now.
scenariomatch::RecognisedEntry&
CSEngine::addNew(const std::shared_ptr<CSScenarioInstance>& instance, Outcome& outcome)
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
    auto& entry = m_recognition->recognised.add(*outcome.index, instance);
    if (m_observer != nullptr) {
        m_observer->instanceNew(*instance);
    }
    return entry;
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

bool CSEngine::isConfident(scenariomatch::Candidate& candidate) const
{
    if (candidate.instance) {
        return isConfident(candidate.instance);
    }
    const CSScenario& model = candidate.model();
    for (const auto& component : model.m_components) {
        const auto* agent = candidate.seeding->agentOf(component->m_variable, *candidate.origin);
        if (agent == nullptr || !*agent) {
            return false;
        }
        candidate.confidence() *= (*agent)->m_confidence;
    }
    return isAboveThreshold(model, candidate.confidence());
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
    m_recognition->recognised.removeExpired(
        *m_currentTime, m_constTimeSearch, [this](const CSScenarioInstance& instance) {
            for (const auto& [variable, agent] : instance.m_bindings) {
                if (agent) {
                    agent->m_instances.erase(instance.m_id);
                    agent->wakeUp();
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
    m_recognition->recognised.sort();
}

const CSEngine::InstancesByModel& CSEngine::firstLevelCandidates() const
{
    return m_recognition->firstLevelInstances();
}

const std::list<std::shared_ptr<CSScenarioInstance>>& CSEngine::recognisedScenarios() const
{
    return m_recognition->recognised.list();
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
