#pragma once

#include "app/RunOptions.h"

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>

namespace scenariomatch
{

// What the command "report" is told.
struct ReportCommandOptions
{
    // Parameters, tracks and how the scene is shown.
    RunOptions input;
    // Events to show instead of those that are recognised; empty for none.
    std::string events;
    std::string output;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addReportCommand(CLI::App& program, ReportCommandOptions& options);

// Recognises events in tracks and writes a page that shows them. Returns the exit status.
int runReport(const ReportCommandOptions& options, std::ostream& talk);

} // namespace scenariomatch
