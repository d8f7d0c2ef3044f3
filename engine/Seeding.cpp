#include "engine/Seeding.h"

#include "engine/Agents.h"
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
        bind(component.m_variable, {kComponent, ""});
        for (const auto& [position, variable] : model.m_physicalObjects) {
            if (const std::string* argument = argumentAt(component, position)) {
                const auto found = std::find(variables.begin(), variables.end(), variable);
                const auto place = static_cast<std::size_t>(found - variables.begin());
                bind(*argument, {place, variable});
            }
        }
    }
}

// The last binding of a variable counts.
void Seeding::bind(const std::string& variable, Source source)
{
    const auto found = std::lower_bound(m_variables.begin(), m_variables.end(), variable);
    const auto place = m_sources.begin() + (found - m_variables.begin());
    if (found != m_variables.end() && *found == variable) {
        *place = std::move(source);
    } else {
        m_sources.insert(place, std::move(source));
        m_variables.insert(found, variable);
    }
}

bool Seeding::isTriggered() const
{
    const auto trigger = static_cast<std::size_t>(m_parent->m_triggerIndex);
    const std::string& variable = m_parent->m_components[trigger]->m_variable;
    return std::binary_search(m_variables.begin(), m_variables.end(), variable);
}

const std::shared_ptr<CSAgent>&
Seeding::agent(std::size_t place, const RecognisedEntry& recognised) const
{
    static const std::shared_ptr<CSAgent> nobody;
    const Source& source = m_sources[place];
    if (source.place == kComponent) {
        return recognised.component;
    }
    const auto& bindings = recognised.instance->m_bindings;
    const auto bound = bindings.find(source.variable);
    return bound == bindings.end() ? nobody : bound->second;
}

int Seeding::identifier(std::size_t place, const RecognisedEntry& recognised) const
{
    const std::size_t source = m_sources[place].place;
    return source == kComponent ? agentIdentifier(recognised.component)
                                : recognised.identifiers.all()[source];
}

const std::shared_ptr<CSAgent>*
Seeding::agentOf(const std::string& variable, const RecognisedEntry& recognised) const
{
    for (std::size_t place = 0; place < m_variables.size(); ++place) {
        if (isSameName(m_variables[place], variable)) {
            return &agent(place, recognised);
        }
    }
    return nullptr;
}

std::shared_ptr<CSScenarioInstance>
Seeding::seed(const RecognisedEntry& recognised, const std::shared_ptr<CSTimeStamp>& now) const
{
    auto seed = std::make_shared<CSScenarioInstance>(m_parent, now, now);
    for (std::size_t place = 0; place < m_variables.size(); ++place) {
        seed->m_bindings.emplace_hint(
            seed->m_bindings.end(), m_variables[place], agent(place, recognised));
    }
    return seed;
}

} // namespace scenariomatch
