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
    // Two truth values; true only where both are.
    Conjunction,
    // Two arguments; true only where they are numbers and the first is at most, at least the
    // second.
    AtMost,
    AtLeast,
    // Two positions; a number, for two points with finite coordinates never less than their
    // distance on the ground plane, and no value for a point with others.
    Distance,
    // Two positions and a number; true only where, of two points, the distance on the ground plane
    // is at most the number, and the coordinates are finite.
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
    // Pure, and evaluatePlain gives the value that evaluate gives.
    bool m_plain = false;
    CSOperatorMeaning m_meaning = CSOperatorMeaning::Any;
};
