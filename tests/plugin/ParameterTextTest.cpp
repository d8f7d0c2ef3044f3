#include "plugin/ParameterText.h"

#include "plugin/ParameterFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

const std::string kYaml = "%YAML:1.0\n---\n";
const std::string kXml = "<?xml version=\"1.0\"?>\n";

std::string faultOf(const std::string& text)
{
    return findParameterFault(text).value_or("");
}

std::string repeated(const std::string& text, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

std::string temporaryFile(const std::string& name)
{
    return testing::TempDir() + std::to_string(getpid()) + name;
}

// The fault that a file of this text has for the process; "open" when it has none.
std::string fileFault(const std::string& text)
{
    const std::string name = temporaryFile("parameters.yml");
    std::ofstream(name, std::ios::binary) << text;
    const ParameterFile file(name);
    std::filesystem::remove(name);
    return file.isOpen() ? "open" : file.fault();
}

} // namespace

TEST(ParameterText, PassesWhatIsWrittenByHand)
{
    for (const std::string& text :
         {kYaml + "debug: \"true\" # as [ and { are words here\nhistorySize: 25\n",
          std::string(
              "%YAML 1.0\r\n---\r\ndebug: 'don''t ]'\r\nlist: [ 1, \"a\\\"]\", { x: 1 } ]\r\n"),
          kYaml + "H: !!opencv-matrix\n   rows: 1\n   cols: 1\n   dt: d\n   data: [ -1.,\n     2. "
                  "]\n...\n",
          kYaml + "list:\n   - 1\n   - { a: 1 }\nmap:\n   inner:\n      deep: 1\n",
          std::string("\xEF\xBB\xBF{ \"debug\": \"/tmp/[\", \"list\": [ 1, { \"x\": 1 } ] }\n"),
          kXml + "<opencv_storage><!-- <a = = --><debug>\"true\"</debug></opencv_storage>\n"}) {
        EXPECT_EQ(faultOf(text), "") << text;
        EXPECT_EQ(fileFault(text), "open") << text;
    }
}

TEST(ParameterText, RefusesDeepNestingHoweverItIsWritten)
{
    std::string indented;
    for (int i = 0; i < 100; ++i) {
        indented += std::string(static_cast<std::size_t>(i), ' ') + "a:\n";
    }
    EXPECT_EQ(faultOf(kYaml + "a: " + repeated("[", 100)), "line 3: nested more than 64 deep");
    EXPECT_EQ(
        faultOf(kYaml + "a: [\n" + repeated("{a:\n", 100)), "line 65: nested more than 64 deep");
    EXPECT_EQ(faultOf(kYaml + repeated("- ", 100) + "1"), "line 3: nested more than 64 deep");
    EXPECT_EQ(faultOf(kYaml + repeated("a: ", 100) + "1"), "line 3: nested more than 64 deep");
    EXPECT_EQ(faultOf(kYaml + indented), "line 67: nested more than 64 deep");
    EXPECT_EQ(faultOf(repeated("{\"a\":", 100)), "line 1: nested more than 64 deep");
    EXPECT_EQ(faultOf(kXml + repeated("<a>", 100)), "line 2: nested more than 64 deep");
}

TEST(ParameterText, SeesNestingBehindWhatLooksLikeItsEnd)
{
    const std::string deep = repeated("[", 32);
    for (const char* lure :
         {"'a'']]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]',",
          R"("a\"]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]",)",
          "1,# ]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]\n",
          "x', "}) {
        std::string text = kYaml + "a: ";
        text.append(deep).append(lure).append(deep).append(deep).append("'");
        EXPECT_NE(faultOf(text).find("nested more than 64 deep"), std::string::npos) << lure;
    }
    EXPECT_EQ(faultOf(kYaml + "a: [ 1\r]]]"), "it has control characters");
    EXPECT_EQ(faultOf("{ \"a\": 1 /* ]]] */ }"), "a remark is not expected in JSON");
}

TEST(ParameterText, RefusesWhatNeverEndsOrEndsTheProcess)
{
    EXPECT_EQ(
        faultOf("%YAML:1.\n- 1\n...-\n "), "line 3: nothing is expected behind \"---\" or \"...\"");
    EXPECT_EQ(faultOf(kYaml + "...\n---\na: 1\n"), "line 3: nothing is expected behind the end");
    EXPECT_EQ(faultOf(kYaml + "a: 1\n---\n"), "line 4: nothing is expected behind the end");
    EXPECT_EQ(faultOf(kYaml + "---\nb: 1\n"), "line 3: nothing is expected behind the end");
    EXPECT_EQ(
        faultOf("%YAML:1.0\n   a: 1\n. --\n...\n"), "line 3: nothing is expected behind the end");
    EXPECT_EQ(
        faultOf("%YAML:1.0\n--- a: 1\n"), "line 2: nothing is expected behind \"---\" or \"...\"");
    EXPECT_EQ(faultOf(kYaml + " a: 1\nb: 1\n"), "line 4: nothing is expected behind the end");
    EXPECT_EQ(faultOf(kYaml + " a{:<\n1 }\n  - 2\n"), "line 4: nothing is expected behind the end");
    EXPECT_EQ(faultOf(kYaml + "{ a: 1 }\n. --\n"), "line 4: nothing is expected behind the end");
    EXPECT_EQ(faultOf("{ \"a\": 1 }\n. --\n"), "line 2: nothing is expected behind the end");
    EXPECT_EQ(
        faultOf("%YAML:1.0-a: 1\n"), "line 1: \"%YAML:1.0\" is expected, and nothing behind it");
    EXPECT_EQ(faultOf(kYaml + "a: [ 1, 2\n"), "line 3: a list or map is not closed");
    EXPECT_EQ(faultOf(kYaml + "a: [ 1, 2\n...\n"), "line 4: a list or map is not closed");
    EXPECT_EQ(faultOf("<?xml version=?>\n<opencv_storage/>").substr(0, 7), "line 1:");
    EXPECT_EQ(faultOf(kXml + "<opencv_storage>").substr(0, 7), "line 2:");
    EXPECT_EQ(
        faultOf(kXml + "<!DOCTYPE a [<!ENTITY b \"c\">]>\n<opencv_storage/>"),
        "line 2: a document type is not expected");
    EXPECT_EQ(
        faultOf(kXml + "<opencv_storage" + repeated(" a=''", 257) + "/>"),
        "a tag has more than 256 attributes");
    EXPECT_EQ(
        faultOf(kXml + "<!-- < > --><a b='>'" + repeated(" a=''", 257) + "/>"),
        "a tag has more than 256 attributes");
    EXPECT_EQ(faultOf(kXml + "<!--" + repeated("=", 300) + "--><a b='c'/>"), "");
    EXPECT_EQ(faultOf(kYaml + "a: \x01"), "it has control characters");
    EXPECT_EQ(faultOf(std::string("%YAML\0", 6)), "it has control characters");
    EXPECT_EQ(faultOf("debug: true\n"), "it begins neither with %YAML nor with <?xml nor with {");
    EXPECT_EQ(faultOf(""), "it begins neither with %YAML nor with <?xml nor with {");
}

TEST(ParameterText, IsReadFromOrdinaryFilesOfAMebibyteAtMost)
{
    EXPECT_EQ(fileFault(kYaml + std::string(1'100'000, '\n')), "it is larger than 1048576 bytes");
    EXPECT_EQ(ParameterFile("/dev/zero").fault(), "it is no ordinary file");
    EXPECT_EQ(ParameterFile(testing::TempDir()).fault(), "it is no ordinary file");
    EXPECT_EQ(ParameterFile(temporaryFile("missing")).fault(), "");
    EXPECT_EQ(ParameterFile("").fault(), "");
    EXPECT_NE(fileFault(kYaml + "a: b: : ,\n"), "");
}

} // namespace scenariomatch
