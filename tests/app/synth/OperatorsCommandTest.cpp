#include "app/OperatorsCommand.h"

#include "types/OperatorAbi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

namespace scenariomatch
{

namespace
{

OperatorsOptions testModules(OperatorsFormat format)
{
    OperatorsOptions options;
    options.path = SYNTH_TEST_MODULES;
    options.format = format;
    return options;
}

} // namespace

TEST(OperatorsCommand, PrintsATableOfWhatModulesSayAboutThemselves)
{
    std::ostringstream out;
    std::ostringstream talk;
    EXPECT_EQ(runOperators(testModules(OperatorsFormat::Text), out, talk), 0);
    EXPECT_EQ(
        out.str(),
        "name      arguments                       result  pure  temporal               summary\n"
        "plain     -                               -       no    no                     -\n"
        "plain     -                               -       no    yes                    -\n"
        "precedes  INTERVAL INTERVAL [INT|DOUBLE]  BOOL    yes   argument 1 ends first  "
        "The first interval ends before the second begins.\n");
}

TEST(OperatorsCommand, SaysWhichFilesItSkipsAndWhy)
{
    std::ostringstream out;
    std::ostringstream talk;
    runOperators(testModules(OperatorsFormat::Text), out, talk);
    EXPECT_EQ(
        talk.str(),
        "scenariomatch operators: readme.txt was skipped: it is no plug-in\n"
        "scenariomatch operators: synth_other_root.so was skipped: its root object is no operator\n"
        "scenariomatch operators: synth_other_tag.so was skipped: it is built for "
        "gnu-libstdc++98-7, this program for " CS_OPERATOR_ABI "\n"
        "scenariomatch operators: synth_throws.so was skipped: no description today\n"
        "scenariomatch operators: synth_plain.so and synth_plain_again.so are both named plain; "
        "only one of "
        "them is used\n");
}

TEST(OperatorsCommand, WritesEverythingAsJson)
{
    std::ostringstream out;
    std::ostringstream talk;
    EXPECT_EQ(runOperators(testModules(OperatorsFormat::Json), out, talk), 0);
    EXPECT_EQ(talk.str(), "");
    const auto list = nlohmann::json::parse(out.str());
    ASSERT_EQ(list.at("operators").size(), 3U);
    const auto& full = list.at("operators").at(2);
    EXPECT_EQ(full.at("name"), "precedes");
    EXPECT_EQ(full.at("file"), "synth_full.so");
    EXPECT_EQ(full.at("summary"), "The first interval ends before the second begins.");
    EXPECT_EQ(full.at("arguments").dump(), R"([["INTERVAL"],["INTERVAL"],["INT","DOUBLE"]])");
    EXPECT_EQ(full.at("required_arguments"), 2);
    EXPECT_EQ(full.at("result"), "BOOL");
    EXPECT_EQ(full.at("pure"), true);
    EXPECT_EQ(full.at("temporal"), true);
    EXPECT_EQ(full.at("ends_first"), 0);
    EXPECT_TRUE(list.at("operators").at(0).at("ends_first").is_null());
    ASSERT_EQ(list.at("skipped").size(), 4U);
    EXPECT_EQ(list.at("skipped").at(0).at("file"), "readme.txt");
    EXPECT_EQ(list.at("skipped").at(0).at("reason"), "it is no plug-in");
}

TEST(OperatorsCommand, RefusesAPathThatIsNoFolder)
{
    OperatorsOptions options;
    options.path = "/nowhere/at/all";
    std::ostringstream out;
    std::ostringstream talk;
    EXPECT_EQ(runOperators(options, out, talk), 5);
    EXPECT_EQ(
        talk.str(),
        "scenariomatch operators: no operators in /nowhere/at/all: there is no such folder\n");
    EXPECT_EQ(out.str(), "");
}

TEST(OperatorsCommand, SaysThatAFolderHoldsNone)
{
    OperatorsOptions options;
    options.path = SYNTH_TEST_ROOT "/docs";
    std::ostringstream out;
    std::ostringstream talk;
    EXPECT_EQ(runOperators(options, out, talk), 5);
    EXPECT_THAT(
        talk.str(),
        testing::StartsWith("scenariomatch operators: no operators in " + options.path + "\n"));
    EXPECT_FALSE(hasPluginFile(options.path));
    EXPECT_TRUE(hasPluginFile(SYNTH_TEST_MODULES));
}

TEST(OperatorsCommand, SaysThatTheListCannotBeWritten)
{
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    std::ostringstream talk;
    EXPECT_EQ(runOperators(testModules(OperatorsFormat::Json), out, talk), 6);
    EXPECT_EQ(talk.str(), "scenariomatch operators: cannot write the list\n");
}

TEST(OperatorsCommand, TakesItsOptionsFromTheCommandLine)
{
    CLI::App program;
    OperatorsOptions options;
    const CLI::App* const command = addOperatorsCommand(program, options);
    program.parse("operators --path /some/where --format json");
    EXPECT_TRUE(command->parsed());
    EXPECT_EQ(options.path, "/some/where");
    EXPECT_EQ(options.format, OperatorsFormat::Json);
    try {
        program.parse("operators --format xml");
        FAIL();
    } catch (const CLI::ValidationError& error) {
        EXPECT_STREQ(error.what(), "--format: \"xml\" is none of text, json");
    }
}

} // namespace scenariomatch
