#include "engine/Recognition.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <utility>

namespace
{

// The text of an agent's "Name"; empty when it has none.
std::string nameOf(CSAgent& agent)
{
    const auto name = std::dynamic_pointer_cast<CSString>(agent.get("Name"));
    return name ? name->m_value : std::string();
}

} // namespace

int CSEngine::getAgent(int hostId, bool isConstant)
{
    auto& ids = isConstant ? m_constantIds : m_mobileIds;
    const auto known = ids.find(hostId);
    if (known != ids.end()) {
        return known->second;
    }
    const int agentId = m_nextAgentId++;
    auto agent = std::make_shared<CSAgent>(hostId, isConstant);
    agent->m_engineID = agentId;
    m_recognition->awake.add(agent);
    m_agents[agentId] = std::move(agent);
    ids[hostId] = agentId;
    return agentId;
}

void CSEngine::setAgentFrameID(int agentId, int frame)
{
    const auto found = m_agents.find(agentId);
    if (found != m_agents.end()) {
        found->second->setFrameID(frame);
    }
}

void CSEngine::setAgentType(
    int agentId,
    const std::string& /*attributeName*/,
    const std::shared_ptr<CSString>& type,
    int frame)
{
    const auto found = m_agents.find(agentId);
    if (found != m_agents.end()) {
        found->second->setType(type, frame);
    }
}

void CSEngine::setAgentAttribute(
    int agentId, const std::string& attributeName, std::shared_ptr<CSBasicType> value, int frame)
{
    const auto found = m_agents.find(agentId);
    if (found != m_agents.end()) {
        found->second->set(attributeName, std::move(value), frame);
    }
}

void CSEngine::getAllAgent(const std::string& type, std::vector<int>& ids) const
{
    for (const auto& [id, agent] : m_agents) {
        if (agent->m_type == type && isPresent(*agent)) {
            ids.push_back(id);
        }
    }
}

bool CSEngine::isPresent(const CSAgent& agent) const
{
    return agent.m_constant || (m_currentTime && agent.m_frameID == m_currentTime->m_frameID);
}

const std::map<int, std::shared_ptr<CSAgent>>& CSEngine::components() const
{
    for (const auto& [id, component] : m_components) {
        component->makeUp();
    }
    return m_components;
}

int CSEngine::getComponent(int id)
{
    auto& component = m_components[id];
    if (!component) {
        component = std::make_shared<CSAgent>(id, false);
        component->m_type = "Component";
    }
    return id;
}

void CSEngine::chooseConstantObjects()
{
    for (const std::string& name : m_interestedObjects) {
        bool found = false;
        for (const auto& [id, agent] : m_agents) {
            if (agent->m_constant && nameOf(*agent) == name) {
                agent->m_interested = true;
                found = true;
                break;
            }
        }
        if (!found) {
            std::cerr << "Warning: the constant object: " << name << " does not exist!\n";
        }
    }
    const auto all = std::exchange(m_agents, {});
    for (const auto& [id, agent] : all) {
        if (agent->m_interested) {
            m_agents[agent->m_engineID] = agent;
        } else {
            std::cerr << "Warning: the constant object: " << nameOf(*agent) << " does not used!\n";
        }
    }
    m_recognition->awake.replace(m_agents);
}

void CSEngine::setCurrentTime(std::shared_ptr<CSTimeStamp> time)
{
    m_currentTime = std::move(time);
}

void CSEngine::setCurrentTime(std::shared_ptr<CSTimeStamp> time, int frame)
{
    m_currentTime = std::move(time);
    h_currentTime[frame] = m_currentTime;
}

void CSEngine::cleanHistory()
{
    if (h_currentTime.size() > static_cast<std::size_t>(std::max(m_historySize, 0))) {
        h_currentTime.erase(h_currentTime.begin());
    }
}

void CSEngine::removeAgents()
{
    auto& awake = m_recognition->awake;
    awake.wakeSeen(m_agents);
    const int frame = m_currentTime ? m_currentTime->m_frameID : INT32_MIN;
    awake.review(frame, [&](const CSAgent& agent) {
        const bool isSeen = m_currentTime && agent.m_frames.find(frame) != agent.m_frames.end();
        if (agent.m_constant || isSeen || !agent.m_instances.empty()) {
            return true;
        }
        m_mobileIds.erase(agent.m_ID);
        m_agents.erase(agent.m_engineID);
        return false;
    });
}

void CSEngine::removeConstAgents()
{
    std::erase_if(m_agents, [](const auto& entry) { return entry.second->m_constant; });
    m_recognition->awake.replace(m_agents);
}

void CSEngine::printAgents() const
{
    for (const auto& [id, agent] : m_agents) {
        std::cout << id << ' ';
    }
}
