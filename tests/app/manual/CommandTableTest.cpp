#include "app/manual/CommandTable.h"

#include "ManualExample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using CommandTable = ManualExample;

TEST_F(CommandTable, NamesTheWordsOfEachCommand)
{
    std::vector<std::string> paths;
    for (const CommandEntry* const command : allCommands(m_program)) {
        paths.push_back(command->path(" "));
    }
    EXPECT_THAT(paths, ElementsAre("tool", "tool cut", "tool cut twice", "tool glue"));
    EXPECT_EQ(m_program.summary, "Works");
}

TEST_F(CommandTable, TakesTheExamplesFromTheEndOfHelp)
{
    EXPECT_THAT(m_program.examples, IsEmpty());
    EXPECT_THAT(glue().examples, ElementsAre("tool glue '.x'", "tool glue \\"));
}

TEST_F(CommandTable, TakesDescriptionAndEnvironmentFromTheEndOfHelp)
{
    EXPECT_EQ(m_program.description, "");
    EXPECT_EQ(glue().description, "Puts two parts together.");
    EXPECT_THAT(m_program.environment, IsEmpty());
    ASSERT_EQ(glue().environment.size(), 1U);
    EXPECT_EQ(glue().environment.front().name, "GLUE_POT");
    EXPECT_EQ(glue().environment.front().meaning, "Where glue is");
}

TEST_F(CommandTable, TellsKindsOfValuesFromHelp)
{
    std::vector<ValueKind> kinds;
    for (const OptionEntry& option : glue().options) {
        kinds.push_back(option.kind);
    }
    EXPECT_THAT(
        kinds,
        ElementsAre(
            ValueKind::None,
            ValueKind::Choice,
            ValueKind::File,
            ValueKind::Folder,
            ValueKind::Text,
            ValueKind::None));
}

TEST_F(CommandTable, HasAllThatHelpSaysOfAnOption)
{
    const std::vector<OptionEntry>& options = glue().options;
    EXPECT_THAT(options[0].names, ElementsAre("-h", "--help"));
    EXPECT_EQ(options[0].value, "");
    EXPECT_THAT(options[1].choices, ElementsAre("bone", "paste"));
    EXPECT_EQ(options[1].description, ".like [this]: it's \\ `odd`");
    EXPECT_EQ(options[2].value, "FILE");
    EXPECT_EQ(options[2].defaultValue, "-");
    EXPECT_TRUE(options[3].isRequired);
    EXPECT_FALSE(options[2].isRequired);
    EXPECT_TRUE(options[4].isRepeated);
    EXPECT_FALSE(options[3].isRepeated);
}

TEST_F(CommandTable, TellsArgumentsFromOptions)
{
    ASSERT_EQ(glue().arguments.size(), 2U);
    const OptionEntry& argument = glue().arguments.front();
    EXPECT_THAT(argument.names, IsEmpty());
    EXPECT_EQ(argument.value, "PART");
    EXPECT_EQ(argument.kind, ValueKind::File);
    EXPECT_EQ(glue().arguments.back().value, "NAME");
    EXPECT_EQ(glue().arguments.back().kind, ValueKind::Text);
}

} // namespace

} // namespace scenariomatch
