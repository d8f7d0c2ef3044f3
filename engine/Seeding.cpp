#include "engine/Seeding.h"

#include "engine/Arguments.h"

#include <algorithm>
#include <utility>

namespace scenariomatch
{

Seeding::Seeding(
    std::shared_ptr<CSScenario> parent,
    const CSScenario& model,
    std::span<const std::string> variables)
    : m_parent(std::move(parent))
{
    for (std::size_t k = 0; k < m_parent->m_components.size(); ++k) {
        const CComponent& component = *m_parent->m_components[k];
        const bool isSkipped = static_cast<int>(k) == m_parent->m_skipIndex;
        if (isSkipped || component.m_modelName != model.m_name) {
            continue;
        }
        ++m_filled;
        bind(component.m_variable, kComponent);
        for (const auto& [position, variable] : model.m_physicalObjects) {
            if (const std::string* argument = argumentAt(component, position)) {
                const auto place = std::find(variables.begin(), variables.end(), variable);
                const auto index = static_cast<std::size_t>(place - variables.begin());
                bind(*argument, place == variables.end() ? kNobody : index);
            }
        }
    }
}

// The last binding of a variable counts.
void Seeding::bind(const std::string& variable, std::size_t source)
{
    const auto place = std::lower_bound(
        m_bindings.begin(), m_bindings.end(), variable, [](const Binding& one, const auto& name) {
            return one.variable < name;
        });
    if (place != m_bindings.end() && place->variable == variable) {
        place->source = source;
    } else {
        m_bindings.insert(place, {variable, source});
    }
}

// What is seeded again binds mostly whom it did in the frame before.
std::shared_ptr<CSScenarioInstance> Seeding::seed(
    Agents agents,
    const std::shared_ptr<CSAgent>& component,
    const std::shared_ptr<CSTimeStamp>& now,
    std::uint64_t frame)
{
    std::shared_ptr<CSScenarioInstance> seed = fresh(frame);
    seed->m_start = now;
    seed->m_end = now;
    auto binding = m_bindings.begin();
    for (auto& [variable, agent] : seed->m_bindings) {
        const std::shared_ptr<CSAgent>& bound = sourceOf(*binding, agents, component);
        if (agent != bound) {
            agent = bound;
        }
        ++binding;
    }
    return seed;
}

const std::shared_ptr<CSAgent>&
Seeding::sourceOf(const Binding& binding, Agents agents, const std::shared_ptr<CSAgent>& component)
{
    static const std::shared_ptr<CSAgent> nobody;
    if (binding.source == kComponent) {
        return component;
    }
    const auto* const agent = binding.source == kNobody ? nullptr : agents[binding.source];
    return agent == nullptr ? nobody : *agent;
}

std::shared_ptr<CSScenarioInstance> Seeding::fresh(std::uint64_t frame)
{
    if (m_frame != frame) {
        m_frame = frame;
        m_used = 0;
    }
    if (m_used == m_instances.size()) {
        m_instances.push_back(unbound());
    }
    std::shared_ptr<CSScenarioInstance>& instance = m_instances[m_used++];
    if (instance.use_count() > 1) {
        instance = unbound();
    }
    instance->m_confidence = 1.0;
    instance->m_id = 0;
    instance->m_text.clear();
    return instance;
}

std::shared_ptr<CSScenarioInstance> Seeding::unbound() const
{
    auto instance = std::make_shared<CSScenarioInstance>(m_parent, nullptr, nullptr);
    for (const Binding& binding : m_bindings) {
        instance->m_bindings.emplace_hint(instance->m_bindings.end(), binding.variable, nullptr);
    }
    return instance;
}

} // namespace scenariomatch
