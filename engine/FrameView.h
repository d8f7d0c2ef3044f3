#pragma once

#include "types/CSAgent.h"
#include "types/CSPlainValue.h"
#include "types/CSTimeStamp.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// What recognition sees of the agents in one frame: those that are present, numbered in the order
// of the engine's identifiers, by type, and their attributes as plain values in one array per
// attribute.
//
// Types and attributes get numbers while models are prepared. Lists and arrays are made when they
// are first asked for in a frame; they, and the views of values in them, are valid until the next
// frame begins. Refers to the agents, which must not change meanwhile.
//
// Example:
//     const auto position = view.attributeNumber("Position");
//     view.begin(agents, now, types);
//     for (const auto index : view.ofType(person)) { look(view.values(position)[index]); }
class CS_EXPORT FrameView
{
public:
    using AgentTable = std::map<int, std::shared_ptr<CSAgent>>;
    // A type, then every type that derives from it.
    using TypeTable = std::map<std::string, std::vector<std::string>>;
    using AgentIndex = std::uint32_t;

    // Entered when it is new.
    std::size_t typeNumber(const std::string& type);
    std::size_t attributeNumber(const std::string& name);

    // Starts a frame: present are the constant agents and those seen in it. The tables must outlive
    // the frame.
    void begin(const AgentTable& agents, const CSTimeStamp& now, const TypeTable& types);

    // Counts the frames: what was computed under another count is out of date.
    std::uint64_t frame() const { return m_frame; }

    std::size_t size() const { return m_agents.size(); }

    const std::shared_ptr<CSAgent>& agent(AgentIndex index) const { return *m_agents[index]; }

    // Constant agents are numbered apart, from 0; -1 for a mobile one.
    std::int32_t constantNumber(AgentIndex index) const { return m_constantNumbers[index]; }

    std::size_t constants() const { return m_constants; }

    // The present agents of the type and of those that derive from it, type by type.
    std::span<const AgentIndex> ofType(std::size_t typeNumber);

    // The attribute of the present agents of the type, by their index; no value where an agent
    // lacks it. What the array says of other agents means nothing.
    std::span<const CSPlainValue> values(std::size_t attributeNumber, std::size_t typeNumber);

private:
    struct Type
    {
        std::string name;
        std::uint64_t frame = 0;
        std::span<const AgentIndex> agents;
        // The list where it is made of several.
        std::vector<AgentIndex> joined;
    };

    struct Attribute
    {
        std::string name;
        std::vector<CSPlainValue> values;
        // By type number, the frame for which the type's agents were read.
        std::vector<std::uint64_t> frames;
    };

    // The agents of exactly one type.
    struct Kind
    {
        std::string name;
        std::vector<AgentIndex> agents;
    };

    Kind& kindOf(const std::string& type, Kind* likely);
    void gather(Type& type) const;
    void read(Attribute& attribute, std::size_t typeNumber);

    std::vector<Type> m_types;
    std::vector<Attribute> m_attributes;
    std::uint64_t m_frame = 0;
    std::vector<const std::shared_ptr<CSAgent>*> m_agents;
    std::vector<std::int32_t> m_constantNumbers;
    std::size_t m_constants = 0;
    std::unordered_map<std::string, Kind> m_kinds;
    const TypeTable* m_derived = nullptr;
};

} // namespace scenariomatch
