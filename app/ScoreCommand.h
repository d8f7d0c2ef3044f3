#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

enum class ScoreFormat : std::uint8_t { Text, Json };

// What the command "score" is told.
struct ScoreOptions
{
    std::string truth;
    // One file for each recording.
    std::vector<std::string> events;
    // Scored although no label names them.
    std::vector<std::string> models;
    double overlap = 0.3;
    double startWithin = 1.0;
    // Needed for labels in frames.
    std::optional<double> framesPerSecond;
    ScoreFormat format = ScoreFormat::Text;
    bool isList = false;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addScoreCommand(CLI::App& program, ScoreOptions& options);

// Holds recognised events against labels. The figures go to out, talk to talk. Returns the exit
// status.
int runScore(const ScoreOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
