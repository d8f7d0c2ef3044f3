#pragma once

#include "types/CSAgent.h"

#include <memory>
#include <string_view>

// What is reported of an agent that an instance binds. Nothing is entered into the agent by asking.
namespace scenariomatch
{

using BoundAgent = std::shared_ptr<CSAgent>;

// The host's identifier, or the recognised instance's for a sub-event; -1 when nothing is bound.
inline int identifierOf(const BoundAgent& agent)
{
    return agent ? agent->m_ID : -1;
}

inline std::string_view typeOf(const BoundAgent& agent)
{
    return agent ? std::string_view(agent->m_type) : std::string_view();
}

inline bool isSubEvent(const BoundAgent& agent)
{
    return typeOf(agent) == "Component";
}

// Empty for an agent without a name.
inline std::string_view nameOf(const BoundAgent& agent)
{
    if (!agent) {
        return {};
    }
    if (const LateAttributes* late = agent->m_late.get()) {
        if (const CSString* name = late->name().text()) {
            return name->m_value;
        }
    }
    const auto attribute = agent->m_attributes.find("Name");
    if (attribute == agent->m_attributes.end()) {
        return {};
    }
    const auto* name = dynamic_cast<const CSString*>(attribute->second.get());
    return name != nullptr ? std::string_view(name->m_value) : std::string_view();
}

} // namespace scenariomatch
