#pragma once

#include "types/CSAgent.h"

#include <cstddef>
#include <memory>
#include <string>

namespace scenariomatch
{

// What stands for the identifier of an agent that is not there.
inline constexpr int kNoAgent = -1;

// The host's identifier of an agent, as it is compared, printed and reported.
inline int agentIdentifier(const std::shared_ptr<CSAgent>& agent)
{
    return agent ? agent->m_ID : kNoAgent;
}

// Whether two names of variables are the same. They are short: no call is worth it.
inline bool isSameName(const std::string& a, const std::string& b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i]) {
            return false;
        }
    }
    return true;
}

// Whether the agent is a physical object and not a component pseudo-agent; an empty one is not.
inline bool isPhysicalObject(const std::shared_ptr<CSAgent>& agent)
{
    return agent && agent->m_type != "Component";
}

} // namespace scenariomatch
