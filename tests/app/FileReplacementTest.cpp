#include "app/FileReplacement.h"

#include "tests/app/ProgramRun.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace scenariomatch
{

TEST(FileReplacement, MakesAFileOrReplacesIt)
{
    const std::string path = temporary("file");
    EXPECT_TRUE(canReplaceFile(path));
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_TRUE(replaceFile(path, "one"));
    EXPECT_TRUE(canReplaceFile(path));
    EXPECT_EQ(contentOf(path), "one");
    EXPECT_TRUE(replaceFile(path, "two"));
    EXPECT_EQ(contentOf(path), "two");
    EXPECT_FALSE(std::filesystem::exists(path + ".new"));
}

TEST(FileReplacement, FollowsALink)
{
    const std::string path = temporary("file");
    const std::string link = temporary("link");
    EXPECT_TRUE(replaceFile(path, "one"));
    std::filesystem::create_symlink(path, link);
    EXPECT_TRUE(replaceFile(link, "two"));
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(contentOf(path), "two");
}

TEST(FileReplacement, WritesToADevice)
{
    EXPECT_TRUE(canReplaceFile("/dev/null"));
    EXPECT_TRUE(replaceFile("/dev/null", "lost"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(FileReplacement, SaysWhyItCannot)
{
    const std::string path = temporary("folder") + "/file";
    errno = 0;
    EXPECT_FALSE(canReplaceFile(path));
    EXPECT_EQ(errno, ENOENT);
    errno = 0;
    EXPECT_FALSE(replaceFile(path, "text"));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(replaceFile("/dev/full", std::string(100'000, 'x')));
}

} // namespace scenariomatch
