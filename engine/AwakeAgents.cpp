#include "engine/AwakeAgents.h"

#include <algorithm>

namespace scenariomatch
{

void AwakeAgents::add(const std::shared_ptr<CSAgent>& agent)
{
    m_awake.insert_or_assign(agent->m_engineID, agent);
}

void AwakeAgents::replace(const Table& all)
{
    m_awake = all;
    m_woken.clear();
    for (const auto& [id, agent] : all) {
        agent->m_sleepers = nullptr;
    }
}

void AwakeAgents::startFrame(std::int32_t frame, const Table& all)
{
    if (frame <= m_latestFrame) {
        replace(all);
    } else {
        wakeSeen(all);
    }
    m_latestFrame = std::max(m_latestFrame, frame);
}

void AwakeAgents::wakeSeen(const Table& all)
{
    for (const std::int32_t id : m_woken) {
        const auto found = all.find(id);
        if (found != all.end()) {
            add(found->second);
        }
    }
    m_woken.clear();
}

// A constant object is in every frame.
bool AwakeAgents::isOver(const CSAgent& agent, std::int32_t frame)
{
    return !agent.m_constant && agent.m_frameID < frame &&
           (agent.m_frames.empty() || agent.m_frames.rbegin()->first < frame);
}

} // namespace scenariomatch
