#include "engine/Recognition.h"
#include "engine/SettingsFile.h"
#include "scenario/AgentOperator.h"
#include "types/TextFile.h"

#include <functional>
#include <iostream>
#include <set>
#include <utility>

namespace
{

void forEachModel(
    const CSAllScenarios& scenarios,
    const std::function<void(const std::shared_ptr<CSScenario>&)>& visit)
{
    for (const auto& [kind, models] : scenarios.m_scenariosByKind) {
        for (const auto& model : models) {
            visit(model);
        }
    }
}

std::set<std::string> namesOf(const CSAllScenarios& scenarios)
{
    std::set<std::string> names;
    forEachModel(scenarios, [&names](const auto& model) { names.insert(model->m_name); });
    return names;
}

void keepUsedModels(CSAllScenarios& scenarios)
{
    for (auto& [kind, models] : scenarios.m_scenariosByKind) {
        std::erase_if(models, [](const auto& model) { return !model->m_used; });
    }
}

} // namespace

void CSEngine::announce(const char* step) const
{
    if (m_debug) {
        std::cout << "Initialisation: " << step << '\n';
    }
}

void CSEngine::read(const std::string& fileName)
{
    installFailureHandler();
    m_recognition->plansAreCurrent = false;
    announce("Read the scenario models");
    m_allScenarios = std::make_unique<CSAllScenarios>();
    readEngineFile(fileName);
    announce("Choose the scenario models");
    chooseScenarioModels();
    announce("Check the constraints of the scenario models");
    checkScenarioModelsConstraints();
    announce("Check the components of the scenario models");
    checkScenarioModels();
    announce("Give the value of the constants in the constraints");
    m_allScenarios->fillConstraintsConstants();
    m_allScenarios->classifyConstraints();
    announce("Create the tree model of the scenarios");
    m_allScenarios->createModelTree(m_agentOperators);
}

void CSEngine::readEngineFile(const std::string& fileName)
{
    const auto text = scenariomatch::readTextFile(fileName);
    if (!text) {
        return;
    }
    const std::string directory = scenariomatch::directoryOf(fileName);
    scenariomatch::readListEntries(*text, [&](const scenariomatch::SettingsEntry& entry) {
        if (entry.keyword == "includeScenario") {
            m_allScenarios->read(directory + entry.argument, m_envVars, m_levelAlarm);
        } else if (entry.keyword == "includeEngine") {
            readEngine(directory + entry.argument);
        }
    });
}

void CSEngine::readEngine(const std::string& fileName)
{
    const auto text = scenariomatch::readTextFile(fileName);
    if (!text) {
        return;
    }
    const std::string directory = scenariomatch::directoryOf(fileName);
    scenariomatch::readEngineEntries(
        fileName, *text, [&](const scenariomatch::SettingsEntry& entry) {
            if (entry.keyword == "EnvVars") {
                readEnvVars(directory + entry.argument);
            } else if (entry.keyword == "UsedModels") {
                scenariomatch::appendItems(entry.argument, m_usedModels);
            } else if (entry.keyword == "InterestedObjects") {
                scenariomatch::appendItems(entry.argument, m_interestedObjects);
            }
        });
}

void CSEngine::readEnvVars(const std::string& fileName)
{
    const auto text = scenariomatch::readTextFile(fileName);
    if (text) {
        scenariomatch::readConstantEntries(
            *text, [this](const std::string& name, double value) { m_envVars[name] = value; });
    }
}

void CSEngine::chooseScenarioModels()
{
    const std::set<std::string> names = namesOf(*m_allScenarios);
    for (const std::string& name : m_usedModels) {
        if (!names.contains(name)) {
            std::cerr << "Warning: the scenario model: " << name << " does not exist!\n";
        }
    }
    const std::set<std::string> used(m_usedModels.begin(), m_usedModels.end());
    forEachModel(*m_allScenarios, [&used](const auto& model) {
        model->m_used = model->m_used || used.contains(model->m_name);
    });
    keepUsedModels(*m_allScenarios);
}

void CSEngine::checkScenarioModelsConstraints()
{
    forEachModel(*m_allScenarios, [this](const auto& model) {
        for (const auto& constraint : model->m_constraints) {
            if (!constraint->checkOperator(m_operators)) {
                std::cerr << "\t in scenario model " << model->m_name << ". It will not be used!\n";
                model->m_used = false;
            }
        }
    });
    keepUsedModels(*m_allScenarios);
}

void CSEngine::checkScenarioModels()
{
    const std::set<std::string> names = namesOf(*m_allScenarios);
    forEachModel(*m_allScenarios, [&names](const auto& model) {
        for (const auto& component : model->m_components) {
            if (!names.contains(component->m_modelName)) {
                std::cerr << "Warning: the component " << component->m_modelName
                          << " is not defined but it is used in the scenario " << model->m_name
                          << '\n';
                model->m_used = false;
            }
        }
    });
}

void CSEngine::rewriteAgentOperator()
{
    if (m_allScenarios) {
        m_allScenarios->rewriteAgentOperator(m_agentOperators);
        m_recognition->plansAreCurrent = false;
    }
}

void CSEngine::setThresholdByEventType(const std::string& type, double value)
{
    m_thresholdByEventType[type] = value;
}

void CSEngine::setLevelAlarm(const std::string& name, int level)
{
    m_levelAlarm[name] = level;
}

void CSEngine::setHistorySize(int size)
{
    CSEngine::m_historySize = size;
    CSAgent::m_historySize = size;
}

void CSEngine::setConstTimeSearch(double seconds)
{
    m_constTimeSearch = seconds;
    CSScenarioInstance::m_const_TimeSearch = seconds;
}

void CSEngine::setAllObjectTypes(std::map<std::string, std::vector<std::string>> types)
{
    m_objectTypes = std::move(types);
}

void CSEngine::readAllObjects(const std::string& fileName)
{
    CSAgent::readAllObjects(fileName);
}
