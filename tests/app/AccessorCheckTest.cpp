#include "app/AccessorCheck.h"

#include "types/CAllClasses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> problemsOf(const std::string& text, bool areAttributesWritten = true)
{
    CAllClasses types;
    types.readText(text);
    return accessorProblems("objects.txt", types.m_classes, areAttributesWritten);
}

std::vector<std::string> problemsOfName(const std::string& name)
{
    return problemsOf("class " + name + " {\nconstant false;\n}\n");
}

std::vector<std::string> problemsOfAttribute(const std::string& name)
{
    return problemsOf("class Person {\nconstant false;\nINT " + name + ";\n}\n");
}

const std::string kAccessors = SCENARIOMATCH_TEST_DATA "/types/accessors/";

// The words of the generated files, without what stands in comments, strings and angle brackets,
// and without what is only used of another namespace or object.
std::set<std::string> wordsOfGeneratedFiles()
{
    std::set<std::string> words;
    const std::regex outside(
        R"(/\*[^*]*\*/|"[^"]*"|#include <\w+>|#(ifndef|define|endif|include)|std::\w+|(\.|->)\w+\()");
    const std::regex word(R"([A-Za-z_]\w*)");
    for (const auto& entry : std::filesystem::directory_iterator(kAccessors + "expected")) {
        std::stringstream content;
        content << std::ifstream(entry.path()).rdbuf();
        const std::string text = std::regex_replace(content.str(), outside, " ");
        for (std::sregex_iterator found(text.begin(), text.end(), word), end; found != end;
             ++found) {
            words.insert(found->str());
        }
    }
    return words;
}

} // namespace

TEST(AccessorCheck, IsContentWithWhatTheReaderIsContentWith)
{
    EXPECT_THAT(
        problemsOf("class A {\nconstant true;\nINT B;\n}\nclass B:A {\nINT A;\n}\n"), IsEmpty());
    EXPECT_THAT(problemsOf("class B:A {\nconstant true;\n}\nclass A {\n}\n"), IsEmpty());
    EXPECT_THAT(problemsOf("class a_1 {\nconstant true;\nINT h_;\nINT h_A;\n}\n"), IsEmpty());
    EXPECT_THAT(problemsOf("class address {\nconstant true;\nINT time;\nINT get;\n}\n"), IsEmpty());
}

TEST(AccessorCheck, WantsAType)
{
    EXPECT_THAT(
        problemsOf("nothing\n"),
        ElementsAre("objects.txt: no class is declared: expected a line such as class Person {"));
}

TEST(AccessorCheck, RefusesEveryNameThatTheGeneratedFilesUse)
{
    CAllClasses types;
    types.read(kAccessors + "objects.types");
    std::set<std::string> words = wordsOfGeneratedFiles();
    for (const CClass& type : types.m_classes) {
        words.erase(type.m_name);
        words.erase("add" + type.m_name);
        words.erase(type.m_name + "_H");
        for (const std::string& attribute : type.m_attributeNames) {
            words.erase(attribute);
            words.erase("h_" + attribute);
        }
    }
    // The rest is keywords and the layer's own names.
    EXPECT_GT(words.size(), 50U);
    for (const std::string& word : words) {
        EXPECT_THAT(problemsOfName(word), SizeIs(1)) << word;
    }
}

TEST(AccessorCheck, RefusesFilesOfTheLayerAndOfTheSystemAsTypes)
{
    for (const std::string name :
         {"Agent",
          "CSAllTypes",
          "CSAccessor",
          "CSObject",
          "CSObjectConversion",
          "Component",
          "time",
          "string",
          "EOF",
          "unix"}) {
        EXPECT_THAT(problemsOfName(name), SizeIs(1)) << name;
    }
}

TEST(AccessorCheck, RefusesAttributesThatTheirClassUses)
{
    for (const std::string name :
         {"std",
          "getValue",
          "setHValue",
          "i_attribute",
          "i_value",
          "i_pos",
          "m_constant",
          "Type",
          "CSInt",
          "CSBasicType",
          "Person",
          "Person_H"}) {
        EXPECT_THAT(
            problemsOfAttribute(name),
            ElementsAre(
                "objects.txt:1: the attribute \"" + name +
                "\" of \"Person\" is used by the generated code itself: expected another name"));
    }
    EXPECT_THAT(problemsOfAttribute("io_agent"), IsEmpty());
}

TEST(AccessorCheck, RefusesMacrosOfTheHeadersAsTypesAndAttributes)
{
    for (const std::string name :
         {"NULL",
          "EOF",
          "errno",
          "unix",
          "linux",
          "BUFSIZ",
          "RAND_MAX",
          "EXIT_SUCCESS",
          "LC_ALL",
          "SEEK_SET",
          "CLOCK_REALTIME",
          "TIME_UTC",
          "INT32_MAX",
          "typeof"}) {
        EXPECT_THAT(
            problemsOfAttribute(name),
            ElementsAre(
                "objects.txt:1: the attribute \"" + name +
                "\" of \"Person\" is used by the C library's headers: expected another name"));
        EXPECT_THAT(problemsOfName(name), SizeIs(1)) << name;
    }
}

TEST(AccessorCheck, RefusesNamesOfTheHeadersAsTypesAlone)
{
    for (const std::string name :
         {"FILE",
          "tm",
          "size_t",
          "int8_t",
          "dev_t",
          "timer_t",
          "pthread_t",
          "remove",
          "exit",
          "abs",
          "div",
          "select",
          "random",
          "FD_SET",
          "INT8_C",

          "uint",
          "quad_t",
          "timezone"}) {
        EXPECT_THAT(
            problemsOfName(name),
            ElementsAre(
                "objects.txt:1: the type name \"" + name +
                "\" is used by the C library's headers: expected another name"));
        EXPECT_THAT(problemsOfAttribute(name), IsEmpty()) << name;
    }
}

TEST(AccessorCheck, RefusesNamesThatWouldLeaveTheFolder)
{
    for (const std::string name : {"../Person", "/tmp/Person", "a/b", ".", ".."}) {
        EXPECT_THAT(
            problemsOfName(name),
            ElementsAre(
                "objects.txt:1: the type name \"" + name +
                "\" is no C++ identifier: expected letters, digits and underscores, beginning "
                "with a letter"));
    }
}

TEST(AccessorCheck, LooksAtAttributesOnlyWhereTheyAreWritten)
{
    const std::string text = "class Person {\nconstant false;\nINT Age ;\nCOLOUR Hair;\n}\n";
    EXPECT_THAT(problemsOf(text, true), SizeIs(2));
    EXPECT_THAT(problemsOf(text, false), IsEmpty());
}

TEST(AccessorCheck, WantsEveryLineOfParentsToEndAtAgent)
{
    EXPECT_THAT(
        problemsOf("class A: {\nconstant false;\n}\nclass B:Nobody {\n}\nclass C:C {\n}\n"),
        ElementsAre(
            "objects.txt:1: the parent of A has no name: "
            "expected a line of declared parents that ends at Agent",
            "objects.txt:4: the parent Nobody of B is not declared: "
            "expected a line of declared parents that ends at Agent",
            "objects.txt:6: C derives from itself: C -> C: "
            "expected a line of declared parents that ends at Agent"));
}

} // namespace scenariomatch
