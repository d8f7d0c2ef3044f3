#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a pure operator means, where knowing it saves work: a promise about when its value is true,
// or about how great it is. The value itself always comes from the operator.
enum class CSOperatorMeaning : std::uint8_t {
    // Nothing is promised.
    Any,
    // Two arguments; true only where both are true.
    Conjunction,
    // Two arguments; where one of them is a number, true only where both are and the first is at
    // most, at least the second.
    AtMost,
    AtLeast,
    // Two arguments, exchanged at will. Of two points with finite coordinates no value, or a number
    // not less than their distance on the ground plane; no value where an argument is missing or a
    // point with other coordinates. That distance as computed: rounding may have taken one part in
    // 2^50 off the exact one, and 2^-500 more where coordinates lie that close.
    Distance,
    // Two arguments, exchanged at will, and a number. Of two points true only where their
    // coordinates are finite and that distance is at most the number; false where an argument is
    // missing or a point with other coordinates.
    Nearness,
};

// What an operator promises about itself.
struct CSOperatorDescription
{
    // One sentence for people.
    std::string m_summary;
    // Accepted type tags, per argument position. Positions from m_requiredArguments on may be left
    // out.
    std::vector<std::vector<std::string>> m_arguments;
    std::size_t m_requiredArguments = 0;
    // Type tag of the result; empty when the arguments decide it.
    std::string m_result;
    // Within a frame the result depends on the arguments' values and their histories alone, and
    // there is no effect.
    bool m_pure = false;
    // For a temporal operator: the position (0 or 1) of the argument that ends first, if it says
    // so.
    std::optional<std::size_t> m_endsFirst;
    // Pure, and evaluatePlain gives the value that evaluate gives, from what the views show. The
    // interval of a sub-event may come without its object, and so without its history.
    bool m_plain = false;
    CSOperatorMeaning m_meaning = CSOperatorMeaning::Any;
};
