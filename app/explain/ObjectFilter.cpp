#include "app/explain/ObjectFilter.h"

#include <algorithm>
#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

std::string nameOf(const CSAgent& agent)
{
    const auto found = agent.m_attributes.find("Name");
    const auto* const name = found == agent.m_attributes.end()
                                 ? nullptr
                                 : dynamic_cast<const CSString*>(found->second.get());
    return name == nullptr ? std::string() : name->m_value;
}

} // namespace

std::int32_t ObjectFilter::indexOf(const CSAgent& agent) const
{
    const std::string own = objectName(participantOf({}, &agent));
    const auto found = std::find(m_objects.begin(), m_objects.end(), own);
    return found == m_objects.end() ? -1 : static_cast<std::int32_t>(found - m_objects.begin());
}

std::size_t ObjectFilter::missing(const std::vector<EventObject>& participants) const
{
    const auto count = std::count_if(
        m_objects.begin(), m_objects.end(), [&participants](const std::string& object) {
            return std::none_of(
                participants.begin(), participants.end(), [&](const EventObject& participant) {
                    return objectName(participant) == object;
                });
        });
    return static_cast<std::size_t>(count);
}

EventObject participantOf(const std::string& variable, const CSAgent* agent)
{
    if (agent == nullptr) {
        return {variable, {}, -1, {}};
    }
    return {variable, agent->m_type, agent->m_ID, agent->m_constant ? nameOf(*agent) : ""};
}

std::string objectName(const EventObject& object)
{
    return object.name.empty() ? fmt::format("{}", object.id) : object.name;
}

} // namespace scenariomatch
