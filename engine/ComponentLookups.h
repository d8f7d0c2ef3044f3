#pragma once

#include "scenario/CSAllScenarios.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// How the recognised instances for a component are found: those of its sub-model that bind the
// agent of the parent's variable to the sub-model's own variable. Both names are empty where no
// variable is shared.
struct ComponentLookup
{
    std::string parentVariable;
    std::string subVariable;
};

// For each composite model that has components to look up, the look-up of each component.
class CS_EXPORT ComponentLookups
{
public:
    ComponentLookups() = default;
    explicit ComponentLookups(const CSAllScenarios& scenarios);

    // The model must have been among the scenarios' parents.
    const ComponentLookup& of(const CSScenario& model, std::size_t component) const;

    // Calls visit(sub-model name, variable of the sub-model) for each look-up by a variable.
    template <class Visit>
    void forEach(Visit&& visit) const
    {
        for (const auto& [model, lookups] : m_lookups) {
            for (std::size_t component = 0; component < lookups.size(); ++component) {
                if (!lookups[component].subVariable.empty()) {
                    visit(
                        model->m_components[component]->m_modelName,
                        lookups[component].subVariable);
                }
            }
        }
    }

private:
    std::unordered_map<const CSScenario*, std::vector<ComponentLookup>> m_lookups;
};

} // namespace scenariomatch
