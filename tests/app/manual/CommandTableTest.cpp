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

TEST(CommandTable, NamesTheWordsOfEachCommand)
{
    const ManualExample example;
    std::vector<std::string> paths;
    for (const CommandEntry* const command : allCommands(example.program)) {
        paths.push_back(command->path(" "));
    }
    EXPECT_THAT(paths, ElementsAre("tool", "tool cut", "tool cut twice", "tool glue"));
    EXPECT_EQ(example.program.summary, "Works");
}

TEST(CommandTable, TakesTheExamplesFromTheEndOfHelp)
{
    const ManualExample example;
    EXPECT_THAT(example.program.examples, IsEmpty());
    EXPECT_THAT(example.glue().examples, ElementsAre("tool glue '.x'", "tool glue \\"));
}

TEST(CommandTable, TellsKindsOfValuesFromHelp)
{
    const ManualExample example;
    std::vector<ValueKind> kinds;
    for (const OptionEntry& option : example.glue().options) {
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

TEST(CommandTable, HasAllThatHelpSaysOfAnOption)
{
    const ManualExample example;
    const std::vector<OptionEntry>& options = example.glue().options;
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

TEST(CommandTable, TellsArgumentsFromOptions)
{
    const ManualExample example;
    ASSERT_EQ(example.glue().arguments.size(), 1U);
    const OptionEntry& argument = example.glue().arguments.front();
    EXPECT_THAT(argument.names, IsEmpty());
    EXPECT_EQ(argument.value, "PART");
    EXPECT_EQ(argument.kind, ValueKind::File);
}

} // namespace

} // namespace scenariomatch
