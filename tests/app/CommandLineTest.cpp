#include "app/CommandLine.h"

#include "app/ExitStatus.h"
#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fmt/format.h>
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

} // namespace

} // namespace scenariomatch
