#include "ProcessFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <limits>
#include <string>

namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kPresent = "PrimitiveState(Present, PhysicalObjects((p : Person)))";

class ScenarioMatchProcessFrame : public scenariomatch::ProcessFixture
{
protected:
    std::string mobile(int hostId, const std::string& name) const
    {
        return attribute(hostId, false, name);
    }

    // Agents leave the table after the frame unless something recognised holds them; these stay.
    void startWithModelOf(const std::string& type)
    {
        ASSERT_TRUE(start(
            {.models = "PrimitiveState(Present, PhysicalObjects((p : " + type + ")))",
             .usedModels = "Present"}));
    }
};

} // namespace

TEST_F(ScenarioMatchProcessFrame, SetsTheEnginesTime)
{
    ASSERT_TRUE(start({}));
    m_process->getSynchronizer()->setDateTime(
        {.year = 2026,
         .month = 5,
         .day = 4,
         .hour = 10,
         .minute = 20,
         .second = 48,
         .millisecond = 160});
    m_process->getSynchronizer()->setFrameNumber(12);
    testing::internal::CaptureStdout();
    EXPECT_TRUE(m_process->performEventRecognition());
    testing::internal::GetCapturedStdout();
    const auto& time = *m_process->engine()->currentTime();
    EXPECT_EQ(time.m_frameID, 12);
    EXPECT_EQ(time.m_year, 2026);
    EXPECT_EQ(time.m_month, 5);
    EXPECT_EQ(time.m_day, 4);
    EXPECT_EQ(time.m_hour, 10);
    EXPECT_EQ(time.m_minute, 20);
    EXPECT_EQ(time.m_second, 48);
    EXPECT_EQ(time.m_millisecond, 160);
    EXPECT_EQ(CSEngine::h_currentTime.at(12).get(), &time);
}

TEST_F(ScenarioMatchProcessFrame, TellsTheSceneOnlyWithoutActors)
{
    ASSERT_TRUE(start({.models = kPresent, .usedModels = "Present"}));
    frame(1, 0.0, {});
    EXPECT_EQ(m_output, "Scene ID:0");
    EXPECT_EQ(attribute(0, true, "NumberOfActors"), "0");
    EXPECT_EQ(attribute(0, true, "Name"), "Scene0");
    EXPECT_EQ(attribute(0, true, "Type"), "Scene");
}

TEST_F(ScenarioMatchProcessFrame, TellsEveryActor)
{
    ASSERT_TRUE(start({.models = kPresent, .usedModels = "Present"}));
    frame(1, 0.0, {person(7, 1.75F), actor(8, "CAR")});
    EXPECT_EQ(
        m_output,
        "Scene ID:0\n Starting Actor handling2\n"
        "\nReached Actor/Tracked Physical Object Handling by Type"
        "Person 3D-D(W,H,D): 0.5;1.75;0.25\n"
        "\nReached Actor/Tracked Physical Object Handling by Type");
    EXPECT_EQ(attribute(0, true, "NumberOfActors"), "2");
}

TEST_F(ScenarioMatchProcessFrame, TellsMoreWithDebug)
{
    ASSERT_TRUE(
        start({.models = kPresent, .usedModels = "Present", .parameters = "debug: \"true\"\n"}));
    frame(1, 0.0, {person(7)});
    EXPECT_THAT(
        m_output,
        testing::StartsWith("_________________________________________\n"
                            "Debug mode On: Extendable TRX\nBegin Apply()\nScene ID:0\n"));
    EXPECT_THAT(m_output, HasSubstr("0 Present [1 1] [Conf:1]\n\tp 7 | \n"));
    EXPECT_THAT(
        m_output, testing::EndsWith("End Apply()\n_________________________________________\n"));
    EXPECT_THAT(m_output, Not(HasSubstr("Present 1\n")));
}

TEST_F(ScenarioMatchProcessFrame, ListsModelsThatWereRecognisedInTheFrameAlready)
{
    ASSERT_TRUE(
        start({.models = kPresent, .usedModels = "Present", .parameters = "debug: \"true\"\n"}));
    frame(1, 0.0, {person(7), person(8)});
    frame(1, 0.0, {person(7), person(8)});
    EXPECT_THAT(m_output, HasSubstr("\nPresent 2\n"));
}

TEST_F(ScenarioMatchProcessFrame, GivesActorsTheirAttributes)
{
    startWithModelOf("Person");
    auto walker = person(7, 1.75F);
    walker->setBoundingBox2D({.x = 10, .y = 20, .width = 5, .height = 4});
    walker->setCurrentPosition({.x = 1.5F, .y = -2.5F, .z = 0.25F});
    frame(3, 0.0, {walker});
    EXPECT_EQ(mobile(7, "ID"), "7");
    EXPECT_EQ(mobile(7, "Position2D"), "12 23 ");
    EXPECT_EQ(mobile(7, "XMin"), "10");
    EXPECT_EQ(mobile(7, "XMax"), "14");
    EXPECT_EQ(mobile(7, "YMin"), "20");
    EXPECT_EQ(mobile(7, "YMax"), "23");
    EXPECT_EQ(mobile(7, "Position"), "1.5 -2.5 0.25 ");
    EXPECT_EQ(mobile(7, "Width"), "0.5");
    EXPECT_EQ(mobile(7, "Height"), "1.75");
    EXPECT_EQ(mobile(7, "Depth"), "0.25");
    EXPECT_EQ(mobile(7, "Speed"), "0");
    EXPECT_EQ(mobile(7, "Type"), "Person");
    EXPECT_EQ(mobile(7, "Posture"), "104");
    EXPECT_EQ(agent(7, false)->m_frameID, 3);
    EXPECT_EQ(agent(7, false)->m_attributes.at("Height")->m_frame, 3);
    EXPECT_EQ(agent(7, false)->m_attributes.at("Speed")->m_type, "DOUBLE");
    EXPECT_EQ(agent(7, false)->m_attributes.size(), 13U);
}

TEST_F(ScenarioMatchProcessFrame, KeepsSpeedAtZeroAndEarlierValuesInTheHistory)
{
    startWithModelOf("Person");
    auto walker = person(7);
    frame(1, 0.0, {walker});
    walker->setCurrentPosition({.x = 5.0F, .y = 0.0F, .z = 0.0F});
    frame(2, 1.0, {walker});
    EXPECT_EQ(mobile(7, "Speed"), "0");
    const auto& position = agent(7, false)->m_attributes.at("Position");
    ASSERT_EQ(position->m_history.count(1), 1U);
    EXPECT_EQ(toString(position->m_history.at(1).get()), "0 0 0 ");
}

TEST_F(ScenarioMatchProcessFrame, RoundsHalfOfANegativeOddWidthTowardsZero)
{
    startWithModelOf("Person");
    auto walker = person(7);
    walker->setBoundingBox2D({.x = 10, .y = 20, .width = -3, .height = 0});
    frame(1, 0.0, {walker});
    EXPECT_EQ(mobile(7, "Position2D"), "9 19 ");
    EXPECT_EQ(mobile(7, "XMax"), "6");
}

TEST_F(ScenarioMatchProcessFrame, BearsBoxesBeyondTheWholeNumbers)
{
    startWithModelOf("Person");
    auto walker = person(7);
    const int most = std::numeric_limits<int>::max();
    walker->setBoundingBox2D({.x = most, .y = most, .width = most, .height = 2});
    frame(1, 0.0, {walker});
    EXPECT_EQ(mobile(7, "XMin"), "2147483647");
    EXPECT_EQ(mobile(7, "YMax"), "-2147483648");
}

TEST_F(ScenarioMatchProcessFrame, ClassifiesActorsByTheirExactType)
{
    ASSERT_TRUE(start({}));
    const auto isType = [this](const std::string& platformType) {
        frame(1, 0.0, {actor(7, platformType)});
        return agent(7, false)->m_type;
    };
    EXPECT_EQ(isType("PERSON"), "Person");
    EXPECT_EQ(isType("PERSON_DEFAULT"), "Person");
    EXPECT_EQ(isType("PERSON_HYBRID"), "Person");
    EXPECT_EQ(isType("GROUP"), "Group");
    EXPECT_EQ(isType("person"), "Mobile");
    EXPECT_EQ(isType("Person"), "Mobile");
    EXPECT_EQ(isType("VEHICLE"), "Mobile");
    EXPECT_EQ(isType(""), "Mobile");
}

TEST_F(ScenarioMatchProcessFrame, GivesAPostureToPersonsOnly)
{
    ASSERT_TRUE(start({}));
    frame(1, 0.0, {actor(7, "person"), actor(8, "GROUP"), person(9)});
    EXPECT_EQ(mobile(7, "Posture"), "(none)");
    EXPECT_EQ(mobile(8, "Posture"), "(none)");
    EXPECT_EQ(mobile(9, "Posture"), "104");
}

TEST_F(ScenarioMatchProcessFrame, TellsPosturesApart)
{
    EXPECT_EQ(m_process->performPostureRecognition(1.2, 0.5, 0.4), 201);
    EXPECT_EQ(m_process->performPostureRecognition(1.3, 0.5, 0.4), 201);
    EXPECT_EQ(m_process->performPostureRecognition(1.4, 0.5, 0.4), 301);
    EXPECT_EQ(m_process->performPostureRecognition(1.5, 0.5, 0.4), 104);
    EXPECT_EQ(m_process->performPostureRecognition(0.4, 0.5, 0.4), 401);
    EXPECT_EQ(m_process->performPostureRecognition(0.4, 0.4, 0.5), 401);
    EXPECT_EQ(m_process->performPostureRecognition(1.0, 1.2, 1.2), 201);
    m_process->setParamPersonSittingMax3dHeight(1.0);
    EXPECT_EQ(m_process->performPostureRecognition(1.2, 0.5, 0.4), 104);
}

TEST_F(ScenarioMatchProcessFrame, TellsPosturesWithoutASize)
{
    const double nan = std::nan("");
    EXPECT_EQ(m_process->performPostureRecognition(0.0, 0.5, 0.0), 401);
    EXPECT_EQ(m_process->performPostureRecognition(0.0, 0.0, 0.0), 201);
    EXPECT_EQ(m_process->performPostureRecognition(nan, 0.5, 0.5), 104);
    EXPECT_EQ(m_process->performPostureRecognition(1.5, nan, nan), 104);
}

TEST_F(ScenarioMatchProcessFrame, UsesTheSittingHeightOfTheParameters)
{
    ASSERT_TRUE(start({.parameters = "PersonSittingMaxHeight: 1.9\n"}));
    frame(1, 0.0, {person(7, 1.8F)});
    EXPECT_EQ(mobile(7, "Posture"), "201");
}

TEST_F(ScenarioMatchProcessFrame, RecognisesAndKeepsTheLatestFirst)
{
    ASSERT_TRUE(start(
        {.models = kPresent, .usedModels = "Present", .parameters = "constProlongation: -1\n"}));
    frame(1, 0.0, {person(7)});
    frame(2, 1.0, {person(8)});
    const auto& list = m_process->engine()->recognisedScenarios();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list.front()->m_id, 1);
    EXPECT_EQ(list.back()->m_id, 0);
}

TEST_F(ScenarioMatchProcessFrame, PassesOverAnEmptyPointerInTheActorList)
{
    startWithModelOf("Person");
    frame(1, 0.0, {QSharedPointer<rhmDataActor>(), person(7)});
    EXPECT_EQ(m_process->getCurrentFrameEvents().size(), 1);
    EXPECT_EQ(attribute(0, true, "NumberOfActors"), "2");
}

TEST_F(ScenarioMatchProcessFrame, ReadsTheDebugFlagEveryFrame)
{
    ASSERT_TRUE(start({}));
    m_process->setParamDebug(true);
    frame(1, 0.0, {});
    EXPECT_THAT(m_output, HasSubstr("Begin Apply()\n"));
    m_process->setParamDebug(false);
    frame(2, 1.0, {});
    EXPECT_EQ(m_output, "Scene ID:0");
}

TEST_F(ScenarioMatchProcessFrame, WorksWhenNobodyListens)
{
    ASSERT_TRUE(start({.models = kPresent, .usedModels = "Present"}));
    auto* listener = std::cout.rdbuf(nullptr);
    m_process->setActors({person(7)});
    EXPECT_TRUE(m_process->performEventRecognition());
    std::cout.rdbuf(listener);
    EXPECT_EQ(m_process->getCurrentFrameEvents().size(), 1);
    frame(2, 1.0, {});
    EXPECT_EQ(m_output, "Scene ID:0");
}

TEST_F(ScenarioMatchProcessFrame, LogsAThrowingOperatorOnce)
{
    ASSERT_TRUE(start(
        {.models =
             "PrimitiveState(Odd, PhysicalObjects((p : Person)) Constraints((p->Height fails 1)))",
         .usedModels = "Odd"}));
    frame(1, 0.0, {person(7)});
    frame(2, 1.0, {person(7)});
    EXPECT_THAT(m_log, testing::ElementsAre("17 Operator fails failed: no idea"));
    EXPECT_EQ(m_process->counters().operatorFailures, 2U);
    EXPECT_TRUE(m_process->getCurrentFrameEvents().isEmpty());
}
