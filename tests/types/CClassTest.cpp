#include "types/CClass.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace scenariomatch
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

CClass typeOf(const std::string& text)
{
    CClass type;
    type.read(text);
    return type;
}

TEST(CClass, IsEmptyByDefault)
{
    const CClass type;
    EXPECT_EQ(type.m_name, "");
    EXPECT_EQ(type.m_parent, "");
    EXPECT_THAT(type.m_attributeNames, IsEmpty());
    EXPECT_THAT(type.m_attributeTypes, IsEmpty());
    EXPECT_FALSE(type.m_constant);
}

TEST(CClass, ReadsNameParentFlagAndAttributes)
{
    const CClass type =
        typeOf("class Vehicle:Mobile {constant false;STRING Kind;2DDPOINT Position;}");
    EXPECT_EQ(type.m_name, "Vehicle");
    EXPECT_EQ(type.m_parent, "Mobile");
    EXPECT_FALSE(type.m_constant);
    EXPECT_THAT(type.m_attributeTypes, ElementsAre("STRING", "2DDPOINT"));
    EXPECT_THAT(type.m_attributeNames, ElementsAre("Kind", "Position"));
}

TEST(CClass, DerivesFromAgentWhenNoParentIsGiven)
{
    const CClass type = typeOf("class Zone {constant true;}");
    EXPECT_EQ(type.m_name, "Zone");
    EXPECT_EQ(type.m_parent, "Agent");
    EXPECT_TRUE(type.m_constant);
    EXPECT_THAT(type.m_attributeNames, IsEmpty());
}

TEST(CClass, DropsLeadingBlanksAndTheFirstWordWhateverItIs)
{
    EXPECT_EQ(typeOf("   class Zone {constant true;}").m_name, "Zone");
    EXPECT_EQ(typeOf("subclass Zone {constant true;}").m_name, "Zone");
}

TEST(CClass, HasAnEmptyNameAfterTwoBlanks)
{
    const CClass type = typeOf("class  Zone {constant true;}");
    EXPECT_EQ(type.m_name, "");
    EXPECT_EQ(type.m_parent, "Agent");
    EXPECT_TRUE(type.m_constant);
}

TEST(CClass, CutsTheHeadAtItsFirstBlank)
{
    const CClass blanks = typeOf("class Car : Vehicle {constant false;}");
    EXPECT_EQ(blanks.m_name, "Car");
    EXPECT_EQ(blanks.m_parent, "Agent");
    EXPECT_EQ(typeOf("class Car:Vehicle and more {constant true;}").m_parent, "Vehicle");
    EXPECT_EQ(typeOf("class Car{constant true;}").m_name, "Car");
    EXPECT_EQ(typeOf("class Car: Vehicle {constant true;}").m_parent, "");
}

TEST(CClass, SplitsTheHeadAtItsFirstColon)
{
    const CClass type = typeOf("class A:B:C {constant true;}");
    EXPECT_EQ(type.m_name, "A");
    EXPECT_EQ(type.m_parent, "B:C");
}

TEST(CClass, IsConstantOnlyWhenTheFlagSaysTrue)
{
    EXPECT_TRUE(typeOf("class Zone {constant true;}").m_constant);
    EXPECT_TRUE(typeOf("class Zone {  constant   true;}").m_constant);
    EXPECT_TRUE(typeOf("class Zone {fixed true;}").m_constant);
    EXPECT_FALSE(typeOf("class Zone {constant false;}").m_constant);
    EXPECT_FALSE(typeOf("class Zone {constant True;}").m_constant);
    EXPECT_FALSE(typeOf("class Zone {constant true ;}").m_constant);
    EXPECT_FALSE(typeOf("class Zone {constant 1;}").m_constant);
}

TEST(CClass, LosesAFirstAttributeToTheFlag)
{
    const CClass type = typeOf("class Person {INT Age;STRING Name;}");
    EXPECT_FALSE(type.m_constant);
    EXPECT_THAT(type.m_attributeTypes, ElementsAre("STRING"));
    EXPECT_THAT(type.m_attributeNames, ElementsAre("Name"));
}

TEST(CClass, KeepsBlanksBeforeTheSemicolonInTheName)
{
    const CClass type = typeOf("class Person {constant false;INT Age ;  STRING   Name;}");
    EXPECT_THAT(type.m_attributeTypes, ElementsAre("INT", "STRING"));
    EXPECT_THAT(type.m_attributeNames, ElementsAre("Age ", "Name"));
}

TEST(CClass, TakesATabForPartOfAWord)
{
    const CClass type = typeOf("class Person {constant false;\tINT Age;INT\tHeight Now;}");
    EXPECT_THAT(type.m_attributeTypes, ElementsAre("\tINT", "INT\tHeight"));
    EXPECT_THAT(type.m_attributeNames, ElementsAre("Age", "Now"));
}

TEST(CClass, StoresAnUnknownTagAsWritten)
{
    EXPECT_THAT(
        typeOf("class Person {constant false;COLOUR Hair;}").m_attributeTypes,
        ElementsAre("COLOUR"));
}

TEST(CClass, DropsADeclarationThatIsAClosingBrace)
{
    const CClass tag = typeOf("class Person {constant false;INT Age;} rest;");
    EXPECT_THAT(tag.m_attributeNames, ElementsAre("Age"));
    const CClass name = typeOf("class Person {constant false;INT };INT Age;}");
    EXPECT_THAT(name.m_attributeTypes, ElementsAre("INT"));
    EXPECT_THAT(name.m_attributeNames, ElementsAre("Age"));
}

TEST(CClass, EndsWhereNoSemicolonFollows)
{
    const CClass type = typeOf("class Person {constant false;INT Age; }");
    EXPECT_THAT(type.m_attributeNames, ElementsAre("Age"));
    EXPECT_THAT(
        typeOf("class Person {constant false;INT Age;INT Height}").m_attributeNames,
        ElementsAre("Age"));
}

TEST(CClass, ReadsAMalformedBlockWithoutFailing)
{
    const CClass nothing = typeOf("");
    EXPECT_EQ(nothing.m_name, "");
    EXPECT_EQ(nothing.m_parent, "Agent");

    const CClass keyword = typeOf("class");
    EXPECT_EQ(keyword.m_name, "");
    EXPECT_FALSE(keyword.m_constant);

    const CClass noBody = typeOf("class Zone");
    EXPECT_EQ(noBody.m_name, "Zone");
    EXPECT_FALSE(noBody.m_constant);
    EXPECT_THAT(noBody.m_attributeNames, IsEmpty());

    const CClass noFlag = typeOf("class Zone {}");
    EXPECT_EQ(noFlag.m_name, "Zone");
    EXPECT_FALSE(noFlag.m_constant);

    const CClass noName = typeOf("class Zone {constant true;INT;}");
    EXPECT_THAT(noName.m_attributeTypes, ElementsAre("INT;}"));
    EXPECT_THAT(noName.m_attributeNames, ElementsAre(""));

    const CClass noTag = typeOf("class Zone {constant true;;;}");
    EXPECT_THAT(noTag.m_attributeTypes, ElementsAre(";;}"));
    EXPECT_THAT(noTag.m_attributeNames, ElementsAre(""));
}

TEST(CClass, IsEmptyAfterClear)
{
    CClass type = typeOf("class Zone:Place {constant true;INT Age;}");
    type.clear();
    EXPECT_EQ(type.m_name, "");
    EXPECT_EQ(type.m_parent, "");
    EXPECT_THAT(type.m_attributeNames, IsEmpty());
    EXPECT_THAT(type.m_attributeTypes, IsEmpty());
    EXPECT_FALSE(type.m_constant);
}

} // namespace
} // namespace scenariomatch
