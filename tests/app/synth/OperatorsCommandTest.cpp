#include "app/OperatorsCommand.h"

#include "types/OperatorAbi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <sys/stat.h>

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
    EXPECT_EQ(
        list.at("duplicates").dump(),
        R"([{"files":["synth_plain.so","synth_plain_again.so"],"name":"plain"}])");
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
    EXPECT_FALSE(inspectOperatorFolder(options.path).hasPlugin);
    const OperatorFolder modules = inspectOperatorFolder(SYNTH_TEST_MODULES);
    EXPECT_TRUE(modules.hasPlugin);
    ASSERT_EQ(modules.skipped.size(), 2U);
    EXPECT_EQ(modules.skipped.at(0).file, "readme.txt");
    EXPECT_EQ(modules.skipped.at(1).file, "synth_other_tag.so");
}

TEST(OperatorsCommand, SkipsWhatIsNoFileOrHidden)
{
    std::string folder = testing::TempDir() + "/operators-XXXXXX";
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    std::filesystem::create_symlink("nowhere", folder + "/near.so");
    std::filesystem::copy_file(SYNTH_TEST_MODULES "/synth_full.so", folder + "/.hidden.so");
    ASSERT_EQ(mkfifo((folder + "/pipe").c_str(), 0600), 0);
    OperatorsOptions options;
    options.path = folder;
    std::ostringstream out;
    std::ostringstream talk;
    EXPECT_EQ(runOperators(options, out, talk), 5);
    EXPECT_EQ(
        talk.str(),
        "scenariomatch operators: no operators in " + folder +
            "\n"
            "scenariomatch operators: .hidden.so was skipped: it is hidden\n"
            "scenariomatch operators: near.so was skipped: it is no file\n"
            "scenariomatch operators: pipe was skipped: it is no file\n");
    EXPECT_FALSE(inspectOperatorFolder(folder).hasPlugin);
    std::filesystem::remove_all(folder);
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
