#include "types/CSAgent.h"

#include "CapturedStream.h"
#include "TemporaryFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// The catalogue and the history size are one for the process: each test starts from empty ones.
class CSAgentTest : public testing::Test
{
protected:
    void SetUp() override { reset(); }

    void TearDown() override { reset(); }

    static void reset()
    {
        CSAgent::m_historySize = 1;
        CSAgent::m_constantObjects.clear();
        CSAgent::m_allAttributes.clear();
        CSAgent::m_allObjectTypes.clear();
    }

    static void readText(const std::string& bytes)
    {
        const TemporaryFile file(bytes);
        CSAgent::readAllObjects(file.path());
    }
};

std::shared_ptr<CSDouble> number(double value)
{
    return std::make_shared<CSDouble>(value);
}

double numberIn(const std::shared_ptr<CSBasicType>& value)
{
    const auto* typed = dynamic_cast<const CSDouble*>(value.get());
    return typed != nullptr ? typed->m_value : -1000.0;
}

std::vector<int> positionsIn(const CSBasicType& value)
{
    std::vector<int> positions;
    for (const auto& [position, earlier] : value.m_history) {
        positions.push_back(position);
    }
    return positions;
}

TEST_F(CSAgentTest, IsAMobileAgentByDefault)
{
    const CSAgent agent;
    EXPECT_EQ(agent.m_IDValue, nullptr);
    EXPECT_EQ(agent.m_className, "Agent");
    EXPECT_EQ(agent.m_type, "");
    EXPECT_EQ(agent.m_ID, 0);
    EXPECT_EQ(agent.m_frameID, 0);
    EXPECT_FALSE(agent.m_constant);
    EXPECT_THAT(agent.m_frames, IsEmpty());
    EXPECT_THAT(agent.m_attributes, IsEmpty());
    EXPECT_EQ(agent.m_confidence, 1.0);
    EXPECT_EQ(agent.m_engineID, 0);
    EXPECT_FALSE(agent.m_interested);
    EXPECT_THAT(agent.m_instances, IsEmpty());
}

TEST_F(CSAgentTest, TakesIdentityAndConstancy)
{
    const CSAgent agent(7, true);
    EXPECT_EQ(agent.m_className, "Agent");
    EXPECT_EQ(agent.m_ID, 7);
    ASSERT_NE(agent.m_IDValue, nullptr);
    EXPECT_EQ(agent.m_IDValue->m_value, 7);
    EXPECT_TRUE(agent.m_constant);
    EXPECT_EQ(agent.m_confidence, 1.0);
    EXPECT_FALSE(CSAgent(7, false).m_constant);
}

TEST_F(CSAgentTest, AsksTheCatalogueWhetherItsTypeIsConstant)
{
    CSAgent::m_constantObjects["Zone"] = true;
    CSAgent::m_constantObjects["Person"] = false;
    const CSAgent zone("Zone", 3);
    EXPECT_EQ(zone.m_className, "Zone");
    EXPECT_EQ(zone.m_ID, 3);
    ASSERT_NE(zone.m_IDValue, nullptr);
    EXPECT_EQ(zone.m_IDValue->m_value, 3);
    EXPECT_TRUE(zone.m_constant);
    EXPECT_FALSE(CSAgent("Person", 3).m_constant);
}

TEST_F(CSAgentTest, EntersAnUnknownTypeAsMobile)
{
    EXPECT_FALSE(CSAgent("Robot", 1).m_constant);
    EXPECT_THAT(CSAgent::m_constantObjects, ElementsAre(Pair("Robot", false)));
}

TEST_F(CSAgentTest, GetsNothingAndEntersTheNameOfAnUnknownAttribute)
{
    CSAgent agent;
    EXPECT_EQ(agent.get("Speed"), nullptr);
    EXPECT_THAT(agent.m_attributes, ElementsAre(Pair("Speed", nullptr)));
}

TEST_F(CSAgentTest, GetsNothingAtAPositionWithoutACurrentValue)
{
    CSAgent agent;
    EXPECT_EQ(agent.get("Speed", 3), nullptr);
    EXPECT_EQ(agent.get("Speed", 3), nullptr);
    EXPECT_THAT(agent.m_attributes, ElementsAre(Pair("Speed", nullptr)));
}

TEST_F(CSAgentTest, GetAllIsAlwaysEmpty)
{
    CSAgent agent;
    agent.set("Speed", number(1.0), 1);
    agent.set("Speed", number(2.0), 2);
    EXPECT_THAT(agent.getAll("Speed"), IsEmpty());
    EXPECT_THAT(agent.getAll("Height"), IsEmpty());
    EXPECT_EQ(agent.m_attributes.count("Height"), 0U);
}

TEST_F(CSAgentTest, MarksTheFirstValueOfAnAttributeOnly)
{
    CSAgent agent;
    const auto first = number(1.0);
    const auto second = number(2.0);
    agent.set("Speed", first, 10);
    EXPECT_EQ(agent.get("Speed"), first);
    EXPECT_TRUE(first->m_flag);
    EXPECT_EQ(first->m_frame, 10);
    EXPECT_THAT(first->m_history, IsEmpty());
    agent.set("Speed", second, 11);
    EXPECT_FALSE(second->m_flag);
    EXPECT_EQ(second->m_frame, 11);
    const auto marked = number(3.0);
    marked->m_flag = true;
    agent.set("Speed", marked, 12);
    EXPECT_TRUE(marked->m_flag);
}

TEST_F(CSAgentTest, KeepsOneEarlierValueByDefault)
{
    CSAgent agent;
    agent.set("Speed", number(1.0), 10);
    agent.set("Speed", number(2.0), 11);
    agent.set("Speed", number(3.0), 12);
    EXPECT_EQ(numberIn(agent.get("Speed")), 3.0);
    EXPECT_EQ(numberIn(agent.get("Speed", 11)), 2.0);
    EXPECT_EQ(agent.get("Speed", 10), nullptr);
}

TEST_F(CSAgentTest, KeepsAsManyEarlierValuesAsItIsTold)
{
    CSAgent::m_historySize = 3;
    CSAgent agent;
    for (int position = 1; position <= 5; ++position) {
        agent.set("Speed", number(position), position);
    }
    EXPECT_EQ(numberIn(agent.get("Speed")), 5.0);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(2, 3, 4));
    EXPECT_EQ(numberIn(agent.get("Speed", 3)), 3.0);
}

TEST_F(CSAgentTest, KeepsNoEarlierValueWhenTheSizeIsNotPositive)
{
    for (const int size : {0, -5}) {
        CSAgent::m_historySize = size;
        CSAgent agent;
        agent.set("Speed", number(1.0), 1);
        agent.set("Speed", number(2.0), 2);
        EXPECT_THAT(agent.get("Speed")->m_history, IsEmpty());
    }
}

TEST_F(CSAgentTest, DropsOneEntryPerCallWhenTheSizeShrinks)
{
    CSAgent::m_historySize = 4;
    CSAgent agent;
    for (int position = 1; position <= 5; ++position) {
        agent.set("Speed", number(position), position);
    }
    CSAgent::m_historySize = 1;
    agent.set("Speed", number(6.0), 6);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(2, 3, 4, 5));
    agent.set("Speed", number(7.0), 7);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(3, 4, 5, 6));
}

TEST_F(CSAgentTest, MovesTheHistorySoThatEarlierValuesHaveNone)
{
    CSAgent::m_historySize = 10;
    CSAgent agent;
    std::vector<std::shared_ptr<CSDouble>> values;
    for (int position = 1; position <= 4; ++position) {
        values.push_back(number(position));
        agent.set("Speed", values.back(), position);
    }
    EXPECT_THAT(
        values[3]->m_history,
        ElementsAre(Pair(1, values[0]), Pair(2, values[1]), Pair(3, values[2])));
    EXPECT_THAT(values[0]->m_history, IsEmpty());
    EXPECT_THAT(values[1]->m_history, IsEmpty());
    EXPECT_THAT(values[2]->m_history, IsEmpty());
}

TEST_F(CSAgentTest, ReplacesTheHistoryThatAValueBringsAlong)
{
    CSAgent agent;
    agent.set("Speed", number(1.0), 1);
    const auto second = number(2.0);
    second->m_history[99] = number(9.0);
    agent.set("Speed", second, 2);
    EXPECT_THAT(positionsIn(*second), ElementsAre(1));
}

TEST_F(CSAgentTest, ReplacesAValueFiledAtTheSamePosition)
{
    CSAgent::m_historySize = 10;
    CSAgent agent;
    const auto second = number(2.0);
    agent.set("Speed", number(1.0), 7);
    agent.set("Speed", second, 7);
    agent.set("Speed", number(3.0), 8);
    EXPECT_THAT(agent.get("Speed")->m_history, ElementsAre(Pair(7, second)));
}

TEST_F(CSAgentTest, DropsAValueAtOnceThatIsOlderThanAFullHistory)
{
    CSAgent::m_historySize = 2;
    CSAgent agent;
    for (const int position : {10, 11, 5, 12}) {
        agent.set("Speed", number(position), position);
    }
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(10, 11));
    EXPECT_EQ(numberIn(agent.get("Speed", 11)), 11.0);
}

TEST_F(CSAgentTest, ReplacesAValueFiledInAFullHistory)
{
    CSAgent::m_historySize = 2;
    CSAgent agent;
    for (const int position : {10, 11, 11, 12}) {
        agent.set("Speed", number(position), position);
    }
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(10, 11));
}

TEST_F(CSAgentTest, ReplaceGivesBackWhatDropsOutOfTheHistory)
{
    CSAgent agent;
    const auto first = number(1.0);
    agent.set("Speed", first, 1);
    std::shared_ptr<CSBasicType>& current = agent.m_attributes.at("Speed");
    EXPECT_EQ(CSAgent::replace(current, number(2.0), 2), nullptr);
    EXPECT_EQ(CSAgent::replace(current, number(3.0), 3), first);
    EXPECT_EQ(first.use_count(), 1);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(2));
    EXPECT_EQ(numberIn(agent.get("Speed")), 3.0);
}

TEST_F(CSAgentTest, ReplaceStartsAnewOverAnEmptyPointer)
{
    CSAgent agent;
    agent.get("Speed");
    const auto value = number(1.0);
    value->m_history[5] = number(0.5);
    EXPECT_EQ(CSAgent::replace(agent.m_attributes.at("Speed"), value, 1), nullptr);
    EXPECT_EQ(agent.get("Speed"), value);
    EXPECT_THAT(value->m_history, IsEmpty());
}

TEST_F(CSAgentTest, GetsTheCurrentValueByItsNameAloneNotByItsPosition)
{
    CSAgent agent;
    agent.set("Speed", number(1.0), 10);
    EXPECT_EQ(agent.get("Speed", 10), nullptr);
    const auto again = number(2.0);
    agent.set("Speed", again, 10);
    EXPECT_EQ(numberIn(agent.get("Speed", 10)), 1.0);
}

TEST_F(CSAgentTest, PushesTheHistoryOnForAnEqualValueToo)
{
    CSAgent::m_historySize = 10;
    CSAgent agent;
    agent.set("Speed", number(1.0), 1);
    agent.set("Speed", number(1.0), 2);
    agent.set("Speed", number(1.0), 3);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(1, 2));
}

TEST_F(CSAgentTest, AnEmptyPositionAskedForCountsTowardsTheSize)
{
    CSAgent agent;
    agent.set("Speed", number(1.0), 10);
    agent.set("Speed", number(2.0), 11);
    EXPECT_EQ(agent.get("Speed", 20), nullptr);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(10, 20));
    agent.set("Speed", number(3.0), 12);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(11, 20));
    agent.set("Speed", number(4.0), 13);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(12, 20));
    // An empty entry with the smallest position goes like any other.
    EXPECT_EQ(agent.get("Speed", 7), nullptr);
    agent.set("Speed", number(5.0), 14);
    EXPECT_THAT(positionsIn(*agent.get("Speed")), ElementsAre(12, 13, 20));
}

TEST_F(CSAgentTest, TheSameValueObjectTwiceIsFiledInItsOwnHistory)
{
    CSAgent agent;
    const auto value = number(1.0);
    agent.set("Speed", value, 1);
    agent.set("Speed", value, 2);
    EXPECT_EQ(value->m_frame, 2);
    EXPECT_THAT(value->m_history, ElementsAre(Pair(2, value)));
    value->m_history.clear();
}

TEST_F(CSAgentTest, StartsAnewOverAnEntryThatAFailedGetLeft)
{
    CSAgent agent;
    EXPECT_EQ(agent.get("Speed"), nullptr);
    const auto value = number(1.0);
    value->m_history[5] = number(0.5);
    agent.set("Speed", value, 7);
    EXPECT_EQ(agent.get("Speed"), value);
    EXPECT_EQ(value->m_frame, 7);
    EXPECT_FALSE(value->m_flag);
    EXPECT_THAT(value->m_history, IsEmpty());
    agent.set("Speed", number(2.0), 8);
    EXPECT_EQ(agent.get("Speed", 7), value);
}

TEST_F(CSAgentTest, AnEmptyValueChangesNothing)
{
    CSAgent agent;
    agent.set("Speed", nullptr, 1);
    EXPECT_THAT(agent.m_attributes, IsEmpty());
    const auto value = number(1.0);
    agent.set("Speed", value, 2);
    agent.set("Speed", nullptr, 3);
    EXPECT_EQ(agent.get("Speed"), value);
    agent.setType(nullptr, 4);
    EXPECT_EQ(agent.m_attributes.count("Type"), 0U);
    EXPECT_EQ(agent.m_type, "");
}

TEST_F(CSAgentTest, SetTypeStoresTheAttributeAndItsText)
{
    CSAgent agent;
    const auto person = std::make_shared<CSString>("Person");
    agent.setType(person, 4);
    EXPECT_EQ(agent.get("Type"), person);
    EXPECT_EQ(person->m_frame, 4);
    EXPECT_EQ(agent.m_type, "Person");
    EXPECT_EQ(agent.m_className, "Agent");
    agent.setType(std::make_shared<CSString>("Group"), 5);
    EXPECT_EQ(agent.m_type, "Group");
    EXPECT_EQ(agent.get("Type", 4), person);
}

TEST_F(CSAgentTest, SetFrameIDKeepsTheLatestFrames)
{
    CSAgent::m_historySize = 2;
    CSAgent agent;
    agent.setFrameID(5);
    agent.setFrameID(6);
    agent.setFrameID(7);
    EXPECT_EQ(agent.m_frameID, 7);
    EXPECT_THAT(agent.m_frames, ElementsAre(Pair(6, 1), Pair(7, 1)));
    agent.setFrameID(7);
    EXPECT_THAT(agent.m_frames, ElementsAre(Pair(6, 1), Pair(7, 1)));
}

TEST_F(CSAgentTest, SetFrameIDDropsTheSmallestFrameOncePerCall)
{
    CSAgent::m_historySize = 3;
    CSAgent agent;
    for (const int frame : {5, 6, 7}) {
        agent.setFrameID(frame);
    }
    CSAgent::m_historySize = 1;
    agent.setFrameID(8);
    EXPECT_THAT(agent.m_frames, ElementsAre(Pair(6, 1), Pair(7, 1), Pair(8, 1)));
    // A frame number that goes back is the smallest one and is dropped at once.
    agent.setFrameID(1);
    EXPECT_EQ(agent.m_frameID, 1);
    EXPECT_THAT(agent.m_frames, ElementsAre(Pair(6, 1), Pair(7, 1), Pair(8, 1)));
}

TEST_F(CSAgentTest, ReadAllObjectsFillsTheCatalogue)
{
    CSAgent::readAllObjects(SCENARIOMATCH_TEST_DATA "/types/traffic.types");
    EXPECT_THAT(
        CSAgent::m_constantObjects,
        ElementsAre(
            Pair("Component", false),
            Pair("Mobile", false),
            Pair("Vehicle", false),
            Pair("Zone", true)));
    EXPECT_THAT(
        CSAgent::m_allAttributes,
        ElementsAre(
            Pair("Mobile", ElementsAre(Pair("Position", "2DDPOINT"), Pair("Speed", "DOUBLE"))),
            Pair("Vehicle", ElementsAre(Pair("Kind", "STRING")))));
    EXPECT_THAT(
        CSAgent::m_allObjectTypes,
        ElementsAre(
            Pair("Mobile", ElementsAre("Mobile", "Vehicle")),
            Pair("Vehicle", ElementsAre("Vehicle")),
            Pair("Zone", ElementsAre("Zone"))));
    EXPECT_TRUE(CSAgent("Zone", 1).m_constant);
    EXPECT_FALSE(CSAgent("Component", 1).m_constant);
}

TEST_F(CSAgentTest, ReadAllObjectsListsATypeUnderAllAncestorsDeclaredBeforeIt)
{
    CSAgent::readAllObjects(SCENARIOMATCH_TEST_DATA "/types/ancestors-first.types");
    EXPECT_THAT(
        CSAgent::m_allObjectTypes,
        ElementsAre(
            Pair("A", ElementsAre("A", "B", "C")),
            Pair("B", ElementsAre("B", "C")),
            Pair("C", ElementsAre("C"))));
}

TEST_F(CSAgentTest, ReadAllObjectsSkipsAncestorsClimbedOverInOnePass)
{
    CSAgent::readAllObjects(SCENARIOMATCH_TEST_DATA "/types/descendants-first.types");
    EXPECT_THAT(
        CSAgent::m_allObjectTypes,
        ElementsAre(
            Pair("A", ElementsAre("B", "A")),
            Pair("B", ElementsAre("C", "B")),
            Pair("C", ElementsAre("C"))));
}

TEST_F(CSAgentTest, ReadAllObjectsAddsAFileToTheOneBefore)
{
    CSAgent::readAllObjects(SCENARIOMATCH_TEST_DATA "/types/traffic.types");
    readText("class Vehicle {\nconstant true;\nSTRING Kind;\nINT Wheels;\n}\n"
             "class Bus:Vehicle {\nconstant false;\n}\n");
    EXPECT_TRUE(CSAgent::m_constantObjects["Vehicle"]);
    EXPECT_THAT(
        CSAgent::m_allAttributes["Vehicle"],
        ElementsAre(Pair("Kind", "STRING"), Pair("Wheels", "INT")));
    EXPECT_THAT(CSAgent::m_allObjectTypes["Vehicle"], ElementsAre("Vehicle", "Bus"));
    EXPECT_THAT(CSAgent::m_allObjectTypes["Mobile"], ElementsAre("Mobile", "Vehicle"));
}

TEST_F(CSAgentTest, ReadAllObjectsEntersNoNameTwice)
{
    CSAgent::readAllObjects(SCENARIOMATCH_TEST_DATA "/types/ancestors-first.types");
    CSAgent::readAllObjects(SCENARIOMATCH_TEST_DATA "/types/ancestors-first.types");
    EXPECT_THAT(
        CSAgent::m_allObjectTypes,
        ElementsAre(
            Pair("A", ElementsAre("A", "B", "C")),
            Pair("B", ElementsAre("B", "C")),
            Pair("C", ElementsAre("C"))));
}

TEST_F(CSAgentTest, ReadAllObjectsTakesTheLastTagOfADoubledAttribute)
{
    readText("class Person {\nconstant false;\nINT Age;\nDOUBLE Age;\n}\n");
    EXPECT_THAT(CSAgent::m_allAttributes["Person"], ElementsAre(Pair("Age", "DOUBLE")));
}

TEST_F(CSAgentTest, ReadAllObjectsDoesNotCopyInheritedAttributes)
{
    readText("class A {\nconstant true;\nINT First;\n}\nclass B:A {\nconstant false;\n}\n");
    EXPECT_THAT(
        CSAgent::m_allAttributes, ElementsAre(Pair("A", ElementsAre(Pair("First", "INT")))));
    EXPECT_FALSE(CSAgent::m_constantObjects["B"]);
}

TEST_F(CSAgentTest, ReadAllObjectsEndsAtAnUndeclaredParent)
{
    readText("class Person:Ghost {\nconstant false;\n}\n");
    EXPECT_THAT(
        CSAgent::m_allObjectTypes,
        ElementsAre(Pair("Ghost", ElementsAre("Person")), Pair("Person", ElementsAre("Person"))));
}

TEST_F(CSAgentTest, ReadAllObjectsEndsAtACircle)
{
    readText("class A:B {\nconstant false;\n}\nclass B:A {\nconstant false;\n}\n");
    EXPECT_THAT(
        CSAgent::m_allObjectTypes,
        ElementsAre(Pair("A", ElementsAre("A", "B")), Pair("B", ElementsAre("A", "B"))));
}

TEST_F(CSAgentTest, ReadAllObjectsEndsAtACircleAboveTheType)
{
    readText("class B:C {\nconstant false;\n}\nclass C:B {\nconstant false;\n}\n"
             "class A:B {\nconstant false;\n}\n");
    EXPECT_EQ(CSAgent::m_allObjectTypes["A"], std::vector<std::string>{"A"});
    EXPECT_THAT(CSAgent::m_allObjectTypes["B"], testing::Contains("A").Times(1));
}

TEST_F(CSAgentTest, ReadAllObjectsEndsAtATypeThatIsItsOwnParent)
{
    readText("class A:A {\nconstant false;\n}\n");
    EXPECT_THAT(CSAgent::m_allObjectTypes, ElementsAre(Pair("A", ElementsAre("A"))));
}

// A pass over all types for each type would take minutes.
TEST_F(CSAgentTest, ReadAllObjectsReadsManyTypesOfOneParent)
{
    constexpr int kTypes = 100'000;
    std::string text = "class Thing {\nconstant true;\n}\n";
    for (int i = 0; i < kTypes; ++i) {
        text += "class T" + std::to_string(i) + ":Thing {\nconstant true;\n}\n";
    }
    readText(text);
    // A second time, nothing is new.
    readText(text);
    const std::vector<std::string>& things = CSAgent::m_allObjectTypes["Thing"];
    ASSERT_EQ(things.size(), kTypes + 1U);
    EXPECT_EQ(things.front(), "Thing");
    EXPECT_EQ(things[1], "T0");
    EXPECT_EQ(things.back(), "T" + std::to_string(kTypes - 1));
}

TEST_F(CSAgentTest, ReadAllObjectsReadsALongLineOfDescendants)
{
    constexpr int kTypes = 100'000;
    std::string text;
    for (int i = kTypes; i > 0; --i) {
        text += "class T" + std::to_string(i) + ":T" + std::to_string(i - 1) +
                " {\nconstant true;\n}\n";
    }
    readText(text);
    EXPECT_THAT(CSAgent::m_allObjectTypes["T1"], ElementsAre("T2", "T1"));
    // The pass leads from the last type's parent to the very top.
    EXPECT_EQ(CSAgent::m_allObjectTypes["T0"].size(), static_cast<std::size_t>(kTypes));
}

TEST_F(CSAgentTest, ReadAllObjectsClimbsByTheFirstOfTwoTypesOfOneName)
{
    readText("class A:X {\nconstant true;\n}\nclass A:Y {\nconstant true;\n}\n"
             "class X:A {\nconstant true;\n}\nclass B:A {\nconstant true;\n}\n");
    EXPECT_THAT(CSAgent::m_allObjectTypes["A"], ElementsAre("A", "X", "B"));
    EXPECT_THAT(CSAgent::m_allObjectTypes["X"], ElementsAre("A", "X"));
    EXPECT_THAT(CSAgent::m_allObjectTypes["Y"], ElementsAre("A"));
}

TEST_F(CSAgentTest, ReadAllObjectsWithoutAFileDeclaresComponentsAlone)
{
    const CapturedStream errors(std::cerr);
    const CapturedStream output(std::cout);
    const TemporaryFile file("");
    CSAgent::readAllObjects(file.folder() + "/no-such-file");
    EXPECT_THAT(CSAgent::m_constantObjects, ElementsAre(Pair("Component", false)));
    EXPECT_THAT(CSAgent::m_allObjectTypes, IsEmpty());
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(output.text(), "");
}

TEST_F(CSAgentTest, ComponentIsMobileWhateverTheFileSays)
{
    readText("class Component {\nconstant true;\n}\n");
    EXPECT_FALSE(CSAgent("Component", 1).m_constant);
}

TEST_F(CSAgentTest, PrintAllObjectsListsTypesWithAttributes)
{
    CSAgent::readAllObjects(SCENARIOMATCH_TEST_DATA "/types/traffic.types");
    readText("class Door {\nconstant true;\nINT Width;\nBOOL Open;\n}\n");
    const CapturedStream output(std::cout);
    CSAgent::printAllObjects();
    EXPECT_EQ(
        output.text(),
        "Door\n"
        "\tConstant Object\n"
        "\tAttributes\n"
        "\t\tBOOL Open\n"
        "\t\tINT Width\n"
        "\tChildren\n"
        "\t\tDoor\n"
        "Mobile\n"
        "\tMobile Object\n"
        "\tAttributes\n"
        "\t\t2DDPOINT Position\n"
        "\t\tDOUBLE Speed\n"
        "\tChildren\n"
        "\t\tMobile\n"
        "\t\tVehicle\n"
        "Vehicle\n"
        "\tMobile Object\n"
        "\tAttributes\n"
        "\t\tSTRING Kind\n"
        "\tChildren\n"
        "\t\tVehicle\n");
}

TEST_F(CSAgentTest, SharesItsValuesWithACopy)
{
    CSAgent agent("Person", 1);
    agent.set("Speed", number(1.0), 1);
    CSAgent copy(agent);
    EXPECT_EQ(copy.get("Speed"), agent.get("Speed"));
    EXPECT_EQ(copy.m_IDValue, agent.m_IDValue);
}

} // namespace
} // namespace scenariomatch
