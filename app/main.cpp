#include "app/ExitStatus.h"
#include "app/GenerateCommand.h"
#include "app/InstalledFiles.h"
#include "app/NewCommand.h"
#include "app/OperatorsCommand.h"
#include "app/RunCommand.h"
#include "app/SynthCommand.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

namespace
{

using scenariomatch::kExitDone;
using scenariomatch::kExitUsage;

// Says which command was used wrongly.
std::string usageText(const CLI::App* program, const CLI::Error& error)
{
    std::string command = program->get_name();
    for (const CLI::App* const used : program->get_subcommands()) {
        command += " " + used->get_name();
    }
    return command + ": " + error.what() + "\nRun with --help for more information.\n";
}

// Help and version are no mistakes; every mistake has the same status.
int answerParseError(const CLI::App& program, const CLI::ParseError& error)
{
    return program.exit(error) == 0 ? kExitDone : kExitUsage;
}

int runProgram(int argc, char** argv)
{
    CLI::App program("Recognises events in tracked objects", "scenariomatch");
    program.set_version_flag("--version", "scenariomatch " SCENARIOMATCH_VERSION);
    program.require_subcommand(1);
    program.failure_message(usageText);
    program.footer("Examples:\n"
                   "  scenariomatch run --help\n"
                   "  scenariomatch operators");

    scenariomatch::RunOptions runOptions;
    scenariomatch::SynthOptions synthOptions;
    scenariomatch::OperatorsOptions operatorsOptions;
    scenariomatch::GenerateOptions generateOptions;
    const CLI::App* const run = addRunCommand(program, runOptions);
    const CLI::App* const synth = addSynthCommand(program, synthOptions);
    addOperatorsCommand(program, operatorsOptions);
    const CLI::App* const generate = addGenerateCommand(program, generateOptions);
    scenariomatch::NewOperatorOptions newOptions;
    const CLI::App* const newOperator = addNewCommand(program, newOptions);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return answerParseError(program, error);
    }
    if (run->parsed()) {
        return runRun(runOptions, std::cout, std::cerr);
    }
    if (synth->parsed()) {
        return runSynth(synthOptions, std::cout, std::cerr);
    }
    if (generate->parsed()) {
        return runGenerate(generateOptions, std::cout, std::cerr);
    }
    if (newOperator->parsed()) {
        return runNewOperator(newOptions, scenariomatch::installedOperatorTemplate(), std::cerr);
    }
    return runOperators(operatorsOptions, std::cout, std::cerr);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return runProgram(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "scenariomatch: " << error.what() << '\n';
        return kExitUsage;
    }
}
