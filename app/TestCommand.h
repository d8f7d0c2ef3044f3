#pragma once

#include "app/RuleReport.h"

#include <CLI/CLI.hpp>
#include <iosfwd>
#include <string>
#include <vector>

namespace scenariomatch
{

// What the command "test" is told.
struct TestOptions
{
    std::vector<std::string> files;
    RuleReportFormat format = RuleReportFormat::Text;
    // Whether found events are written over those expected.
    bool isUpdate = false;
    bool hasCoverage = false;
    // Whether the answer is no where a constraint has not been seen true and false.
    bool needsCoverage = false;
};

// Adds the command to the program's command line; parsing fills the options, which must outlive it.
CLI::App* addTestCommand(CLI::App& program, TestOptions& options);

// Runs tests of rules. Verdicts go to out, talk to talk. Returns the exit status.
int runTest(const TestOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
