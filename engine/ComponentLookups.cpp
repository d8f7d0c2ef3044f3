#include "engine/ComponentLookups.h"

#include "engine/Arguments.h"

#include <algorithm>
#include <map>

namespace scenariomatch
{

namespace
{

using ModelsByName = std::map<std::string, std::vector<const CSScenario*>>;

ModelsByName modelsByName(const CSAllScenarios& scenarios)
{
    ModelsByName models;
    for (const auto& [kind, group] : scenarios.m_scenariosByKind) {
        for (const auto& model : group) {
            models[model->m_name].push_back(model.get());
        }
    }
    return models;
}

bool isArgumentOfAnother(
    const CSScenario& model, const CComponent& component, const std::string& variable)
{
    return std::any_of(
        model.m_components.begin(), model.m_components.end(), [&](const auto& other) {
            const auto& arguments = other->m_arguments;
            return other.get() != &component &&
                   std::find(arguments.begin(), arguments.end(), variable) != arguments.end();
        });
}

// The first argument that another component is passed too. Where several models have the
// sub-model's name, positions may mean different variables, and nothing is shared for certain.
ComponentLookup
lookupOf(const CSScenario& model, const CComponent& component, const ModelsByName& models)
{
    const auto named = models.find(component.m_modelName);
    if (named == models.end() || named->second.size() != 1) {
        return {};
    }
    for (const auto& [position, variable] : named->second.front()->m_physicalObjects) {
        const std::string* argument = argumentAt(component, position);
        if (argument != nullptr && isArgumentOfAnother(model, component, *argument)) {
            return {*argument, variable};
        }
    }
    return {};
}

} // namespace

ComponentLookups::ComponentLookups(const CSAllScenarios& scenarios)
{
    const ModelsByName models = modelsByName(scenarios);
    for (const auto& [name, parents] : scenarios.m_parents) {
        for (const auto& parent : parents) {
            auto& lookups = m_lookups[parent.get()];
            if (!lookups.empty()) {
                continue;
            }
            for (const auto& component : parent->m_components) {
                lookups.push_back(lookupOf(*parent, *component, models));
            }
        }
    }
}

const ComponentLookup& ComponentLookups::of(const CSScenario& model, std::size_t component) const
{
    static const ComponentLookup none;
    const auto found = m_lookups.find(&model);
    return found == m_lookups.end() ? none : found->second[component];
}

} // namespace scenariomatch
