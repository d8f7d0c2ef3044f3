#pragma once

#include "engine/Expression.h"
#include "engine/FrameView.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// The part written so that equal texts mean equal values on equal agents: variables as their places
// among the slots given, as their own slots where none are given; words and numbers apart.
CS_EXPORT std::string keyOf(const CConstraint& part, const std::vector<std::int32_t>& slots);

// Values that several models, or several candidates of one, ask for in the same frame: each is
// computed once.
//
// A value is that of a pure part of a constraint, told apart by its text with the variables
// numbered, on one agent, or on one mobile agent and one constant object. (Between two mobile
// agents there are too many to remember; most are never asked for.) Count all parts first, then ask
// for their numbers.
class CS_EXPORT SharedValues
{
public:
    // Counts the operator calls in a pure constraint. What stands inside a part that occurred
    // before is computed with it and not counted again.
    void count(const CConstraint& constraint);

    // Where the value of the part is remembered; -1 where that is not worth it.
    std::int32_t numberOf(const CConstraint& part);

    // Forgets the values that were kept for the frame before.
    void beginFrame() { m_kept.clear(); }

    // Keeps a value object for the frame.
    const CSBasicType* keep(std::shared_ptr<CSBasicType> value)
    {
        return m_kept.emplace_back(std::move(value)).get();
    }

    // The node's value on the agents in the slots.
    template <class Compute>
    CSPlainValue value(
        const Expression::Node& node,
        const FrameView& view,
        const FrameView::AgentIndex* agents,
        Compute&& compute);

private:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
    // Cells for one number: beyond them values are computed anew.
    static constexpr std::size_t kMostCells = 1U << 16U;

    struct Cell
    {
        std::uint64_t frame = 0;
        CSPlainValue value;
    };

    struct Part
    {
        std::int32_t number = -1;
        int occurrences = 0;
    };

    static std::size_t cellFor(
        const Expression::Node& node, const FrameView& view, const FrameView::AgentIndex* agents);

    std::unordered_map<std::string, Part> m_parts;
    std::vector<std::vector<Cell>> m_cells;
    std::vector<std::shared_ptr<CSBasicType>> m_kept;
};

template <class Compute>
CSPlainValue SharedValues::value(
    const Expression::Node& node,
    const FrameView& view,
    const FrameView::AgentIndex* agents,
    Compute&& compute)
{
    const std::size_t place = cellFor(node, view, agents);
    if (place >= kMostCells) {
        return compute();
    }
    std::vector<Cell>& cells = m_cells[static_cast<std::size_t>(node.shared)];
    if (place >= cells.size()) {
        cells.resize(place + 1);
    }
    if (cells[place].frame != view.frame()) {
        // Computing may enlarge no other number's cells but those of parts inside.
        const CSPlainValue value = compute();
        cells[place] = {view.frame(), value};
        return value;
    }
    return cells[place].value;
}

// One agent: its number. A mobile agent and a constant object: a row per object, once for either
// order.
inline std::size_t SharedValues::cellFor(
    const Expression::Node& node, const FrameView& view, const FrameView::AgentIndex* agents)
{
    const FrameView::AgentIndex first = agents[node.sharers[0]];
    if (node.sharers[1] < 0) {
        return first;
    }
    const FrameView::AgentIndex second = agents[node.sharers[1]];
    const std::int32_t firstConstant = view.constantNumber(first);
    const std::int32_t secondConstant = view.constantNumber(second);
    if ((firstConstant >= 0) == (secondConstant >= 0)) {
        return kNowhere;
    }
    const bool isFirst = firstConstant >= 0;
    const auto constant = static_cast<std::size_t>(isFirst ? firstConstant : secondConstant);
    const std::size_t row = isFirst ? view.constants() + constant : constant;
    return row * view.size() + (isFirst ? second : first);
}

} // namespace scenariomatch
