#include "types/TextFile.h"

#include "TemporaryFile.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

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

TEST(TextFile, ReadsOrdinaryFilesAndLinksToThemOnly)
{
    const TemporaryFile file("text");
    const std::string link = file.folder() + "/link";
    std::filesystem::create_symlink(file.path(), link);
    EXPECT_EQ(readTextFile(link), "text");
    EXPECT_EQ(textFileFault(link), "");
    // Nobody writes into it, so opening it would take for ever.
    const std::string pipe = file.folder() + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& name : {pipe, std::string("/dev/null")}) {
        EXPECT_EQ(readTextFile(name), std::nullopt);
        EXPECT_EQ(textFileFault(name), "it is no ordinary file");
    }
}

TEST(TextFile, ReadsInputFromPipesAndDevices)
{
    EXPECT_EQ(readTextInput("/dev/null"), "");
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ASSERT_EQ(::write(pipe[1], "text", 4), 4);
    ::close(pipe[1]);
    EXPECT_EQ(readTextInput("/dev/fd/" + std::to_string(pipe[0])), "text");
    ::close(pipe[0]);
    EXPECT_EQ(readTextInput("/dev/zero"), std::nullopt);
}

TEST(TextFile, SaysWhyThereIsNone)
{
    const TemporaryFile file("text");
    EXPECT_EQ(textFileFault(file.path()), "");
    EXPECT_EQ(textFileFault(file.folder() + "/no-such-file"), "No such file or directory");
    EXPECT_EQ(textFileFault(file.path() + "/below"), "Not a directory");
    EXPECT_EQ(textFileFault(file.folder()), "Is a directory");
    EXPECT_EQ(textFileFault(""), "No such file or directory");
    std::filesystem::resize_file(file.path(), kMaximumTextFileBytes + 1);
    EXPECT_EQ(textFileFault(file.path()), "it is larger than 64 MiB");
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
