#include "app/CommandLine.h"

#include "app/ExitStatus.h"
#include "app/HelpFooter.h"

#include <fmt/format.h>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

// Says which command was used wrongly.
std::string usageText(const CLI::App* program, const CLI::Error& error)
{
    std::string command = program->get_name();
    for (std::vector<CLI::App*> used = program->get_subcommands(); !used.empty();
         used = used.front()->get_subcommands()) {
        command += " " + used.front()->get_name();
    }
    return command + ": " + error.what() + "\nRun with --help for more information.\n";
}

std::string exitStatusText()
{
    std::string text = "Exit status:\n";
    for (const ExitMeaning& exit : kExitMeanings) {
        text += fmt::format("  {}  {}\n", exit.status, exit.meaning);
    }
    return text;
}

} // namespace

CommandLine::CommandLine()
    : program("Recognises events in tracked objects", "scenariomatch")
    , run(addRunCommand(program, runOptions))
    , check(addCheckCommand(program, checkOptions))
    , synth(addSynthCommand(program, synthOptions))
    , operators(addOperatorsCommand(program, operatorsOptions))
    , generate(addGenerateCommand(program, generateOptions))
    , newOperator(addNewCommand(program, newOperatorOptions))
    , score(addScoreCommand(program, scoreOptions))
    , test(addTestCommand(program, testOptions))
    , explain(addExplainCommand(program, explainOptions))
    , repair(addRepairCommand(program, repairOptions))
    , report(addReportCommand(program, reportOptions))
{
    program.set_version_flag("--version", "scenariomatch " SCENARIOMATCH_VERSION);
    program.require_subcommand(1);
    program.failure_message(usageText);
    program.footer(
        exitStatusText() + "\n" +
        footerText(
            {.description = "Takes the output of a tracker and models of a few lines (a bag lies "
                            "still and its "
                            "owner has gone), and gives events with participants, begin, end, "
                            "confidence and alarm level. Every command has help of its own.",
             .environment = {kPluginPathVariable, kTemporaryFolderVariable},
             .examples = {"scenariomatch run --help", "scenariomatch operators"}}));
}

} // namespace scenariomatch
