#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <iosfwd>
#include <string>

namespace scenariomatch
{

// Which of the accessor sources are written.
enum class GeneratedPart : std::uint8_t { All, Types, Accessor, Conversion };

// What the command "generate" is told.
struct GenerateOptions
{
    std::string objects;
    std::string output;
    GeneratedPart part = GeneratedPart::All;
    // Whether files that are there may be written over.
    bool isForced = false;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addGenerateCommand(CLI::App& program, GenerateOptions& options);

// Writes accessor sources for the object types of a file. The names of the files written go to out,
// talk to talk. Returns the exit status.
int runGenerate(const GenerateOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
