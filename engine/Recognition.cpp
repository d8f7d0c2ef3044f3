#include "engine/Recognition.h"

#include "engine/Agents.h"
#include "engine/RecognitionObserver.h"

#include <ostream>
#include <set>
#include <utility>

namespace
{

// The variables that recognised instances of the model bind, by name: the objects of a primitive
// state, else the components and their arguments.
std::vector<std::string> boundVariables(const CSScenario& model)
{
    std::set<std::string> variables;
    for (const auto& component : model.m_components) {
        variables.insert(component->m_variable);
        variables.insert(component->m_arguments.begin(), component->m_arguments.end());
    }
    for (const auto& [position, variable] : model.m_physicalObjects) {
        variables.insert(variable);
    }
    return {variables.begin(), variables.end()};
}

} // namespace

void CSEngine::Seeds::add(scenariomatch::Candidate seed)
{
    const CSScenario& parent = seed.model();
    if (model != &parent) {
        model = &parent;
        ofModel = &candidates.byModel[parent.m_name];
    }
    ofModel->push_back(std::move(seed));
}

CSEngine::Recognition& CSEngine::preparedRecognition()
{
    Recognition& recognition = *m_recognition;
    const bool isObserved = m_observer != nullptr && m_observer->needsAllCandidates();
    const bool isCurrent = recognition.plansAreCurrent && recognition.isObserved == isObserved;
    if (!isCurrent && m_allScenarios) {
        recognition.isObserved = isObserved;
        recognition.prepare(*m_allScenarios);
    }
    return recognition;
}

void CSEngine::Recognition::prepare(const CSAllScenarios& scenarios)
{
    // Nobody else knows how: the seedings go now.
    makeFirstLevel();
    primitives.clear();
    composites.clear();
    outcomes.clear();
    context = std::make_unique<scenariomatch::PlanContext>();
    for (const auto& [kind, models] : scenarios.m_scenariosByKind) {
        for (const auto& model : models) {
            if (kind == "PrimitiveState") {
                primitives[model->m_name].push_back(
                    {scenariomatch::PrimitivePlan(model, *context, isObserved),
                     &outcomeOf(*model, scenarios)});
            } else {
                composites.try_emplace(model.get(), *model, context->promises);
            }
        }
    }
    shareWork();
    recognised.recheckWhole();
    lookups = scenariomatch::ComponentLookups(scenarios);
    lookups.forEach([this](const std::string& modelName, const std::string& variable) {
        recognised.indexByParticipant(modelName, variable);
    });
    plansAreCurrent = true;
}

// What several models compute is known once all have a plan.
void CSEngine::Recognition::shareWork()
{
    const auto forEachPlan = [this](auto&& visit) {
        for (auto& [name, plans] : primitives) {
            for (Primitive& primitive : plans) {
                visit(primitive.plan);
            }
        }
    };
    std::unordered_map<std::string, scenariomatch::PrimitivePlan*> finders;
    forEachPlan([&finders](scenariomatch::PrimitivePlan& plan) {
        const std::string work = plan.work();
        const auto [finder, isNew] = finders.try_emplace(work, &plan);
        if (!isNew && !work.empty()) {
            plan.follow(*finder->second);
        } else {
            plan.countShared();
        }
    });
    forEachPlan([](scenariomatch::PrimitivePlan& plan) { plan.prepareTests(); });
}

void CSEngine::Recognition::dropLevels()
{
    for (scenariomatch::Candidates* level : {&seeded, &completed}) {
        if (!level->empty()) {
            level->clear();
        }
    }
}

void CSEngine::Recognition::keepFirstLevel(
    scenariomatch::Candidates& candidates, std::shared_ptr<CSTimeStamp> seededAt)
{
    m_firstLevelInstances.clear();
    m_firstLevel.byModel.swap(candidates.byModel);
    m_firstLevelSeeded = std::move(seededAt);
}

void CSEngine::Recognition::makeFirstLevel()
{
    m_firstLevel.moveTo(m_firstLevelInstances, m_firstLevelSeeded);
}

const CSEngine::InstancesByModel& CSEngine::Recognition::firstLevelInstances()
{
    makeFirstLevel();
    return m_firstLevelInstances;
}

CSEngine::Outcome&
CSEngine::Recognition::outcomeOf(const CSScenario& model, const CSAllScenarios& scenarios)
{
    const auto [entry, isNew] = outcomes.try_emplace(&model);
    Outcome& outcome = entry->second;
    if (isNew) {
        outcome.model = &model;
        outcome.index = &recognised.indexOf(model.m_name);
        outcome.variables = boundVariables(model);
        const auto parents = scenarios.m_parents.find(model.m_name);
        if (parents != scenarios.m_parents.end()) {
            for (const auto& parent : parents->second) {
                outcome.seedings.emplace_back(parent, model, outcome.variables);
            }
        }
    }
    return outcome;
}

void CSEngine::Recognition::startCandidates(std::uint64_t limit)
{
    context->limit.set(limit);
    for (auto& [name, count] : tried) {
        count = 0;
    }
}

// Where every candidate is observed those that do not fit are looked at too; else only instances
// with the shared participant are.
const scenariomatch::RecognisedGroup* CSEngine::Recognition::recognisedFor(
    const CSScenarioInstance& candidate, std::size_t component) const
{
    const CSScenario& model = *candidate.m_scenario;
    const std::string& subModel = model.m_components[component]->m_modelName;
    const scenariomatch::ComponentLookup& lookup = lookups.of(model, component);
    const auto shared = candidate.m_bindings.find(lookup.parentVariable);
    if (isObserved || lookup.subVariable.empty() || shared == candidate.m_bindings.end()) {
        return recognised.ofModel(subModel);
    }
    return recognised.ofParticipant(
        subModel, lookup.subVariable, scenariomatch::agentIdentifier(shared->second));
}
