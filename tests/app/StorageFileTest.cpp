#include "app/StorageFile.h"

#include "app/Homography.h"
#include "tests/app/TrackReading.h"

#include <cmath>
#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

// "key=text" of every entry, with "#" behind numbers, "(...)" for what has no text, "@line".
std::string entriesOf(const std::string& text)
{
    std::string error;
    const std::optional<StorageFile> file = readStorageFile(writeTemporary("file", text), error);
    if (!file) {
        return error.substr(error.rfind("file:"));
    }
    std::string entries;
    for (const StorageEntry& entry : file->entries) {
        entries += entry.key + "=" + (entry.isScalar ? entry.text : "(...)") +
                   (entry.isNumber ? "#" : "") + "@" + std::to_string(entry.line) + " ";
    }
    return entries;
}

std::optional<GroundMapper::Matrix> homographyOf(const std::string& text, std::string& error)
{
    const std::optional<GroundMapper::Matrix> matrix =
        readHomography(writeTemporary("file", text), error);
    error = error.empty() ? error : error.substr(error.rfind("file:"));
    return matrix;
}

constexpr const char* kYamlMatrix = "%YAML:1.0\n---\n"
                                    "note: \"by hand\"\n"
                                    "H: !!opencv-matrix\n"
                                    "   rows: 3\n   cols: 3\n   dt: d\n"
                                    "   data: [ 0.5, 0., 1., 0., 2.5e-1, -2., 0., 0., 1. ]\n";

} // namespace

TEST(StorageFile, ReadsTheYamlForm)
{
    EXPECT_EQ(
        entriesOf(
            "%YAML:1.0\n---\n# remark\ndebug: true\nhistorySize: 12\nname: \"12\"\nheight: -1.5\n"
            "empty:\nlist: [1, 2]\npath: \"a \\\"b\\\".txt\"\n"),
        "debug=true@4 historySize=12#@5 name=12@6 height=-1.5#@7 empty=@8 list=(...)@9 path=a "
        "\"b\".txt@10 ");
    EXPECT_EQ(entriesOf("debug: 'true'\n"), "debug=true@1 ");
    EXPECT_EQ(entriesOf("{\"debug\": \"true\", \"size\": 3}"), "debug=true@1 size=3#@1 ");
}

TEST(StorageFile, ReadsTheXmlForm)
{
    EXPECT_EQ(
        entriesOf("<?xml version=\"1.0\"?>\n<opencv_storage>\n<debug>true</debug>\n<historySize> "
                  "12 </historySize>\n"
                  "<name>\"12\"</name>\n<path>\"a "
                  "b.txt\"</path>\n<map><x>1</x></map>\n<empty/>\n</opencv_storage>\n"),
        "debug=true@3 historySize=12#@4 name=12@5 path=a b.txt@6 map=(...)@7 empty=@8 ");
}

TEST(StorageFile, SaysWhereAFileIsWrong)
{
    EXPECT_EQ(entriesOf("debug: [1\nx: 2\n").substr(0, 7), "file:2:");
    EXPECT_EQ(entriesOf("- 1\n- 2\n"), "file:1:1: names with values are expected");
    EXPECT_EQ(entriesOf(""), "file:1:1: names with values are expected");
    EXPECT_EQ(entriesOf("<opencv_storage><a></b></opencv_storage>").substr(0, 7), "file:1:");
    EXPECT_EQ(entriesOf("<x/>").substr(0, 7), "file:1:");
    EXPECT_EQ(
        entriesOf(std::string(2'000'000, 'x')), "file: the file is longer than 1048576 bytes");
    std::string error;
    EXPECT_FALSE(readStorageFile(temporaryFile("none"), error));
    EXPECT_EQ(error, temporaryFile("none") + ": No such file or directory");
    // A pipe is not waited for.
    for (const std::string& name : {testing::TempDir(), std::string("/dev/zero")}) {
        EXPECT_FALSE(readStorageFile(name, error));
        EXPECT_EQ(error, name + ": it is no ordinary file");
    }
}

TEST(StorageFile, RefusesATagWithTooManyAttributes)
{
    std::string text = "<?xml version=\"1.0\"?>\n<opencv_storage>\n<debug";
    for (int i = 0; i < 90'000; ++i) {
        text += fmt::format(" a{}=''", i);
    }
    EXPECT_EQ(entriesOf(text + "/></opencv_storage>"), "file:3: a tag has more than 64 attributes");
}

TEST(StorageFile, RefusesDeepNesting)
{
    EXPECT_EQ(entriesOf(std::string(100'000, '[')).substr(0, 5), "file:");
    EXPECT_EQ(entriesOf("a: " + std::string(100'000, '{')).substr(0, 5), "file:");
}

TEST(Homography, ReadsTheYamlForm)
{
    std::string error;
    const std::optional<GroundMapper::Matrix> matrix = homographyOf(kYamlMatrix, error);
    ASSERT_TRUE(matrix) << error;
    EXPECT_EQ(*matrix, (GroundMapper::Matrix{0.5, 0.0, 1.0, 0.0, 0.25, -2.0, 0.0, 0.0, 1.0}));
}

TEST(Homography, ReadsTheXmlForm)
{
    std::string error;
    const std::optional<GroundMapper::Matrix> matrix = homographyOf(
        "<?xml version=\"1.0\"?>\n<opencv_storage>\n<H type_id=\"opencv-matrix\">\n"
        "  <rows>3</rows>\n  <cols>3</cols>\n  <dt>d</dt>\n"
        "  <data>\n    5.0000000000000000e-01 0. 1.\n 0. 0.25 -2. 0. 0. "
        "1.</data></H>\n</opencv_storage>\n",
        error);
    ASSERT_TRUE(matrix) << error;
    EXPECT_EQ(*matrix, (GroundMapper::Matrix{0.5, 0.0, 1.0, 0.0, 0.25, -2.0, 0.0, 0.0, 1.0}));
}

TEST(Homography, SaysWhyThereIsNone)
{
    std::string error;
    EXPECT_FALSE(homographyOf("a: 1\n", error));
    EXPECT_EQ(error, "file: there is no matrix of 3 rows and 3 columns in it");
    error.clear();
    EXPECT_FALSE(homographyOf(
        "%YAML:1.0\n---\nH: !!opencv-matrix\n   rows: 2\n   cols: 3\n   dt: d\n   data: "
        "[1,2,3,4,5,6]\n",
        error));
    EXPECT_EQ(error, "file: there is no matrix of 3 rows and 3 columns in it");
    for (const char* data :
         {"[1,2,3,2,4,6,0,0,1]", "[1,0,0,0,x,0,0,0,1]", "[.Inf,0,0,0,1,0,0,0,1]"}) {
        error.clear();
        EXPECT_FALSE(homographyOf(
            std::string(
                "%YAML:1.0\n---\nH: !!opencv-matrix\n   rows: 3\n   cols: 3\n   dt: d\n   data: ") +
                data + "\n",
            error));
        EXPECT_EQ(error, "file: the matrix \"H\" does not map the image to the ground") << data;
    }
}

} // namespace scenariomatch
