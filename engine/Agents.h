#pragma once

#include "types/CSAgent.h"

#include <memory>

namespace scenariomatch
{

// What stands for the identifier of an agent that is not there.
inline constexpr int kNoAgent = -1;

// The host's identifier of an agent, as it is compared, printed and reported.
inline int agentIdentifier(const std::shared_ptr<CSAgent>& agent)
{
    return agent ? agent->m_ID : kNoAgent;
}

// Whether the agent is a physical object and not a component pseudo-agent; an empty one is not.
inline bool isPhysicalObject(const std::shared_ptr<CSAgent>& agent)
{
    return agent && agent->m_type != "Component";
}

} // namespace scenariomatch
