#pragma once

#include "app/CheckCommand.h"
#include "app/explain/ExplainCommand.h"
#include "app/GenerateCommand.h"
#include "app/NewCommand.h"
#include "app/OperatorsCommand.h"
#include "app/RepairCommand.h"
#include "app/report/ReportCommand.h"
#include "app/RunOptions.h"
#include "app/ScoreCommand.h"
#include "app/SynthCommand.h"
#include "app/TestCommand.h"

#include <CLI/CLI.hpp>

namespace scenariomatch
{

// The program's commands and their options: what parsing fills, what --help prints, and what manual
// pages and completions are made from.
//
// Example:
//     CommandLine line;
//     line.program.parse(argc, argv);
//     if (line.run->parsed()) {
//         return runRun(line.runOptions, std::cout, std::cerr);
//     }
struct CommandLine
{
    CommandLine();

    CLI::App program;
    RunOptions runOptions;
    CheckOptions checkOptions;
    SynthOptions synthOptions;
    OperatorsOptions operatorsOptions;
    GenerateOptions generateOptions;
    NewOperatorOptions newOperatorOptions;
    ScoreOptions scoreOptions;
    TestOptions testOptions;
    ExplainOptions explainOptions;
    RepairOptions repairOptions;
    ReportCommandOptions reportOptions;
    // The commands belong to the program.
    const CLI::App* run;
    const CLI::App* check;
    const CLI::App* synth;
    const CLI::App* operators;
    const CLI::App* generate;
    const CLI::App* newOperator;
    const CLI::App* score;
    const CLI::App* test;
    const CLI::App* explain;
    const CLI::App* repair;
    const CLI::App* report;
};

} // namespace scenariomatch
