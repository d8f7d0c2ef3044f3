#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;

const std::string kCutOff = SCENARIOMATCH_TEST_DATA "/../../examples/gate/cut-off.xml";

std::string copyOfCutOff(const std::string& name)
{
    std::filesystem::copy_file(
        kCutOff, temporary(name), std::filesystem::copy_options::overwrite_existing);
    return temporary(name);
}

std::size_t filesBeside(const std::string& file)
{
    const std::filesystem::path path(file);
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(path.parent_path())) {
        count += entry.path().filename().string().starts_with(path.filename().string()) ? 1U : 0U;
    }
    return count;
}

} // namespace

TEST(RepairCommand, ClosesAFileInItsPlaceAndSaysWhatItLeavesOut)
{
    const std::string file = copyOfCutOff("events.xml");
    std::filesystem::permissions(file, std::filesystem::perms(0640));
    const Outcome outcome = runProgram("repair " + file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(
        outcome.talk,
        file + ":25: 154 bytes of a frame that breaks off are left out\n" + file +
            ": closed; frames: 2\n");
    const std::string cut = contentOf(kCutOff);
    EXPECT_EQ(contentOf(file), cut.substr(0, cut.size() - 154) + "</Tarvos>\n");
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(filesBeside(file), 1U);
    EXPECT_EQ(runProgram("repair " + file).talk, file + ": whole already; frames: 2\n");
}

TEST(RepairCommand, WritesAnotherFileWhenAsked)
{
    const std::string file = copyOfCutOff("events.xml");
    const std::string output = temporary("whole.xml");
    EXPECT_EQ(runProgram("repair " + file + " --output " + output).status, 0);
    EXPECT_EQ(contentOf(file), contentOf(kCutOff));
    EXPECT_THAT(contentOf(output), EndsWith(" </RHVideoFrame>\n</Tarvos>\n"));
    // A whole file is copied.
    const std::string copy = temporary("copy.xml");
    EXPECT_EQ(runProgram("repair " + output + " --output " + copy).status, 0);
    EXPECT_EQ(contentOf(copy), contentOf(output));
}

TEST(RepairCommand, WritesThroughLinksAndIntoPipes)
{
    const std::string file = copyOfCutOff("events.xml");
    const std::string link = temporary("link.xml");
    std::filesystem::create_symlink(file, link);
    EXPECT_EQ(runProgram("repair " + link).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_THAT(contentOf(file), EndsWith("</Tarvos>\n"));
    EXPECT_EQ(runProgram("repair " + file + " --output /dev/stdout | cat").out, contentOf(file));
}

TEST(RepairCommand, RefusesWithStatusThreeAndChangesNothing)
{
    const std::string file = temporary("other.xml");
    std::ofstream(file) << "<?xml version=\"1.0\"?>\n<html/>\n";
    const std::string before = contentOf(file);
    const Outcome outcome = runProgram("repair " + file);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.talk, file + ":1: this is not how an event file begins\n");
    EXPECT_EQ(contentOf(file), before);
    EXPECT_EQ(runProgram("repair /nowhere/a.xml").status, 3);
    EXPECT_EQ(
        runProgram("repair /nowhere/a.xml").talk,
        "scenariomatch repair: /nowhere/a.xml: No such file or directory\n");
    EXPECT_EQ(runProgram("repair /tmp").talk, "scenariomatch repair: /tmp: this is no file\n");
}

TEST(RepairCommand, EndsWithStatusSixWhereItCannotWriteAndKeepsTheFile)
{
    const std::string file = copyOfCutOff("events.xml");
    const Outcome full = runProgram("repair " + file + " --output /dev/full");
    EXPECT_EQ(full.status, 6);
    EXPECT_THAT(full.talk, HasSubstr("scenariomatch repair: /dev/full: No space left on device\n"));
    EXPECT_EQ(runProgram("repair " + file + " --output /nowhere/a.xml").status, 6);
    // No file may have more than 1024 bytes.
    const Outcome limited = runProgram("repair " + file, "ulimit -f 1; ");
    EXPECT_EQ(limited.status, 6);
    EXPECT_THAT(limited.talk, HasSubstr(": File too large\n"));
    EXPECT_EQ(contentOf(file), contentOf(kCutOff));
    EXPECT_EQ(filesBeside(file), 1U);
    EXPECT_EQ(runProgram("repair " + file + " --output " + file).status, 2);
}

} // namespace scenariomatch
