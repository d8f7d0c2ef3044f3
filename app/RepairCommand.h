#pragma once

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>

namespace scenariomatch
{

// What the command "repair" is told.
struct RepairOptions
{
    std::string file;
    // Empty for the file itself.
    std::string output;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addRepairCommand(CLI::App& program, RepairOptions& options);

// Closes an XML event file that breaks off. It is written beside first, so that the file is always
// there as a whole, before or after. Returns the exit status.
int runRepair(const RepairOptions& options, std::ostream& talk);

} // namespace scenariomatch
