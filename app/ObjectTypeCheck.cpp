#include "app/ObjectTypeCheck.h"

#include <algorithm>
#include <cstdint>
#include <fmt/format.h>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace scenariomatch
{

namespace
{

// Walks from every type along its parents, every type once.
class ParentWalk
{
public:
    explicit ParentWalk(const std::vector<CClass>& types);

    std::vector<ObjectTypeFault> faults();

private:
    enum class State : std::uint8_t { New, OnThisWalk, Done };

    void walkFrom(std::size_t start);
    std::optional<std::size_t> parentOf(const CClass& type);
    void reportCircle(std::size_t start);
    void add(const CClass& type, const std::string& reason);

    const std::vector<CClass>& m_types;
    // The first type of each name is the one that counts as a parent.
    std::unordered_map<std::string_view, std::size_t> m_places;
    std::vector<State> m_states;
    std::vector<ObjectTypeFault> m_faults;
};

ParentWalk::ParentWalk(const std::vector<CClass>& types)
    : m_types(types)
    , m_states(types.size(), State::New)
{
    for (std::size_t i = 0; i < types.size(); ++i) {
        m_places.emplace(types[i].m_name, i);
    }
}

std::vector<ObjectTypeFault> ParentWalk::faults()
{
    for (std::size_t i = 0; i < m_types.size(); ++i) {
        walkFrom(i);
    }
    return m_faults;
}

void ParentWalk::walkFrom(std::size_t start)
{
    std::vector<std::size_t> walked;
    std::optional<std::size_t> place = start;
    while (place && m_states[*place] == State::New) {
        m_states[*place] = State::OnThisWalk;
        walked.push_back(*place);
        place = parentOf(m_types[*place]);
    }
    if (place && m_states[*place] == State::OnThisWalk) {
        reportCircle(*place);
    }
    for (const std::size_t i : walked) {
        m_states[i] = State::Done;
    }
}

// Nothing at the end of the line of parents, which is reported when the parent is not declared.
std::optional<std::size_t> ParentWalk::parentOf(const CClass& type)
{
    constexpr std::string_view kRoot = "Agent";
    if (type.m_name == kRoot && type.m_parent == kRoot) {
        return std::nullopt;
    }
    const auto found = m_places.find(type.m_parent);
    if (found != m_places.end()) {
        return found->second;
    }
    if (type.m_parent.empty()) {
        add(type, fmt::format("the parent of {} has no name", type.m_name));
    } else if (type.m_parent != kRoot) {
        add(type, fmt::format("the parent {} of {} is not declared", type.m_parent, type.m_name));
    }
    return std::nullopt;
}

void ParentWalk::reportCircle(std::size_t start)
{
    // The walk may have come in at a later type of the circle.
    std::size_t first = start;
    std::size_t place = m_places.at(m_types[start].m_parent);
    for (; place != start; place = m_places.at(m_types[place].m_parent)) {
        first = std::min(first, place);
    }
    std::string circle = m_types[first].m_name;
    for (place = m_places.at(m_types[first].m_parent); place != first;
         place = m_places.at(m_types[place].m_parent)) {
        circle += " -> " + m_types[place].m_name;
    }
    const std::string& name = m_types[first].m_name;
    add(m_types[first], fmt::format("{} derives from itself: {} -> {}", name, circle, name));
}

void ParentWalk::add(const CClass& type, const std::string& reason)
{
    m_faults.push_back({type.m_line, reason});
}

} // namespace

std::vector<ObjectTypeFault> objectTypeFaults(const std::vector<CClass>& types)
{
    return ParentWalk(types).faults();
}

} // namespace scenariomatch
