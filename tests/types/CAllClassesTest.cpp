#include "types/CAllClasses.h"

#include "CapturedStream.h"
#include "TemporaryFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace scenariomatch
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<CClass> typesOf(const std::string& bytes)
{
    const TemporaryFile file(bytes);
    CAllClasses types;
    types.read(file.path());
    return types.m_classes;
}

std::vector<std::string> namesOf(const std::string& bytes)
{
    const std::vector<CClass> types = typesOf(bytes);
    std::vector<std::string> names;
    std::transform(types.begin(), types.end(), std::back_inserter(names), [](const CClass& type) {
        return type.m_name;
    });
    return names;
}

TEST(CAllClasses, ReadsTheBlocksOfAFileInOrder)
{
    CAllClasses types;
    types.read(SCENARIOMATCH_TEST_DATA "/types/traffic.types");
    ASSERT_EQ(types.m_classes.size(), 3U);
    EXPECT_EQ(types.m_classes[0].m_name, "Mobile");
    EXPECT_EQ(types.m_classes[0].m_parent, "Agent");
    EXPECT_THAT(types.m_classes[0].m_attributeTypes, ElementsAre("2DDPOINT", "DOUBLE"));
    EXPECT_THAT(types.m_classes[0].m_attributeNames, ElementsAre("Position", "Speed"));
    EXPECT_EQ(types.m_classes[1].m_name, "Vehicle");
    EXPECT_EQ(types.m_classes[1].m_parent, "Mobile");
    EXPECT_THAT(types.m_classes[1].m_attributeTypes, ElementsAre("STRING"));
    EXPECT_THAT(types.m_classes[1].m_attributeNames, ElementsAre("Kind"));
    EXPECT_EQ(types.m_classes[2].m_name, "Zone");
    EXPECT_TRUE(types.m_classes[2].m_constant);
    EXPECT_THAT(types.m_classes[2].m_attributeNames, IsEmpty());
}

TEST(CAllClasses, AppendsToWhatAnEarlierFileGave)
{
    CAllClasses types;
    types.read(SCENARIOMATCH_TEST_DATA "/types/traffic.types");
    types.read(SCENARIOMATCH_TEST_DATA "/types/ancestors-first.types");
    ASSERT_EQ(types.m_classes.size(), 6U);
    EXPECT_EQ(types.m_classes[3].m_name, "A");
}

TEST(CAllClasses, ReadsNothingAndReportsNothingWithoutAFile)
{
    const TemporaryFile file("");
    const CapturedStream errors(std::cerr);
    const CapturedStream output(std::cout);
    CAllClasses types;
    types.read(file.folder() + "/no-such-file");
    EXPECT_THAT(types.m_classes, IsEmpty());
    types.read(file.folder());
    EXPECT_THAT(types.m_classes, IsEmpty());
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(output.text(), "");
}

TEST(CAllClasses, ReadsNothingFromAnEmptyFile)
{
    EXPECT_THAT(namesOf(""), IsEmpty());
    EXPECT_THAT(namesOf("\n\n"), IsEmpty());
}

TEST(CAllClasses, IgnoresLinesOutsideBlocks)
{
    EXPECT_THAT(
        namesOf("# types\nconstant true;\nclass Zone {\nconstant true;\n}\n}\nthe end\n"),
        ElementsAre("Zone"));
}

TEST(CAllClasses, StartsABlockWhereverALineSaysClass)
{
    EXPECT_THAT(namesOf("class Zone { constant true; }\n"), ElementsAre("Zone"));
    EXPECT_THAT(namesOf("  class Zone { constant true; }\n"), ElementsAre("Zone"));
    EXPECT_THAT(namesOf("// classes }\n"), ElementsAre("classes"));
}

TEST(CAllClasses, JoinsTheLinesOfABlockWithoutASeparator)
{
    const std::vector<CClass> types =
        typesOf("class Person {\nconst\nant false;\nINT \nAge;\nSTRI\nNG Name;\n}\n");
    ASSERT_EQ(types.size(), 1U);
    EXPECT_THAT(types[0].m_attributeTypes, ElementsAre("INT", "STRING"));
    EXPECT_THAT(types[0].m_attributeNames, ElementsAre("Age", "Name"));
    // No blank between the lines: the head and the name are one word.
    EXPECT_THAT(namesOf("class\nZone {\nconstant true;\n}\n"), ElementsAre(""));
}

TEST(CAllClasses, RunsToTheEndOfTheFileWithoutAClosingBrace)
{
    const std::vector<CClass> types =
        typesOf("class Person {\nconstant true;\nINT Age;\nclass Zone {\nconstant true;\n");
    ASSERT_EQ(types.size(), 1U);
    EXPECT_EQ(types[0].m_name, "Person");
    EXPECT_TRUE(types[0].m_constant);
    EXPECT_THAT(types[0].m_attributeTypes, ElementsAre("INT", "class"));
    EXPECT_THAT(types[0].m_attributeNames, ElementsAre("Age", "Zone {constant true"));
}

TEST(CAllClasses, DropsCarriageReturnsAtLineEnds)
{
    const std::vector<CClass> types =
        typesOf("class Person:Mobile {\r\nconstant true;\r\nINT Age;\r\n}\r\n");
    ASSERT_EQ(types.size(), 1U);
    EXPECT_EQ(types[0].m_parent, "Mobile");
    EXPECT_TRUE(types[0].m_constant);
    EXPECT_THAT(types[0].m_attributeTypes, ElementsAre("INT"));
    EXPECT_THAT(types[0].m_attributeNames, ElementsAre("Age"));
}

TEST(CAllClasses, ReadsALastLineWithoutALineBreak)
{
    EXPECT_THAT(namesOf("class Zone {\nconstant true;\n}"), ElementsAre("Zone"));
}

TEST(CAllClasses, KnowsTheLineWhereEachBlockBegins)
{
    const auto types = typesOf("remark\r\n\nclass A {\nconstant false;\n}\nclass B { }\n");
    ASSERT_EQ(types.size(), 2U);
    EXPECT_EQ(types[0].m_line, 3);
    EXPECT_EQ(types[1].m_line, 6);
}

TEST(CAllClasses, StartsEachBlockWithAnEmptyRecord)
{
    const std::vector<CClass> types =
        typesOf("class Zone {\nconstant true;\nINT Size;\n}\nclass Wall {\n}\n");
    ASSERT_EQ(types.size(), 2U);
    EXPECT_EQ(types[1].m_name, "Wall");
    EXPECT_FALSE(types[1].m_constant);
    EXPECT_THAT(types[1].m_attributeNames, IsEmpty());
}

} // namespace
} // namespace scenariomatch
