#include "tests/reference/ReferenceMatcher.h"

#include <algorithm>
#include <stdexcept>

namespace scenariomatch
{

namespace
{

// The identifier under which an agent is compared; an empty one counts as -1.
int identifierOf(const std::shared_ptr<CSAgent>& agent)
{
    return agent ? agent->m_ID : -1;
}

bool isComponent(const std::shared_ptr<CSAgent>& agent)
{
    return agent && agent->m_type == "Component";
}

std::shared_ptr<CSAgent> boundTo(const CConstraint::Bindings& bindings, const std::string& variable)
{
    const auto found = bindings.find(variable);
    return found == bindings.end() ? nullptr : found->second;
}

// The component that a two-component model has beside this one.
const CComponent* otherComponent(const CSScenario& model, std::size_t position)
{
    const std::size_t other = 1 - position;
    return position < 2 && other < model.m_components.size() ? model.m_components.at(other).get()
                                                             : nullptr;
}

// The first component without an agent, in component order.
std::size_t firstUnbound(const ReferenceInstance& instance)
{
    const auto& components = instance.m_scenario->m_components;
    std::size_t position = 0;
    while (position < components.size() &&
           instance.m_bindings.contains(components.at(position)->m_variable)) {
        ++position;
    }
    return position;
}

bool fillsComponent(const ReferenceInstance& instance, int id)
{
    const auto& components = instance.m_scenario->m_components;
    return std::any_of(components.begin(), components.end(), [&](const auto& component) {
        const auto bound = boundTo(instance.m_bindings, component->m_variable);
        return bound && bound->m_ID == id;
    });
}

bool isSeeded(const ReferenceInstance& instance)
{
    const CSScenario& model = *instance.m_scenario;
    const auto trigger = static_cast<std::size_t>(model.m_triggerIndex);
    return instance.m_bindings.contains(model.m_components.at(trigger)->m_variable);
}

// The variable that a component passes at a position; empty where it passes none.
std::string argumentAt(const CComponent& component, int position)
{
    const auto index = static_cast<std::size_t>(position);
    return index < component.m_arguments.size() ? component.m_arguments[index] : std::string();
}

} // namespace

unsigned referencePermutations(int n, int k)
{
    if (k < 0 || n < k) {
        return 0;
    }
    unsigned product = 1;
    for (int factor = n - k + 1; factor <= n; ++factor) {
        product *= static_cast<unsigned>(factor);
    }
    return product;
}

std::vector<std::vector<int>> referenceSelections(const std::vector<int>& values, int k)
{
    std::vector<std::vector<int>> result;
    if (k < 1) {
        return result;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (k == 1) {
            result.push_back({values[i]});
            continue;
        }
        std::vector<int> others = values;
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
        for (const std::vector<int>& rest : referenceSelections(others, k - 1)) {
            result.push_back({values[i]});
            result.back().insert(result.back().end(), rest.begin(), rest.end());
        }
    }
    return result;
}

std::vector<std::vector<int>> referenceTuples(const std::vector<int>& sizes)
{
    std::vector<std::vector<int>> result{{}};
    for (const int size : sizes) {
        std::vector<std::vector<int>> longer;
        for (const std::vector<int>& tuple : result) {
            for (int index = 0; index < size; ++index) {
                longer.push_back(tuple);
                longer.back().push_back(index);
            }
        }
        result = longer;
    }
    return sizes.empty() ? std::vector<std::vector<int>>() : result;
}

ReferenceMatcher::ReferenceMatcher(const CSAllScenarios& models)
    : m_models(models)
{
}

int ReferenceMatcher::agent(int hostId, bool constant)
{
    std::map<int, int>& ids = constant ? m_constantIds : m_mobileIds;
    if (!ids.contains(hostId)) {
        auto made = std::make_shared<CSAgent>(hostId, constant);
        made->m_engineID = m_nextAgentId;
        m_agents[m_nextAgentId] = made;
        ids[hostId] = m_nextAgentId;
        ++m_nextAgentId;
    }
    return ids.at(hostId);
}

void ReferenceMatcher::setCurrentTime(const std::shared_ptr<CSTimeStamp>& time, int frame)
{
    m_currentTime = time;
    m_timeHistory[frame] = time;
}

std::vector<int> ReferenceMatcher::agentsOfType(const std::string& type) const
{
    std::vector<int> ids;
    for (const auto& [id, agent] : m_agents) {
        if (agent->m_type == type &&
            (agent->m_constant || agent->m_frameID == m_currentTime->m_frameID)) {
            ids.push_back(id);
        }
    }
    return ids;
}

std::shared_ptr<CSAgent> ReferenceMatcher::component(int id)
{
    if (!m_components.contains(id)) {
        auto made = std::make_shared<CSAgent>(id, false);
        made->m_type = "Component";
        m_components[id] = made;
    }
    return m_components.at(id);
}

void ReferenceMatcher::cleanHistory()
{
    if (m_timeHistory.size() > static_cast<std::size_t>(m_historySize)) {
        m_timeHistory.erase(m_timeHistory.begin());
    }
}

void ReferenceMatcher::removeAgents()
{
    const std::map<int, std::shared_ptr<CSAgent>> agents = m_agents;
    for (const auto& [id, agent] : agents) {
        const bool seen = agent->m_frames.contains(m_currentTime->m_frameID);
        if (!agent->m_constant && !seen && agent->m_instances.empty()) {
            m_mobileIds.erase(agent->m_ID);
            m_agents.erase(id);
        }
    }
}

void ReferenceMatcher::removeConstAgents()
{
    const std::map<int, std::shared_ptr<CSAgent>> agents = m_agents;
    for (const auto& [id, agent] : agents) {
        if (agent->m_constant) {
            m_agents.erase(id);
        }
    }
}

void ReferenceMatcher::countWork(int& counter) const
{
    ++counter;
    if (m_tested + m_completions > m_mostWork) {
        throw std::length_error("too many candidates");
    }
}

std::shared_ptr<CSBasicType>
ReferenceMatcher::evaluate(const CConstraint& node, CConstraint::Bindings& bindings)
{
    if (node.m_operatorName == "NULL") {
        if (node.m_isNumeric) {
            return std::make_shared<CSDouble>(node.m_numericValue);
        }
        return std::make_shared<CSString>(node.m_value);
    }
    if (node.m_operatorName == "->") {
        const std::shared_ptr<CSAgent> agent = bindings[node.m_value];
        return agent ? agent->get(node.m_attribute) : nullptr;
    }
    std::vector<std::shared_ptr<CSBasicType>> arguments;
    for (const auto& child : node.m_children) {
        CConstraint::Bindings copy = bindings;
        arguments.push_back(evaluate(*child, copy));
    }
    if (node.m_operator == nullptr) {
        return std::make_shared<CSBool>(false);
    }
    try {
        return node.m_operator->evaluate(arguments);
    } catch (...) {
        return std::make_shared<CSBool>(false);
    }
}

bool ReferenceMatcher::verifyConstraints(ReferenceInstance& instance) const
{
    instance.m_confidence = 1.0;
    const auto& constraints = instance.m_scenario->m_constraints;
    for (std::size_t i = 0; i < constraints.size(); ++i) {
        CConstraint::Bindings copy = instance.m_bindings;
        const auto truth = std::dynamic_pointer_cast<CSBool>(evaluate(*constraints.at(i), copy));
        if (!truth || !truth->m_value) {
            instance.m_confidence = 1.0;
            if (m_log != nullptr) {
                m_log->constraintFalse(*instance.m_scenario, instance.m_bindings, i);
            }
            return false;
        }
        instance.m_confidence *= truth->m_confidence;
    }
    return true;
}

void ReferenceMatcher::makeCandidate(
    const std::shared_ptr<CSScenario>& model,
    const std::vector<std::vector<std::vector<int>>>& assignments,
    const std::vector<int>& tuple,
    InstancesByModel& candidates)
{
    auto instance = std::make_shared<ReferenceInstance>();
    instance->m_scenario = model;
    instance->m_start = m_currentTime;
    instance->m_end = m_currentTime;
    std::size_t group = 0;
    for (const auto& [type, variables] : model->m_variablesByType) {
        const auto selected = static_cast<std::size_t>(tuple.at(group));
        const std::vector<int>& agents = assignments.at(group).at(selected);
        for (std::size_t i = 0; i < variables.size(); ++i) {
            instance->m_bindings[variables.at(i)] = m_agents.at(agents.at(i));
        }
        ++group;
    }
    candidates[model->m_name].push_back(instance);
}

void ReferenceMatcher::makeCandidates(
    const std::shared_ptr<CSScenario>& model, InstancesByModel& candidates)
{
    unsigned combinations = 1;
    std::vector<std::vector<std::vector<int>>> assignments;
    std::vector<int> sizes;
    for (const auto& [type, variables] : model->m_variablesByType) {
        std::vector<int> agents;
        for (const std::string& subtype : m_objectTypes[type]) {
            const std::vector<int> more = agentsOfType(subtype);
            agents.insert(agents.end(), more.begin(), more.end());
        }
        if (agents.empty()) {
            return;
        }
        const int count = static_cast<int>(variables.size());
        combinations *= referencePermutations(static_cast<int>(agents.size()), count);
        assignments.push_back(referenceSelections(agents, count));
        sizes.push_back(static_cast<int>(assignments.back().size()));
    }
    if (combinations < 1) {
        return;
    }
    for (const std::vector<int>& tuple : referenceTuples(sizes)) {
        makeCandidate(model, assignments, tuple, candidates);
    }
}

void ReferenceMatcher::recognisePrimitiveStates(InstancesByModel& newInstances)
{
    m_tested = 0;
    m_accepted = 0;
    m_completions = 0;
    InstancesByModel candidates;
    const auto models = m_models.m_scenariosByKind.find("PrimitiveState");
    if (models != m_models.m_scenariosByKind.end()) {
        for (const auto& model : models->second) {
            makeCandidates(model, candidates);
        }
    }
    for (const auto& [name, instances] : candidates) {
        for (const InstancePointer& instance : instances) {
            verifyAndSeed(instance, newInstances);
        }
    }
}

void ReferenceMatcher::verifyAndSeed(
    const InstancePointer& instance, InstancesByModel& newInstances)
{
    countWork(m_tested);
    if (m_log != nullptr) {
        m_log->candidateTested(*instance->m_scenario, instance->m_bindings);
    }
    if (!verifyConstraints(*instance)) {
        return;
    }
    if (!isConfident(*instance)) {
        if (m_log != nullptr) {
            m_log->notConfident(
                *instance->m_scenario, instance->m_bindings, instance->m_confidence);
        }
        return;
    }
    ++m_accepted;
    const InstancePointer recognised = addRecognised(instance);
    const auto parents = m_models.m_parents.find(instance->m_scenario->m_name);
    if (parents == m_models.m_parents.end()) {
        return;
    }
    for (const auto& parent : parents->second) {
        seed(parent, *recognised, newInstances);
    }
}

void ReferenceMatcher::seed(
    const std::shared_ptr<CSScenario>& parent,
    const ReferenceInstance& recognised,
    InstancesByModel& newInstances)
{
    const std::string& name = recognised.m_scenario->m_name;
    const int frame = m_currentTime->m_frameID;
    auto made = std::make_shared<ReferenceInstance>();
    made->m_scenario = parent;
    made->m_start = m_currentTime;
    made->m_end = m_currentTime;
    for (std::size_t k = 0; k < parent->m_components.size(); ++k) {
        const CComponent& as = *parent->m_components.at(k);
        if (static_cast<int>(k) == parent->m_skipIndex || as.m_modelName != name) {
            continue;
        }
        const std::shared_ptr<CSAgent> pseudo = component(recognised.m_id);
        pseudo->m_confidence = recognised.m_confidence;
        pseudo->set(
            "Interval", std::make_shared<CSInterval>(recognised.m_start, m_currentTime), frame);
        pseudo->setFrameID(frame);
        pseudo->set("Name", std::make_shared<CSString>(name), frame);
        made->m_bindings[as.m_variable] = pseudo;
        for (const auto& [position, variable] : recognised.m_scenario->m_physicalObjects) {
            if (const std::string argument = argumentAt(as, position); !argument.empty()) {
                made->m_bindings[argument] = boundTo(recognised.m_bindings, variable);
            }
        }
    }
    newInstances[parent->m_name].push_back(made);
}

void ReferenceMatcher::createComplexEvents(
    InstancesByModel& candidates, const InstancesByModel& seeded)
{
    std::vector<InstancePointer> pending;
    for (const auto& [name, instances] : seeded) {
        for (const InstancePointer& instance : instances) {
            if (instance->m_scenario->m_skipIndex == -1) {
                candidates[name].push_back(instance);
            } else if (isSeeded(*instance)) {
                pending.push_back(instance);
            }
        }
    }
    for (const InstancePointer& recognised : m_recognised) {
        if (recognised->m_end->duration(m_currentTime) > m_constTimeSearch) {
            break;
        }
        for (const InstancePointer& instance : pending) {
            const auto k = static_cast<std::size_t>(instance->m_scenario->m_skipIndex);
            if (instance->m_scenario->m_components.at(k)->m_modelName !=
                recognised->m_scenario->m_name) {
                continue;
            }
            countWork(m_completions);
            const CComponent* other = otherComponent(*instance->m_scenario, k);
            const auto filled =
                other != nullptr ? boundTo(instance->m_bindings, other->m_variable) : nullptr;
            if (filled && filled->m_ID == recognised->m_id) {
                reject(*instance, k, recognised->m_id, CompletionRejection::SameInstance);
                continue;
            }
            const InstancePointer made = complete(*instance, *recognised, k);
            if (made) {
                made->m_start = recognised->m_start;
                lookUpOthers(made, candidates);
            }
        }
    }
}

// What becomes of the pending instance when the recognised one is put in at the position; nothing
// when the two do not fit. The start is left to the caller.
ReferenceMatcher::InstancePointer ReferenceMatcher::complete(
    const ReferenceInstance& pending, const ReferenceInstance& recognised, std::size_t position)
{
    auto made = std::make_shared<ReferenceInstance>(pending);
    const CComponent& as = *pending.m_scenario->m_components.at(position);
    if (!passUp(*made, recognised, as)) {
        reject(pending, position, recognised.m_id, CompletionRejection::DifferentParticipant);
        return nullptr;
    }
    if (hasObjectTwice(*made)) {
        reject(pending, position, recognised.m_id, CompletionRejection::ObjectTwice);
        return nullptr;
    }
    const int frame = m_currentTime->m_frameID;
    const std::shared_ptr<CSAgent> pseudo = component(recognised.m_id);
    pseudo->m_confidence = recognised.m_confidence;
    pseudo->set(
        "Interval", std::make_shared<CSInterval>(recognised.m_start, recognised.m_end), frame);
    pseudo->setFrameID(frame);
    pseudo->set("Name", std::make_shared<CSString>(recognised.m_scenario->m_name), frame);
    made->m_bindings[as.m_variable] = pseudo;
    return made;
}

void ReferenceMatcher::reject(
    const ReferenceInstance& pending,
    std::size_t position,
    int id,
    CompletionRejection reason) const
{
    if (m_log != nullptr) {
        m_log->completionRejected(*pending.m_scenario, position, id, reason);
    }
}

// Components beyond the second: one after the other, each against the whole list.
void ReferenceMatcher::lookUpOthers(const InstancePointer& candidate, InstancesByModel& candidates)
{
    const auto& components = candidate->m_scenario->m_components;
    const std::size_t position = firstUnbound(*candidate);
    if (position == components.size()) {
        candidates[candidate->m_scenario->m_name].push_back(candidate);
        return;
    }
    for (const InstancePointer& recognised : m_recognised) {
        if (recognised->m_end->duration(m_currentTime) > m_constTimeSearch) {
            break;
        }
        if (components.at(position)->m_modelName != recognised->m_scenario->m_name) {
            continue;
        }
        countWork(m_completions);
        if (fillsComponent(*candidate, recognised->m_id)) {
            reject(*candidate, position, recognised->m_id, CompletionRejection::SameInstance);
            continue;
        }
        const InstancePointer made = complete(*candidate, *recognised, position);
        if (!made) {
            continue;
        }
        if (*recognised->m_start < *made->m_start) {
            made->m_start = recognised->m_start;
        }
        lookUpOthers(made, candidates);
    }
}

bool ReferenceMatcher::passUp(
    ReferenceInstance& to, const ReferenceInstance& from, const CComponent& as)
{
    for (const auto& [position, variable] : from.m_scenario->m_physicalObjects) {
        const std::string argument = argumentAt(as, position);
        if (argument.empty()) {
            continue;
        }
        const std::shared_ptr<CSAgent> agent = boundTo(from.m_bindings, variable);
        if (!to.m_bindings.contains(argument)) {
            to.m_bindings[argument] = agent;
        } else if (identifierOf(to.m_bindings[argument]) != identifierOf(agent)) {
            return false;
        }
    }
    return true;
}

bool ReferenceMatcher::hasObjectTwice(const ReferenceInstance& instance)
{
    for (const auto& [variable, agent] : instance.m_bindings) {
        for (const auto& [otherVariable, other] : instance.m_bindings) {
            if (variable == otherVariable || !agent || !other || isComponent(agent) ||
                isComponent(other)) {
                continue;
            }
            if (agent->m_ID == other->m_ID && agent->m_constant == other->m_constant) {
                return true;
            }
        }
    }
    return false;
}

void ReferenceMatcher::recogniseComplexEvents(
    const InstancesByModel& candidates, InstancesByModel& newInstances)
{
    for (const auto& [name, instances] : candidates) {
        for (const InstancePointer& instance : instances) {
            if (instance->m_scenario->m_kind != "PrimitiveState") {
                verifyAndSeed(instance, newInstances);
            }
        }
    }
}

// The recognised instance that now stands for the one given: an earlier one, or the one itself.
ReferenceMatcher::InstancePointer ReferenceMatcher::addRecognised(const InstancePointer& instance)
{
    for (const InstancePointer& recognised : m_recognised) {
        if (recognised->m_scenario->m_name != instance->m_scenario->m_name) {
            continue;
        }
        const double age = recognised->m_end->duration(m_currentTime);
        if (age > m_constProlongation) {
            break;
        }
        if (age == 0.0) {
            continue;
        }
        const auto& bindings = recognised->m_bindings;
        const bool same = std::all_of(bindings.begin(), bindings.end(), [&](const auto& binding) {
            return identifierOf(binding.second) ==
                   identifierOf(boundTo(instance->m_bindings, binding.first));
        });
        if (same) {
            recognised->m_end = m_currentTime;
            recognised->m_confidence = instance->m_confidence;
            if (m_log != nullptr) {
                m_log->instanceExtended(*recognised);
            }
            return recognised;
        }
    }
    instance->m_id = m_nextInstanceId;
    ++m_nextInstanceId;
    if (!(*instance->m_start < *m_currentTime)) {
        instance->m_start = m_currentTime;
    }
    instance->m_end = m_currentTime;
    for (const auto& [variable, agent] : instance->m_bindings) {
        if (agent) {
            agent->m_instances[instance->m_id] = 1;
        }
    }
    m_recognised.push_back(instance);
    if (m_log != nullptr) {
        m_log->instanceNew(*instance);
    }
    return instance;
}

bool ReferenceMatcher::isConfident(ReferenceInstance& instance) const
{
    for (const auto& part : instance.m_scenario->m_components) {
        const std::shared_ptr<CSAgent> pseudo = boundTo(instance.m_bindings, part->m_variable);
        if (!pseudo) {
            return false;
        }
        instance.m_confidence *= pseudo->m_confidence;
    }
    instance.m_confidence /= m_bayesianRatio;
    return !(instance.m_scenario->m_confidenceThreshold > instance.m_confidence);
}

void ReferenceMatcher::sortRecognised()
{
    m_recognised.sort(
        [](const InstancePointer& a, const InstancePointer& b) { return *a->m_end > *b->m_end; });
}

void ReferenceMatcher::cleanRecognised()
{
    const auto isOld = [this](const InstancePointer& instance) {
        return instance->m_end->duration(m_currentTime) > m_constTimeSearch;
    };
    for (const InstancePointer& instance : m_recognised) {
        if (!isOld(instance)) {
            continue;
        }
        for (const auto& [variable, agent] : instance->m_bindings) {
            if (agent) {
                agent->m_instances.erase(instance->m_id);
            }
        }
        m_components.erase(instance->m_id);
    }
    const auto firstOld = std::find_if(m_recognised.begin(), m_recognised.end(), isOld);
    for (auto old = firstOld; m_log != nullptr && old != m_recognised.end(); ++old) {
        m_log->instanceExpired((*old)->m_id);
    }
    m_recognised.erase(firstOld, m_recognised.end());
}

void ReferenceMatcher::infer()
{
    InstancesByModel newInstances;
    InstancesByModel candidates;
    recognisePrimitiveStates(newInstances);
    sortRecognised();
    for (int level = 0; !newInstances.empty(); ++level) {
        createComplexEvents(candidates, newInstances);
        if (level == 0) {
            m_firstLevelCandidates = candidates;
        }
        newInstances.clear();
        const InstancesByModel copy = candidates;
        recogniseComplexEvents(copy, newInstances);
        candidates.clear();
        sortRecognised();
    }
    cleanRecognised();
    cleanHistory();
    removeAgents();
}

} // namespace scenariomatch
