#pragma once

#include "app/DiagnosticWriter.h"
#include "app/RunOptions.h"

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>
#include <vector>

namespace scenariomatch
{

// What the command "check" is told.
struct CheckOptions
{
    // Empty when model files are given by themselves.
    std::string parameterFile;
    std::vector<std::string> modelFiles;
    // Folder of the files that the parameter file names; empty for its own.
    std::string common;
    // Instead of the context that the parameter file names.
    std::string context;
    // A sample of tracks that the models are tried on, and how it is read; no tracks for none.
    RunOptions sample;
    DiagnosticFormat format = DiagnosticFormat::Text;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addCheckCommand(CLI::App& program, CheckOptions& options);

// Checks the files. What is wrong goes to out, other talk to talk. Returns the exit status: 1 when
// errors were found, 3 when a file cannot be read; warnings leave it 0. A sample that cannot be run
// gives the status of a run.
int runCheck(const CheckOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
