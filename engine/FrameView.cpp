#include "engine/FrameView.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

constexpr std::size_t kMostKinds = 1000;

template <class Named>
std::size_t numberOf(std::vector<Named>& all, const std::string& name)
{
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Named& one) { return one.name == name; });
    if (found != all.end()) {
        return static_cast<std::size_t>(found - all.begin());
    }
    all.emplace_back().name = name;
    return all.size() - 1;
}

} // namespace

std::size_t FrameView::typeNumber(const std::string& type)
{
    return numberOf(m_types, type);
}

std::size_t FrameView::attributeNumber(const std::string& name)
{
    return numberOf(m_attributes, name);
}

void FrameView::begin(const AgentTable& agents, const CSTimeStamp& now, const TypeTable& types)
{
    ++m_frame;
    m_derived = &types;
    m_agents.clear();
    m_constantNumbers.clear();
    m_constants = 0;
    // Types that are made up as the tracks go on must not pile up.
    if (m_kinds.size() > kMostKinds) {
        m_kinds.clear();
    }
    for (auto& [name, kind] : m_kinds) {
        kind.agents.clear();
    }
    Kind* kind = nullptr;
    for (const auto& [id, agent] : agents) {
        if (!agent->m_constant && agent->m_frameID != now.m_frameID) {
            continue;
        }
        kind = &kindOf(agent->m_type, kind);
        kind->agents.push_back(static_cast<AgentIndex>(m_agents.size()));
        m_agents.push_back(&agent);
        m_constantNumbers.push_back(
            agent->m_constant ? static_cast<std::int32_t>(m_constants++) : -1);
    }
}

// Neighbours in the agent table are mostly of one type.
FrameView::Kind& FrameView::kindOf(const std::string& type, Kind* likely)
{
    if (likely != nullptr && likely->name == type) {
        return *likely;
    }
    Kind& kind = m_kinds[type];
    kind.name = type;
    return kind;
}

std::span<const FrameView::AgentIndex> FrameView::ofType(std::size_t typeNumber)
{
    Type& type = m_types[typeNumber];
    if (type.frame != m_frame) {
        type.frame = m_frame;
        gather(type);
    }
    return type.agents;
}

void FrameView::gather(Type& type) const
{
    type.agents = {};
    type.joined.clear();
    const auto derived = m_derived->find(type.name);
    if (derived == m_derived->end()) {
        return;
    }
    for (const std::string& name : derived->second) {
        const auto kind = m_kinds.find(name);
        if (kind == m_kinds.end() || kind->second.agents.empty()) {
            continue;
        }
        const std::vector<AgentIndex>& agents = kind->second.agents;
        if (type.agents.empty()) {
            type.agents = agents;
            continue;
        }
        if (type.joined.empty()) {
            type.joined.assign(type.agents.begin(), type.agents.end());
        }
        type.joined.insert(type.joined.end(), agents.begin(), agents.end());
        type.agents = type.joined;
    }
}

std::span<const CSPlainValue> FrameView::values(std::size_t attributeNumber, std::size_t typeNumber)
{
    Attribute& attribute = m_attributes[attributeNumber];
    attribute.frames.resize(m_types.size(), 0);
    if (attribute.frames[typeNumber] != m_frame) {
        attribute.frames[typeNumber] = m_frame;
        read(attribute, typeNumber);
    }
    return attribute.values;
}

void FrameView::read(Attribute& attribute, std::size_t typeNumber)
{
    if (attribute.values.size() < m_agents.size()) {
        attribute.values.resize(m_agents.size());
    }
    for (const AgentIndex index : ofType(typeNumber)) {
        const auto& attributes = agent(index)->m_attributes;
        const auto found = attributes.find(attribute.name);
        attribute.values[index] =
            CSPlainValue(found == attributes.end() ? nullptr : found->second.get());
    }
}

} // namespace scenariomatch
