#include "app/explain/ModelSet.h"

#include <algorithm>
#include <set>

namespace scenariomatch
{

namespace
{

// The objects of the whole model that a sub-model's variables stand for; empty for those that stand
// for none.
using Stand = std::map<std::string, std::string>;

Stand standOf(const CComponent& component, const CSScenario& part, const Stand& parent)
{
    Stand stand;
    for (const auto& [position, variable] : part.m_physicalObjects) {
        const auto index = static_cast<std::size_t>(position);
        const auto found = index < component.m_arguments.size()
                               ? parent.find(component.m_arguments[index])
                               : parent.end();
        if (found != parent.end()) {
            stand[variable] = found->second;
        }
    }
    return stand;
}

std::size_t countDistinct(const Stand& stand)
{
    std::set<std::string> objects;
    for (const auto& [variable, object] : stand) {
        objects.insert(object);
    }
    return objects.size();
}

} // namespace

ModelSet::ModelSet(const RecognitionView& view)
{
    view.visitModels(
        [this](const CSScenario& model) { m_models.try_emplace(model.m_name, &model); });
}

const CSScenario* ModelSet::find(const std::string& name) const
{
    const auto found = m_models.find(name);
    return found == m_models.end() ? nullptr : found->second;
}

std::vector<std::string> ModelSet::names() const
{
    std::vector<std::string> names;
    for (const auto& [name, model] : m_models) {
        names.push_back(name);
    }
    return names;
}

// Models that contain themselves take no part in recognition.
std::vector<ModelSet::Part> ModelSet::partsOf(const CSScenario& model) const
{
    Stand own;
    for (const auto& [position, variable] : model.m_physicalObjects) {
        own[variable] = variable;
    }
    const std::size_t objects = countDistinct(own);
    std::vector<Part> parts{{&model, 0}};
    std::vector<std::pair<const CSScenario*, Stand>> open{{&model, own}};
    while (!open.empty()) {
        const auto [whole, stand] = open.back();
        open.pop_back();
        for (const auto& component : whole->m_components) {
            const CSScenario* const part = find(component->m_modelName);
            if (part == nullptr) {
                continue;
            }
            Stand partStand = standOf(*component, *part, stand);
            const std::size_t hidden = objects - countDistinct(partStand);
            const auto known = std::find_if(
                parts.begin(), parts.end(), [part](const Part& one) { return one.model == part; });
            if (known == parts.end()) {
                parts.push_back({part, hidden});
            } else {
                known->hidden = std::max(known->hidden, hidden);
            }
            open.emplace_back(part, std::move(partStand));
        }
    }
    return parts;
}

} // namespace scenariomatch
