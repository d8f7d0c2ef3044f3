#include "app/AccessorCheck.h"

#include "types/CAllClasses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fmt/format.h>
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

// "LINE:COLUMN: reason", a line each.
std::vector<std::string> problemsOf(const std::string& text, bool areAttributesWritten = true)
{
    const lint::Source source("objects.txt", text);
    CAllClasses types;
    types.readText(text);
    std::vector<std::string> problems;
    for (const PlacedFault& fault : accessorFaults(source, types.m_classes, areAttributesWritten)) {
        const lint::Place place = fault.range.place();
        problems.push_back(fmt::format("{}:{}: {}", place.line, place.column, fault.reason));
    }
    return problems;
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
        problemsOf(
            "class A {\nconstant true;\nINT B;\n}\nclass B:A {\nconstant true;\nINT A;\n}\n"),
        IsEmpty());
    EXPECT_THAT(
        problemsOf("class B:A {\nconstant true;\n}\nclass A {\nconstant false;\n}\n"), IsEmpty());
    EXPECT_THAT(problemsOf("class a_1 {\nconstant true;\nINT h_;\nINT h_A;\n}\n"), IsEmpty());
    EXPECT_THAT(problemsOf("class address {\nconstant true;\nINT time;\nINT get;\n}\n"), IsEmpty());
}

TEST(AccessorCheck, WantsAType)
{
    EXPECT_THAT(
        problemsOf("nothing\n"),
        ElementsAre("1:1: no class is declared: expected a line such as class Person {"));
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
                "3:5: the attribute \"" + name +
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
                "3:5: the attribute \"" + name +
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
                "1:7: the type name \"" + name +
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
                "1:7: the type name \"" + name +
                "\" is no C++ identifier: expected letters, digits and underscores, beginning "
                "with a letter"));
    }
}

TEST(AccessorCheck, LooksAtAttributesOnlyWhereTheyAreWritten)
{
    const std::string text = "class Person {\nconstant false;\nINT Age ;\nCOLOUR Hair;\n}\n";
    EXPECT_THAT(
        problemsOf(text, true),
        ElementsAre(
            "3:5: the attribute \"Age \" of \"Person\" is no C++ identifier: expected letters, "
            "digits "
            "and underscores, beginning with a letter",
            "4:1: the attribute \"Hair\" of \"Person\" has the unknown type \"COLOUR\": expected a "
            "tag "
            "such as DOUBLE"));
    EXPECT_THAT(problemsOf(text, false), IsEmpty());
}

TEST(AccessorCheck, RefusesWhatTheReaderLosesWhateverIsWritten)
{
    const std::string text = "class Car {\nINT Age;\nSTRING class;\n}\n";
    for (const bool areAttributesWritten : {true, false}) {
        EXPECT_THAT(
            problemsOf(text, areAttributesWritten),
            ElementsAre("2:1: the first statement says whether the type is constant: expected "
                        "constant true; or constant false;"));
    }
}

TEST(AccessorCheck, WantsEveryLineOfParentsToEndAtAgent)
{
    EXPECT_THAT(
        problemsOf("class A: {\nconstant false;\n}\nclass B:Nobody {\nconstant false;\n}\n"
                   "class C:C {\nconstant false;\n}\n"),
        ElementsAre(
            "1:9: the parent of A has no name: "
            "expected a line of declared parents that ends at Agent",
            "4:9: the parent Nobody of B is not declared: "
            "expected a line of declared parents that ends at Agent",
            "7:9: C derives from itself: C -> C: "
            "expected a line of declared parents that ends at Agent"));
}

} // namespace scenariomatch
