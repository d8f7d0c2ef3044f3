#include "engine/Agents.h"
#include "engine/Arguments.h"
#include "engine/Recognition.h"
#include "engine/RecognitionObserver.h"

#include <algorithm>
#include <iterator>
#include <utility>

using scenariomatch::agentIdentifier;
using scenariomatch::argumentAt;
using scenariomatch::Candidate;
using scenariomatch::Candidates;
using scenariomatch::CompletionRejection;
using scenariomatch::isPhysicalObject;
using scenariomatch::RecognisedEntry;
using scenariomatch::RecognisedGroup;
using scenariomatch::RecognisedScenarios;

namespace
{

bool isBound(const CSScenarioInstance& instance, const std::string& variable)
{
    return instance.m_bindings.find(variable) != instance.m_bindings.end();
}

bool isTriggered(const Candidate& seed)
{
    if (!seed.instance) {
        return seed.seeding->isTriggered();
    }
    const CSScenario& model = seed.model();
    const auto trigger = static_cast<std::size_t>(model.m_triggerIndex);
    return isBound(*seed.instance, model.m_components[trigger]->m_variable);
}

Candidates candidatesOf(const CSEngine::InstancesByModel& instances)
{
    Candidates candidates;
    for (const auto& [name, ofModel] : instances) {
        std::vector<Candidate>& all = candidates.byModel[name];
        for (const auto& instance : ofModel) {
            all.emplace_back(instance);
        }
    }
    return candidates;
}

// Whether the component is filled by the recognised instance's own pseudo-agent.
bool isFilledBy(
    const CSScenarioInstance& candidate,
    const CComponent& component,
    const CSScenarioInstance& recognised)
{
    const auto filling = candidate.m_bindings.find(component.m_variable);
    return filling != candidate.m_bindings.end() &&
           agentIdentifier(filling->second) == recognised.m_id;
}

bool bindsObjectTwice(const CConstraint::Bindings& bindings)
{
    for (auto one = bindings.begin(); one != bindings.end(); ++one) {
        if (!isPhysicalObject(one->second)) {
            continue;
        }
        const bool again = std::any_of(std::next(one), bindings.end(), [&](const auto& other) {
            return isPhysicalObject(other.second) && other.second->m_ID == one->second->m_ID &&
                   other.second->m_constant == one->second->m_constant;
        });
        if (again) {
            return true;
        }
    }
    return false;
}

} // namespace

struct CSEngine::Attempt
{
    RecognisedEntry* recognised;
    std::size_t pending;
};

void CSEngine::createComplexEvent(InstancesByModel& candidates, const InstancesByModel& seeded)
{
    preparedRecognition();
    if (!m_currentTime) {
        return;
    }
    Candidates seeds = candidatesOf(seeded);
    Candidates completed;
    completeSeeds(completed, seeds);
    completed.moveTo(candidates, m_currentTime);
}

void CSEngine::completeSeeds(Candidates& candidates, Candidates& seeded)
{
    scenariomatch::CandidateLimit& limit = m_recognition->context->limit;
    for (auto& [name, seeds] : seeded.byModel) {
        if (seeds.empty()) {
            continue;
        }
        std::vector<Candidate>& all = candidates.byModel[name];
        Instances pending;
        for (Candidate& seed : seeds) {
            if (seed.model().m_skipIndex < 0) {
                all.push_back(std::move(seed));
            } else if (isTriggered(seed)) {
                pending.push_back(seed.made(m_currentTime));
            }
        }
        Instances completed;
        std::uint64_t& tried = m_recognition->tried[name];
        limit.start(tried);
        completePending(pending, completed);
        tried = limit.tried();
        if (limit.isReached()) {
            noteCut(name, 0);
        }
        for (auto& instance : completed) {
            all.emplace_back(std::move(instance));
        }
    }
    seeded.clear();
}

bool CSEngine::isTooOld(const CSScenarioInstance& recognised) const
{
    return recognised.m_end->duration(*m_currentTime) > m_constTimeSearch;
}

int CSEngine::countRecent(const std::string& modelName) const
{
    const auto* group = m_recognition->recognised.ofModel(modelName);
    if (group == nullptr) {
        return 0;
    }
    auto count = static_cast<int>(group->items().size());
    for (auto last = group->items().rbegin();
         last != group->items().rend() && isTooOld(*(*last)->instance);
         ++last) {
        --count;
    }
    return count;
}

// Candidates come in the order of the recognised instances, then of the pending ones.
void CSEngine::completePending(const Instances& pending, Instances& completed)
{
    std::vector<Attempt> attempts;
    std::map<std::string, int> recent;
    for (std::size_t i = 0; i < pending.size(); ++i) {
        const CSScenario& model = *pending[i]->m_scenario;
        const auto component = static_cast<std::size_t>(model.m_skipIndex);
        const std::string& subModel = model.m_components[component]->m_modelName;
        if (recent.find(subModel) == recent.end()) {
            recent[subModel] = countRecent(subModel);
        }
        m_statistics.completions += recent[subModel];
        const RecognisedGroup* group = m_recognition->recognisedFor(*pending[i], component);
        if (group == nullptr) {
            continue;
        }
        for (RecognisedEntry* entry : group->items()) {
            if (isTooOld(*entry->instance) || !m_recognition->context->limit.tryOne()) {
                break;
            }
            attempts.push_back({entry, i});
        }
    }
    std::stable_sort(attempts.begin(), attempts.end(), [](const Attempt& a, const Attempt& b) {
        return RecognisedScenarios::isBefore(*a.recognised, *b.recognised);
    });
    for (const Attempt& attempt : attempts) {
        const CSScenarioInstance& candidate = *pending[attempt.pending];
        const auto component = static_cast<std::size_t>(candidate.m_scenario->m_skipIndex);
        auto joined = tryCompletion(candidate, component, *attempt.recognised, true);
        if (joined) {
            completeRest(std::move(joined), completed);
        }
    }
}

// Looks the components up that are still unbound, one after the other in their order.
void CSEngine::completeRest(std::shared_ptr<CSScenarioInstance> candidate, Instances& completed)
{
    const auto& components = candidate->m_scenario->m_components;
    const auto open =
        std::find_if(components.begin(), components.end(), [&](const auto& component) {
            return !isBound(*candidate, component->m_variable);
        });
    if (open == components.end()) {
        completed.push_back(std::move(candidate));
        return;
    }
    const auto component = static_cast<std::size_t>(open - components.begin());
    m_statistics.completions += countRecent((*open)->m_modelName);
    const RecognisedGroup* group = m_recognition->recognisedFor(*candidate, component);
    if (group == nullptr) {
        return;
    }
    for (RecognisedEntry* entry : group->items()) {
        if (isTooOld(*entry->instance) || !m_recognition->context->limit.tryOne()) {
            return;
        }
        auto joined = tryCompletion(*candidate, component, *entry, false);
        if (joined) {
            completeRest(std::move(joined), completed);
        }
    }
}

std::shared_ptr<CSScenarioInstance> CSEngine::tryCompletion(
    const CSScenarioInstance& candidate,
    std::size_t component,
    RecognisedEntry& entry,
    bool isFirst)
{
    const CSScenarioInstance& recognised = *entry.instance;
    const auto& components = candidate.m_scenario->m_components;
    const auto reject = [&](CompletionRejection reason) {
        if (m_observer != nullptr) {
            m_observer->completionRejected(candidate, component, recognised, reason);
        }
        return nullptr;
    };
    const auto isFilled = [&](const auto& other) {
        return isFilledBy(candidate, *other, recognised);
    };
    const bool fillsAnother = isFirst ? isFilled(components[1 - component])
                                      : std::any_of(components.begin(), components.end(), isFilled);
    if (fillsAnother) {
        return reject(CompletionRejection::SameInstance);
    }
    auto joined = std::make_shared<CSScenarioInstance>(candidate);
    const bool startsEarlier = isFirst || *recognised.m_start < *joined->m_start;
    if (startsEarlier) {
        joined->m_start = recognised.m_start;
    }
    const auto rejection = joinParticipants(*joined, *components[component], recognised);
    if (rejection) {
        return reject(*rejection);
    }
    joined->m_bindings[components[component]->m_variable] =
        refreshComponent(entry, recognised.m_end);
    return joined;
}

std::optional<CompletionRejection> CSEngine::joinParticipants(
    CSScenarioInstance& candidate,
    const CComponent& component,
    const CSScenarioInstance& recognised) const
{
    for (const auto& [position, variable] : recognised.m_scenario->m_physicalObjects) {
        const std::string* argument = argumentAt(component, position);
        if (argument == nullptr) {
            continue;
        }
        const auto found = recognised.m_bindings.find(variable);
        const auto agent = found == recognised.m_bindings.end() ? nullptr : found->second;
        const auto [bound, isNew] = candidate.m_bindings.try_emplace(*argument, agent);
        if (!isNew && agentIdentifier(bound->second) != agentIdentifier(agent)) {
            return CompletionRejection::DifferentParticipant;
        }
    }
    if (bindsObjectTwice(candidate.m_bindings)) {
        return CompletionRejection::ObjectTwice;
    }
    return std::nullopt;
}

void CSEngine::recogniseComplexEvent(
    const InstancesByModel& candidates, InstancesByModel& newInstances)
{
    if (!m_currentTime) {
        return;
    }
    Candidates all = candidatesOf(candidates);
    Candidates seeded;
    Seeds seeds{seeded};
    recogniseComposites(all, seeds);
    seeded.moveTo(newInstances, m_currentTime);
}

void CSEngine::recogniseComposites(Candidates& candidates, Seeds& seeds)
{
    for (auto& [name, ofModel] : candidates.byModel) {
        for (Candidate& candidate : ofModel) {
            if (candidate.model().m_kind != "PrimitiveState") {
                recogniseComposite(candidate, seeds);
            }
        }
    }
}

// A model that the engine has not prepared is verified as it stands.
std::size_t CSEngine::verifyComposite(Candidate& candidate)
{
    auto& composites = m_recognition->composites;
    const auto plan = composites.find(&candidate.model());
    return plan == composites.end() ? candidate.made(m_currentTime)->verifyConstraints()
                                    : plan->second.verify(candidate);
}

void CSEngine::recogniseComposite(Candidate& candidate, Seeds& seeds)
{
    const CSScenario& model = candidate.model();
    const auto bindings = [&]() -> const CConstraint::Bindings& {
        return candidate.made(m_currentTime)->m_bindings;
    };
    ++m_statistics.tested;
    if (m_observer != nullptr) {
        m_observer->candidateTested(model, bindings());
    }
    const std::size_t held = verifyComposite(candidate);
    if (held < model.m_constraints.size()) {
        if (m_observer != nullptr) {
            m_observer->constraintFalse(model, bindings(), held);
        }
        return;
    }
    if (!isConfident(candidate)) {
        if (m_observer != nullptr) {
            m_observer->notConfident(model, bindings(), candidate.confidence());
        }
        return;
    }
    ++m_statistics.accepted;
    Outcome& outcome = m_recognition->outcomeOf(model, *m_allScenarios);
    seedParents(recordComposite(candidate, outcome), outcome, seeds);
}
