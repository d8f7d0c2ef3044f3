#include "app/NewCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

namespace scenariomatch
{

namespace
{

std::string textOf(const std::filesystem::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

class NewCommand : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string name = (std::filesystem::temp_directory_path() / "new-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_folder = name;
    }

    void TearDown() override { std::filesystem::remove_all(m_folder); }

    // Returns the status; what is said is kept.
    int write(const std::string& name, const std::string& output)
    {
        std::ostringstream out;
        std::ostringstream talk;
        const int status = runNewOperator({name, output}, SYNTH_TEST_TEMPLATE, out, talk);
        m_out = out.str();
        m_talk = talk.str();
        return status;
    }

    std::filesystem::path m_folder;
    std::string m_out;
    std::string m_talk;
};

} // namespace

TEST_F(NewCommand, WritesAnOperatorWithItsTest)
{
    const std::string folder = (m_folder / "deep/inside").string();
    EXPECT_EQ(write("Faster", folder), 0);
    EXPECT_THAT(
        textOf(folder + "/CMakeLists.txt"),
        testing::HasSubstr(
            "scenariomatch_add_operator(NAME Faster SOURCES Faster.cpp TEST FasterTest.cpp)"));
    EXPECT_THAT(
        textOf(folder + "/Faster.cpp"),
        testing::HasSubstr("class FasterOperator : public QObject"));
    EXPECT_THAT(textOf(folder + "/Faster.cpp"), testing::HasSubstr("#include \"Faster.moc\""));
    EXPECT_THAT(textOf(folder + "/FasterTest.cpp"), testing::HasSubstr("find(\"Faster\")"));
    for (const char* const file : {"/CMakeLists.txt", "/Faster.cpp", "/FasterTest.cpp"}) {
        EXPECT_THAT(textOf(folder + file), testing::Not(testing::HasSubstr("LeftOf")));
    }
    EXPECT_EQ(
        m_out,
        folder + "/CMakeLists.txt\n" + folder + "/Faster.cpp\n" + folder + "/FasterTest.cpp\n");
    EXPECT_EQ(
        m_talk,
        "scenariomatch new operator: build and test Faster with\n  cmake -S " + folder + " -B " +
            folder + "/build && cmake --build " + folder + "/build && ctest --test-dir " + folder +
            "/build\n");
}

TEST_F(NewCommand, PrintsCommandsThatAShellUnderstands)
{
    EXPECT_EQ(write("Faster", (m_folder / "what's new").string()), 0);
    EXPECT_THAT(
        m_talk,
        testing::HasSubstr(
            " && ctest --test-dir '" + m_folder.string() + "/what'\\''s new'/build\n"));
}

TEST_F(NewCommand, PrintsAFolderThatNoProgramTakesForAnOption)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(m_folder);
    EXPECT_EQ(write("Faster", "-y"), 0);
    std::filesystem::current_path(before);
    EXPECT_THAT(m_talk, testing::HasSubstr("\n  cmake -S ./-y -B ./-y/build && "));
}

TEST_F(NewCommand, WritesTheTemplateItselfUnderItsOwnName)
{
    EXPECT_EQ(write("LeftOf", m_folder.string()), 0);
    for (const char* const file : {"CMakeLists.txt", "LeftOf.cpp", "LeftOfTest.cpp"}) {
        const std::filesystem::path original = std::filesystem::path(SYNTH_TEST_TEMPLATE) / file;
        ASSERT_TRUE(std::filesystem::exists(original));
        EXPECT_EQ(textOf(m_folder / file), textOf(original));
    }
}

TEST_F(NewCommand, KeepsTheBuildFileToSixLines)
{
    const std::string text = textOf(SYNTH_TEST_TEMPLATE "/CMakeLists.txt");
    EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 6);
}

TEST_F(NewCommand, OverwritesNothing)
{
    const std::filesystem::path mine = m_folder / "FasterTest.cpp";
    std::ofstream(mine) << "mine\n";
    EXPECT_EQ(write("Faster", m_folder.string()), 6);
    EXPECT_EQ(
        m_talk,
        "scenariomatch new operator: " + mine.string() + " is there already; nothing is written\n");
    EXPECT_EQ(textOf(mine), "mine\n");
    EXPECT_FALSE(std::filesystem::exists(m_folder / "Faster.cpp"));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "CMakeLists.txt"));
}

TEST_F(NewCommand, FollowsNoLinkToWrite)
{
    std::filesystem::create_symlink(m_folder / "elsewhere", m_folder / "Faster.cpp");
    EXPECT_EQ(write("Faster", m_folder.string()), 6);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "elsewhere"));
}

TEST_F(NewCommand, SaysWhereItCannotWrite)
{
    std::ofstream(m_folder / "file") << "no folder\n";
    const std::string folder = (m_folder / "file/inside").string();
    EXPECT_EQ(write("Faster", folder), 6);
    EXPECT_EQ(m_talk, "scenariomatch new operator: cannot make " + folder + ": Not a directory\n");
}

TEST_F(NewCommand, RefusesWhatCannotNameAClass)
{
    EXPECT_EQ(write("2fast", m_folder.string()), 2);
    EXPECT_EQ(
        m_talk,
        "scenariomatch new operator: \"2fast\" is no C++ identifier: expected letters, digits and "
        "underscores, beginning with a letter\n");
    EXPECT_EQ(write("class", m_folder.string()), 2);
    EXPECT_EQ(
        m_talk, "scenariomatch new operator: \"class\" is a C++ keyword: expected another name\n");
    for (const char* const name : {"", "a-b", "a b", "../up", "Left/Of", "_Fast", "a__b", "x;y"}) {
        EXPECT_EQ(write(name, m_folder.string()), 2) << name;
    }
    EXPECT_EQ(write("a\nb", m_folder.string()), 2);
    EXPECT_THAT(m_talk, testing::StartsWith("scenariomatch new operator: \"a\\nb\" is no C++"));
    EXPECT_TRUE(std::filesystem::is_empty(m_folder));
}

TEST_F(NewCommand, RefusesTheNamesOfStandardOperatorsAndTheirFiles)
{
    const std::regex definition("operatorDefinition\\(\\)[^\"]*\"([^\"]+)\"");
    std::istringstream files(SYNTH_TEST_OPERATORS);
    int tried = 0;
    for (std::string file; files >> file; ++tried) {
        const std::string text = textOf(SYNTH_TEST_ROOT "/operators/" + file + ".cpp");
        std::smatch found;
        ASSERT_TRUE(std::regex_search(text, found, definition)) << file;
        EXPECT_EQ(write(found.str(1), m_folder.string()), 2) << found.str(1);
        EXPECT_EQ(write(std::filesystem::path(file).filename(), m_folder.string()), 2) << file;
    }
    EXPECT_GT(tried, 40);
    EXPECT_EQ(write("near", m_folder.string()), 2);
    EXPECT_EQ(
        m_talk,
        "scenariomatch new operator: \"near\" names a standard operator: expected another name\n");
    EXPECT_TRUE(std::filesystem::is_empty(m_folder));
}

TEST_F(NewCommand, UsesTheNameOnlyAsPartOfCppNames)
{
    std::string text = textOf(SYNTH_TEST_TEMPLATE "/LeftOf.cpp");
    text += textOf(SYNTH_TEST_TEMPLATE "/LeftOfTest.cpp");
    ASSERT_TRUE(std::regex_search(text, std::regex("\\bLeftOfOperator\\b")));
    const std::string code = std::regex_replace(text, std::regex("\"[^\"\n]*\"|//[^\n]*"), "");
    EXPECT_FALSE(std::regex_search(code, std::regex("\\bLeftOf\\b")));
}

TEST_F(NewCommand, SaysThatThereIsNoTemplate)
{
    std::ostringstream out;
    std::ostringstream talk;
    EXPECT_EQ(runNewOperator({"Faster", m_folder.string()}, "/nowhere/at/all", out, talk), 6);
    EXPECT_EQ(talk.str(), "scenariomatch new operator: no template in /nowhere/at/all\n");
    EXPECT_TRUE(std::filesystem::is_empty(m_folder));
}

TEST(NewCommandLine, TakesNameAndFolder)
{
    CLI::App program;
    NewOperatorOptions options;
    const CLI::App* const command = addNewCommand(program, options);
    program.parse("new operator Faster --output some/where");
    EXPECT_TRUE(command->parsed());
    EXPECT_EQ(options.name, "Faster");
    EXPECT_EQ(options.output, "some/where");
    EXPECT_THROW(program.parse("new operator"), CLI::RequiredError);
    EXPECT_THROW(program.parse("new"), CLI::RequiredError);
}

} // namespace scenariomatch
