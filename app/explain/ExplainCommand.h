#pragma once

#include "app/RunOptions.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace scenariomatch
{

enum class ExplainFormat : std::uint8_t { Text, Json };

// What the command "explain" is told.
struct ExplainOptions
{
    // Parameters and tracks.
    RunOptions input;
    // Why it was recognised; else why the model was not.
    std::optional<int> event;
    std::string model;
    std::vector<std::string> objects;
    // Seconds from the first frame, or a clock; empty for the whole tracks.
    std::string from;
    std::string to;
    ExplainFormat format = ExplainFormat::Text;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addExplainCommand(CLI::App& program, ExplainOptions& options);

// Says why an event was recognised, or why a model did not match. The explanation goes to out, talk
// to talk. Returns the exit status.
int runExplain(const ExplainOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
