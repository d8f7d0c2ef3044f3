#include "types/TextFile.h"

#include "TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace scenariomatch
{
namespace
{

TEST(TextFile, ReadsAllBytes)
{
    using namespace std::string_literals;
    const std::string bytes = "one\r\ntwo\0three\n"s;
    const TemporaryFile file(bytes);
    EXPECT_EQ(readTextFile(file.path()), bytes);
    const TemporaryFile empty("");
    EXPECT_EQ(readTextFile(empty.path()), "");
}

TEST(TextFile, ReadsFilesLargerThanABlock)
{
    const std::string bytes(200001, 'x');
    const TemporaryFile file(bytes);
    EXPECT_EQ(readTextFile(file.path()), bytes);
}

TEST(TextFile, ReadsNothingWhereThereIsNoFile)
{
    const TemporaryFile file("text");
    EXPECT_EQ(readTextFile(file.folder() + "/no-such-file"), std::nullopt);
    EXPECT_EQ(readTextFile(file.folder()), std::nullopt);
    EXPECT_EQ(readTextFile(""), std::nullopt);
}

TEST(TextFile, ReadsUpToTheLimit)
{
    const TemporaryFile file("text");
    std::filesystem::resize_file(file.path(), kMaximumTextFileBytes);
    const std::optional<std::string> text = readTextFile(file.path());
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->size(), kMaximumTextFileBytes);
    std::filesystem::resize_file(file.path(), kMaximumTextFileBytes + 1);
    EXPECT_EQ(readTextFile(file.path()), std::nullopt);
}

} // namespace
} // namespace scenariomatch
