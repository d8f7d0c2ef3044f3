#include "app/RunFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace scenariomatch
{

namespace
{

// A folder of the test's own with one file in it.
class RunFilesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_folder = std::filesystem::path(testing::TempDir()) /
                   testing::UnitTest::GetInstance()->current_test_info()->name();
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        std::ofstream(m_folder / "tracks") << "text\n";
    }

    std::string path(const std::string& name) const { return (m_folder / name).string(); }

    std::filesystem::path m_folder;
};

} // namespace

TEST_F(RunFilesTest, LetsDifferentFilesPass)
{
    EXPECT_EQ(
        clashOf({{"in", path("tracks")}}, {{"out", path("events")}, {"log", path("log")}}), "");
    EXPECT_EQ(clashOf({{"in", ""}}, {{"out", ""}, {"log", ""}}), "");
}

TEST_F(RunFilesTest, FindsAnInputUnderEveryName)
{
    std::filesystem::create_symlink(m_folder / "tracks", m_folder / "link");
    std::filesystem::create_hard_link(m_folder / "tracks", m_folder / "twin");
    for (const std::string name : {"tracks", "./tracks", "link", "twin"}) {
        EXPECT_EQ(
            clashOf({{"in", path("tracks")}}, {{"out", path(name)}}),
            "out would overwrite " + path(name) + ", which is read as in");
    }
}

TEST_F(RunFilesTest, FindsOutputsOfOneName)
{
    EXPECT_EQ(
        clashOf({}, {{"out", path("new")}, {"log", path("./new")}}),
        "out and log would both write " + path("./new"));
    EXPECT_NE(clashOf({}, {{"out", "new-file"}, {"log", "./new-file"}}), "");
    EXPECT_NE(clashOf({}, {{"out", path("tracks")}, {"log", path("tracks")}}), "");
}

TEST_F(RunFilesTest, LetsDevicesBeNamedTwice)
{
    EXPECT_EQ(clashOf({{"in", "/dev/null"}}, {{"out", "/dev/null"}, {"log", "/dev/null"}}), "");
}

TEST_F(RunFilesTest, TellsWhetherAFileCanBeWrittenAndKeepsIt)
{
    EXPECT_TRUE(isWritable(path("new")));
    EXPECT_TRUE(isWritable(path("tracks")));
    EXPECT_EQ(std::filesystem::file_size(m_folder / "tracks"), 5U);
    EXPECT_FALSE(isWritable(path("no/folder")));
    EXPECT_TRUE(isWritable("/dev/null"));
}

} // namespace scenariomatch
