#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

const std::string kData = SCENARIOMATCH_TEST_DATA "/types/accessors/";
const std::string kObjects = kData + "objects.types";

std::string generate(const std::string& objects, const std::string& output)
{
    return "generate --objects " + objects + " --output " + output + " ";
}

// A folder that no run has made yet.
std::string newFolder(const std::string& name = "folder")
{
    std::filesystem::remove_all(temporary(name));
    return temporary(name);
}

std::string expectedText(std::string name)
{
    return contentOf(kData + "expected/" + name.append(".expected"));
}

// The files of a folder, each of which must be as expected.
std::vector<std::string> goodFilesIn(const std::string& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
        EXPECT_EQ(contentOf(entry.path().string()), expectedText(names.back())) << names.back();
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string linesOf(const std::string& folder, const std::vector<std::string>& names)
{
    std::string lines;
    for (const std::string& name : names) {
        lines += folder + "/";
        lines += name + "\n";
    }
    return lines;
}

const std::vector<std::string> kTypeFiles{
    "CSObject.h",
    "Mobile.h",
    "Mobile.cpp",
    "Vehicle.h",
    "Vehicle.cpp",
    "Truck.h",
    "Truck.cpp",
    "Bus.h",
    "Bus.cpp",
    "Place.h",
    "Place.cpp",
    "Zone.h",
    "Zone.cpp"};
const std::vector<std::string> kAccessorFiles{"CSAccessor.h", "CSAccessor.cpp"};
const std::vector<std::string> kConversionFiles{"CSObjectConversion.h", "CSObjectConversion.cpp"};

} // namespace

TEST(GenerateCommand, WritesAllFilesToANewFolderAndNamesThem)
{
    const std::string folder = newFolder() + "/deep";
    const Outcome outcome = runProgram(generate(kObjects, folder));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.out,
        linesOf(folder, kTypeFiles) + linesOf(folder, kAccessorFiles) +
            linesOf(folder, kConversionFiles));
    EXPECT_EQ(outcome.talk, "");
    EXPECT_THAT(goodFilesIn(folder), testing::SizeIs(17));
}

TEST(GenerateCommand, WritesOnlyThePartAskedFor)
{
    const std::map<std::string, std::vector<std::string>> parts{
        {"types", kTypeFiles}, {"accessor", kAccessorFiles}, {"conversion", kConversionFiles}};
    for (const auto& [part, files] : parts) {
        const std::string folder = newFolder(part);
        const Outcome outcome = runProgram(generate(kObjects, folder) + "--only " + part);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out, linesOf(folder, files));
        EXPECT_THAT(goodFilesIn(folder), testing::UnorderedElementsAreArray(files));
    }
}

TEST(GenerateCommand, WritesNothingWhenAnyFileIsThere)
{
    const std::string folder = newFolder();
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/CSObjectConversion.cpp") << "mine";
    const Outcome outcome = runProgram(generate(kObjects, folder));
    EXPECT_EQ(outcome.status, 6);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(
        outcome.talk,
        "scenariomatch generate: " + folder +
            "/CSObjectConversion.cpp is there already; nothing is written (--force replaces it)\n");
    EXPECT_EQ(contentOf(folder + "/CSObjectConversion.cpp"), "mine");
    EXPECT_FALSE(std::filesystem::exists(folder + "/CSObject.h"));
    EXPECT_EQ(runProgram(generate(kObjects, folder) + "--only types").status, 0);
}

TEST(GenerateCommand, TakesALinkToNowhereForAFileThatIsThere)
{
    const std::string folder = newFolder();
    std::filesystem::create_directory(folder);
    std::filesystem::create_symlink(temporary("elsewhere"), folder + "/Mobile.h");
    EXPECT_EQ(runProgram(generate(kObjects, folder)).status, 6);
    EXPECT_FALSE(std::filesystem::exists(temporary("elsewhere")));
}

TEST(GenerateCommand, FollowsALinkToAFolder)
{
    const std::string folder = newFolder();
    std::filesystem::create_directory(folder);
    std::filesystem::remove(temporary("link"));
    std::filesystem::create_directory_symlink(folder, temporary("link"));
    EXPECT_EQ(runProgram(generate(kObjects, temporary("link"))).status, 0);
    EXPECT_THAT(goodFilesIn(folder), testing::SizeIs(17));
}

TEST(GenerateCommand, WritesOverFilesWhenForced)
{
    const std::string folder = newFolder();
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/Mobile.h") << std::string(10'000, 'x');
    EXPECT_EQ(runProgram(generate(kObjects, folder) + "--force").status, 0);
    EXPECT_THAT(goodFilesIn(folder), testing::SizeIs(17));
    EXPECT_EQ(runProgram(generate(kObjects, folder) + "--force").status, 0);
    EXPECT_THAT(goodFilesIn(folder), testing::SizeIs(17));
}

TEST(GenerateCommand, ReadsObjectsFromAPipe)
{
    const std::string folder = newFolder();
    EXPECT_EQ(runProgram(generate("/dev/stdin", folder), "cat " + kObjects + " | ").status, 0);
    EXPECT_THAT(goodFilesIn(folder), testing::SizeIs(17));
}

TEST(GenerateCommand, RefusesNamesThatNoSourceFileCanHold)
{
    const std::string data = SCENARIOMATCH_TEST_DATA "/app/generate/";
    const std::string folder = newFolder();
    const Outcome outcome = runProgram(generate("broken.types", folder), "cd " + data + " && ");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.talk, contentOf(data + "broken.expected"));
    EXPECT_FALSE(std::filesystem::exists(folder));
}

TEST(GenerateCommand, NeedsOnlyTheTypesNamesForTheAccessors)
{
    std::ofstream(temporary("objects")) << "class Person {\nconstant false;\nINT Age ;\n}\n";
    const std::string arguments = generate(temporary("objects"), newFolder());
    EXPECT_EQ(runProgram(arguments + "--only accessor").status, 0);
    EXPECT_EQ(runProgram(arguments + "--only conversion").status, 3);
    EXPECT_EQ(runProgram(arguments + "--only types").status, 3);
    EXPECT_EQ(runProgram(arguments + "--force").status, 3);
}

TEST(GenerateCommand, SaysThatTheObjectsCannotBeRead)
{
    const std::string missing = temporary("missing");
    const Outcome outcome = runProgram(generate(missing, newFolder()));
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(
        outcome.talk,
        "scenariomatch generate: cannot read " + missing + ": No such file or directory\n");
    const Outcome folder = runProgram(generate(kData, newFolder()));
    EXPECT_EQ(folder.status, 3);
    EXPECT_THAT(folder.talk, HasSubstr("cannot read " + kData + ": Is a directory"));
    std::ofstream(temporary("large")) << "";
    std::filesystem::resize_file(temporary("large"), std::uintmax_t{65} << 20U);
    const Outcome large = runProgram(generate(temporary("large"), newFolder()));
    EXPECT_EQ(large.status, 3);
    EXPECT_THAT(large.talk, HasSubstr("it is larger than 64 MiB"));
}

TEST(GenerateCommand, SaysThatNothingIsDeclared)
{
    const Outcome outcome = runProgram(generate("/dev/null", newFolder()));
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.talk, StartsWith("/dev/null:1:1: no class is declared: expected "));
}

TEST(GenerateCommand, SaysThatTheFolderCannotBeMade)
{
    std::ofstream(temporary("file")) << "mine";
    const Outcome file = runProgram(generate(kObjects, temporary("file")));
    EXPECT_EQ(file.status, 6);
    EXPECT_THAT(
        file.talk,
        StartsWith(
            "scenariomatch generate: cannot make " + temporary("file") + ": Not a directory"));
    EXPECT_EQ(contentOf(temporary("file")), "mine");
    EXPECT_EQ(runProgram(generate(kObjects, temporary("file") + "/below")).status, 6);
    EXPECT_EQ(runProgram(generate(kObjects, "/dev/null")).status, 6);
}

TEST(GenerateCommand, WritesNothingWhereAFolderHasTheNameOfAFile)
{
    const std::string folder = newFolder();
    std::filesystem::create_directories(folder + "/Mobile.cpp");
    const Outcome outcome = runProgram(generate(kObjects, folder) + "--force");
    EXPECT_EQ(outcome.status, 6);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(
        outcome.talk,
        "scenariomatch generate: cannot write " + folder + "/Mobile.cpp: Is a directory\n");
    EXPECT_FALSE(std::filesystem::exists(folder + "/CSObject.h"));
}

TEST(GenerateCommand, LeavesNothingBehindWhenAFileCannotBeWrittenWhole)
{
    // Some of the files are smaller than what a file may have, others larger.
    const std::string limit = "trap '' XFSZ; ulimit -f 4; ";
    const std::string folder = newFolder();
    const Outcome outcome = runProgram(generate(kObjects, folder), limit);
    EXPECT_EQ(outcome.status, 6);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(
        outcome.talk,
        "scenariomatch generate: cannot write " + folder + "/Mobile.cpp: File too large\n");
    EXPECT_FALSE(std::filesystem::exists(folder));

    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/CSObject.h") << "mine";
    EXPECT_EQ(runProgram(generate(kObjects, folder) + "--force", limit).status, 6);
    EXPECT_EQ(contentOf(folder + "/CSObject.h"), "mine");
    EXPECT_FALSE(std::filesystem::exists(folder + "/Mobile.h"));
}

TEST(GenerateCommand, ReplacesALinkAndWritesNothingThroughIt)
{
    const std::string folder = newFolder();
    std::filesystem::create_directory(folder);
    std::ofstream(temporary("elsewhere")) << "mine";
    std::filesystem::create_symlink(temporary("elsewhere"), folder + "/Mobile.h");
    EXPECT_EQ(runProgram(generate(kObjects, folder) + "--force").status, 0);
    EXPECT_EQ(contentOf(temporary("elsewhere")), "mine");
    EXPECT_FALSE(std::filesystem::is_symlink(folder + "/Mobile.h"));
    EXPECT_THAT(goodFilesIn(folder), testing::SizeIs(17));
}

TEST(GenerateCommand, SaysThatTheNamesCannotBeWritten)
{
    const Outcome outcome = runProgram(
        generate(kObjects, newFolder()) + ">/dev/full 2>" + temporary("full") + "; exit $? #");
    EXPECT_EQ(outcome.status, 6);
    EXPECT_THAT(contentOf(temporary("full")), HasSubstr("cannot write the names of the files"));
}

TEST(GenerateCommand, RefusesToWriteOverTheObjects)
{
    const std::string folder = newFolder();
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(kObjects, folder + "/CSObject.h");
    const Outcome outcome = runProgram(generate(folder + "/CSObject.h", folder) + "--force");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.talk, HasSubstr("which is read as --objects"));
    EXPECT_EQ(contentOf(folder + "/CSObject.h"), contentOf(kObjects));
}

TEST(GenerateCommand, RefusesWrongUse)
{
    const Outcome empty = runProgram(generate(kObjects, "''"));
    EXPECT_EQ(empty.status, 2);
    EXPECT_THAT(empty.talk, StartsWith("scenariomatch generate: --output: needs a name, not "));
    EXPECT_EQ(runProgram("generate").status, 2);
    EXPECT_EQ(runProgram("generate --objects " + kObjects).status, 2);
    EXPECT_EQ(runProgram("generate --output " + newFolder()).status, 2);
    const Outcome outcome = runProgram(generate(kObjects, newFolder()) + "--only headers");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.talk, HasSubstr("\"headers\" is none of types, accessor, conversion"));
}

} // namespace scenariomatch
