#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace scenariomatch
{

// What one constraint of a model said about one candidate.
struct Finding
{
    // Its position in the model, and the constraint as a person would write it.
    std::size_t constraint = 0;
    std::string text;
    bool holds = false;
    // The value that it saw, and what it asks of it: "2.31" and "< 2". Empty where there is no such
    // pair.
    std::string seen;
    std::string required;
    // How far the value is from where the answer changes; a hair more changes it. Nothing where
    // that cannot be told.
    std::optional<double> margin;
    // Whether candidates can be told from each other by how near they come.
    bool isMeasured = false;
    // Of the margin: "s", "degree", or empty for lengths and numbers, which have the model's own.
    std::string unit;
    // A sentence about it, without full stop: "c1 ended 0.4 s after c2 began".
    std::string note;
};

} // namespace scenariomatch
