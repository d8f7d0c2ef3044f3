#include "app/CommandLine.h"

#include "app/ExitStatus.h"
#include "app/report/ReportTemplate.h"
#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <regex>
#include <string>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;

TEST(CommandLine, HelpNamesEveryExitStatusAsTheDocumentDoes)
{
    std::string document = contentOf(SCENARIOMATCH_TEST_DATA "/../../docs/file-formats.md");
    document.erase(std::remove(document.begin(), document.end(), '`'), document.end());
    const std::string help = CommandLine().program.help();
    for (const ExitMeaning& exit : kExitMeanings) {
        EXPECT_THAT(help, HasSubstr(fmt::format("\n  {}  {}\n", exit.status, exit.meaning)));
        EXPECT_THAT(document, HasSubstr(fmt::format("\n| {} | {} |\n", exit.status, exit.meaning)));
    }
}

TEST(CommandLine, HelpShowsWhatAnOptionChoosesFrom)
{
    const std::string help = CommandLine().run->help();
    EXPECT_THAT(help, HasSubstr("  --format auto|jsonl|mot|cvml|trajectory\n"));
    EXPECT_THAT(help, HasSubstr("  --progress auto|on|off "));
}

TEST(CommandLine, HelpSaysWhereFilesAndFoldersGo)
{
    const CommandLine line;
    EXPECT_THAT(line.run->help(), HasSubstr("  --tracks FILE "));
    EXPECT_THAT(line.synth->help(), HasSubstr("  SCENE FILE REQUIRED "));
    EXPECT_THAT(line.operators->help(), HasSubstr("  --path FOLDER "));
}

TEST(CommandLine, UsageErrorsNameTheCommandToTheLastWord)
{
    EXPECT_EQ(
        runProgram("new operator").talk,
        "scenariomatch new operator: NAME is required\nRun with --help for more information.\n");
    EXPECT_THAT(
        runProgram("new operator Faster --output ''").talk,
        testing::StartsWith("scenariomatch new operator: --output: needs a name, not \"\"\n"));
    EXPECT_THAT(runProgram("run").talk, testing::StartsWith("scenariomatch run: "));
    EXPECT_THAT(runProgram("").talk, testing::StartsWith("scenariomatch: "));
}

// The help texts of the commands that have no commands of their own.
std::map<std::string, std::string> helpsOf(const CLI::App& app, const std::string& words = "")
{
    std::map<std::string, std::string> helps;
    for (const CLI::App* const command : app.get_subcommands(nullptr)) {
        const std::string name = words + command->get_name();
        helps.merge(helpsOf(*command, name + " "));
        helps.emplace(name, command->help());
    }
    return helps;
}

TEST(CommandLine, HelpOfEveryCommandEndsWithTwoExamplesThatWorkAsPrinted)
{
    for (const auto& [name, help] : helpsOf(CommandLine().program)) {
        // Its examples score what the examples of other commands have made.
        if (name == "score" || (name == "report" && reportTemplate().empty())) {
            continue;
        }
        const std::string folder = temporary(name);
        std::filesystem::create_directory(folder);
        std::filesystem::create_directory_symlink(
            SCENARIOMATCH_TEST_DATA "/../../examples", folder + "/examples");
        const std::string examples = help.substr(std::min(help.size(), help.find("Examples:\n")));
        const std::regex line("  scenariomatch (.*)\n");
        int count = 0;
        for (std::sregex_iterator found(examples.begin(), examples.end(), line), end; found != end;
             ++found) {
            EXPECT_EQ(runProgram(found->str(1), "cd '" + folder + "' && ").status, 0)
                << found->str();
            ++count;
        }
        EXPECT_EQ(count, 2) << name;
    }
}

} // namespace

} // namespace scenariomatch
