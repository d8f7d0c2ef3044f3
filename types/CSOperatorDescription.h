#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

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
};
