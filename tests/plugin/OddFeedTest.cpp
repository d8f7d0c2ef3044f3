#include "engine/CSScenarioInstance.h"
#include "ProcessFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

namespace
{

using scenariomatch::DateTime;
using scenariomatch::FeedCounters;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

class OddFeed : public scenariomatch::ProcessFixture
{
protected:
    void SetUp() override
    {
        ProcessFixture::SetUp();
        if (const char* zone = std::getenv("TZ")) {
            m_zone = zone;
        }
        ASSERT_TRUE(start(
            {.models = "PrimitiveState(Present, PhysicalObjects((p : Person)))",
             .usedModels = "Present"}));
    }

    void TearDown() override
    {
        if (m_zone.empty()) {
            unsetenv("TZ");
        } else {
            setenv("TZ", m_zone.c_str(), 1);
        }
        tzset();
        ProcessFixture::TearDown();
    }

    static void setZone(const char* rule)
    {
        setenv("TZ", rule, 1);
        tzset();
    }

    void feed(
        int number,
        const DateTime& clock,
        const rhmAbstractProcessEventRecognition::Actors& actors = {})
    {
        m_process->getSynchronizer()->setFrameNumber(number);
        m_process->getSynchronizer()->setDateTime(clock);
        m_process->setActors(actors);
        testing::internal::CaptureStdout();
        EXPECT_TRUE(m_process->performEventRecognition());
        testing::internal::GetCapturedStdout();
    }

    FeedCounters counters() const { return m_process->counters().feed; }

    // Of what is recognised and alive, in list order: identifier and seconds from start to end.
    std::vector<std::pair<int, double>> durations() const
    {
        std::vector<std::pair<int, double>> all;
        for (const auto& instance : m_process->engine()->recognisedScenarios()) {
            all.emplace_back(instance->m_id, instance->m_start->duration(*instance->m_end));
        }
        return all;
    }

    bool isInOrder() const
    {
        const auto& list = m_process->engine()->recognisedScenarios();
        return std::is_sorted(list.begin(), list.end(), compare_scenario_end);
    }

private:
    std::string m_zone;
};

constexpr DateTime kMorning{.year = 2026, .month = 5, .day = 4, .hour = 10};

DateTime later(int seconds)
{
    DateTime clock = kMorning;
    clock.minute = seconds / 60;
    clock.second = seconds % 60;
    return clock;
}

} // namespace

TEST_F(OddFeed, FindsNothingOddInPlainFrames)
{
    feed(1, later(0), {person(1), actor(2, "GROUP")});
    feed(2, later(1), {person(1)});
    feed(3, later(1));
    const FeedCounters found = counters();
    EXPECT_EQ(found.actors, 3U);
    EXPECT_EQ(
        found.missingActors + found.duplicateIds + found.untracked + found.notFinite +
            found.negativeBoxes + found.unknownTypes + found.framesGoBack + found.clocksGoBack +
            found.clockJumps + found.badClocks,
        0U);
}

TEST_F(OddFeed, TakesTwoActorsOfOneIdentifierForOneWithTheLaterValues)
{
    feed(1, later(0), {person(7, 1.5F), person(8), person(7, 1.75F)});
    EXPECT_EQ(counters().duplicateIds, 1U);
    EXPECT_EQ(counters().actors, 3U);
    EXPECT_EQ(attribute(7, false, "Height"), "1.75");
    EXPECT_EQ(durations().size(), 2U);
    // A frame of the same number is another frame.
    feed(1, later(1), {person(7)});
    EXPECT_EQ(counters().duplicateIds, 1U);
}

TEST_F(OddFeed, UsesActorsOfNegativeIdentifiers)
{
    feed(1, later(0), {person(-1), person(std::numeric_limits<int>::min())});
    EXPECT_EQ(counters().untracked, 2U);
    EXPECT_EQ(durations().size(), 2U);
    EXPECT_EQ(attribute(-1, false, "ID"), "-1");
}

TEST_F(OddFeed, CountsActorsWithoutFiniteNumbersOnce)
{
    const auto nowhere = person(1);
    nowhere->setCurrentPosition({kNaN, kInfinity, 0.0F});
    feed(1, later(0), {nowhere, person(2, kNaN), person(3, -kInfinity), person(4)});
    EXPECT_EQ(counters().notFinite, 3U);
    EXPECT_EQ(durations().size(), 4U);
}

TEST_F(OddFeed, CountsBoxesOfNegativeSize)
{
    const auto thin = person(1);
    thin->setBoundingBox2D({.x = 10, .y = 20, .width = -3, .height = 4});
    const auto low = person(2);
    low->setBoundingBox2D({.x = 10, .y = 20, .width = 3, .height = -4});
    feed(1, later(0), {thin, low, person(3)});
    EXPECT_EQ(counters().negativeBoxes, 2U);
    EXPECT_EQ(attribute(1, false, "XMax"), "6");
}

TEST_F(OddFeed, CountsOtherTypesAndEmptyPlaces)
{
    feed(1, later(0), {actor(1, "person"), actor(2, ""), nullptr, person(3)});
    EXPECT_EQ(counters().unknownTypes, 2U);
    EXPECT_EQ(counters().missingActors, 1U);
    EXPECT_EQ(counters().actors, 3U);
    EXPECT_EQ(attribute(1, false, "Type"), "Mobile");
}

TEST_F(OddFeed, CountsFrameNumbersThatDoNotGrow)
{
    for (const int number : {5, 5, 4, 6}) {
        feed(number, later(0));
    }
    EXPECT_EQ(counters().framesGoBack, 2U);
}

TEST_F(OddFeed, KeepsTheOrderOfWhatIsRecognisedWhenTheClockGoesBack)
{
    feed(1, later(20), {person(1)});
    feed(2, later(10), {person(2)});
    EXPECT_EQ(counters().clocksGoBack, 1U);
    EXPECT_TRUE(isInOrder());
    EXPECT_THAT(durations(), testing::ElementsAre(testing::Pair(0, 0.0), testing::Pair(1, 0.0)));
    // What ends later than the present is extended to it and so ends before it began.
    feed(3, later(15), {person(1)});
    EXPECT_EQ(counters().clocksGoBack, 1U);
    EXPECT_TRUE(isInOrder());
    EXPECT_THAT(durations(), testing::ElementsAre(testing::Pair(0, -5.0), testing::Pair(1, 0.0)));
}

TEST_F(OddFeed, EndsWhatGoesOnWhenTheClockJumps)
{
    feed(1, later(0), {person(1)});
    DateTime evening = kMorning;
    evening.hour = 18;
    feed(2, evening, {person(1)});
    EXPECT_EQ(counters().clockJumps, 1U);
    EXPECT_THAT(durations(), testing::ElementsAre(testing::Pair(1, 0.0)));
    feed(3, later(0), {person(2)});
    EXPECT_EQ(counters().clockJumps, 1U);
    EXPECT_EQ(counters().clocksGoBack, 1U);
}

TEST_F(OddFeed, GoesOnOverMidnightAndTheEndsOfMonthsAndYears)
{
    const std::vector<std::pair<DateTime, DateTime>> nights{
        {{.year = 2026, .month = 12, .day = 31, .hour = 23, .minute = 59, .second = 59},
         {.year = 2027, .month = 1, .day = 1}},
        {{.year = 2028, .month = 2, .day = 28, .hour = 23, .minute = 59, .second = 59},
         {.year = 2028, .month = 2, .day = 29}},
        {{.year = 2028, .month = 2, .day = 29, .hour = 23, .minute = 59, .second = 59},
         {.year = 2028, .month = 3, .day = 1}},
        {{.year = 2030, .month = 2, .day = 28, .hour = 23, .minute = 59, .second = 59},
         {.year = 2030, .month = 3, .day = 1}},
        {{.year = 2100, .month = 2, .day = 28, .hour = 23, .minute = 59, .second = 59},
         {.year = 2100, .month = 3, .day = 1}}};
    int number = 0;
    int night = 0;
    for (const auto& [evening, morning] : nights) {
        feed(++number, evening, {person(1)});
        feed(++number, morning, {person(1)});
        EXPECT_THAT(durations(), testing::ElementsAre(testing::Pair(night, 1.0)));
        ++night;
    }
    EXPECT_EQ(counters().badClocks, 0U);
    EXPECT_EQ(counters().clocksGoBack, 0U);
}

TEST_F(OddFeed, CarriesDatesOverThatNoCalendarHas)
{
    feed(1, {.year = 2026, .month = 2, .day = 28, .hour = 23, .minute = 59, .second = 59});
    feed(2, {.year = 2026, .month = 2, .day = 29}, {person(1)});
    EXPECT_EQ(counters().badClocks, 1U);
    feed(3, {.year = 2026, .month = 3, .day = 1, .second = 1}, {person(1)});
    EXPECT_EQ(counters().badClocks, 1U);
    EXPECT_THAT(durations(), testing::ElementsAre(testing::Pair(0, 1.0)));
    int number = 3;
    for (const DateTime& clock :
         {DateTime{.year = 2026, .month = 13, .day = 1},
          DateTime{.year = 2026, .month = 0, .day = 1},
          DateTime{.year = 2026, .month = 4, .day = 31},
          DateTime{.year = 2100, .month = 2, .day = 29},
          DateTime{.year = 2026, .month = 4, .day = 1, .hour = 24},
          DateTime{.year = 2026, .month = 4, .day = 1, .second = 60},
          DateTime{.year = 2026, .month = 4, .day = 1, .millisecond = 1000}}) {
        feed(++number, clock);
    }
    EXPECT_EQ(counters().badClocks, 8U);
    feed(++number, {.year = 2000, .month = 2, .day = 29});
    EXPECT_EQ(counters().badClocks, 8U);
}

TEST_F(OddFeed, TakesWallClocksAsTheyStandWhenDaylightSavingChanges)
{
    setZone("CET-1CEST,M3.5.0,M10.5.0/3");
    feed(
        1,
        {.year = 2026, .month = 3, .day = 29, .hour = 1, .minute = 59, .second = 59},
        {person(1)});
    feed(2, {.year = 2026, .month = 3, .day = 29, .hour = 3}, {person(1)});
    EXPECT_EQ(counters().clockJumps, 1U);
    EXPECT_EQ(counters().clocksGoBack, 0U);
    feed(3, {.year = 2026, .month = 10, .day = 25, .hour = 2, .minute = 59, .second = 59});
    feed(4, {.year = 2026, .month = 10, .day = 25, .hour = 2}, {person(2)});
    EXPECT_EQ(counters().clocksGoBack, 1U);
    EXPECT_EQ(counters().badClocks, 0U);
    EXPECT_TRUE(isInOrder());
}

TEST_F(OddFeed, KnowsAnIdentifierAgainWhileAnEventOfItIsRemembered)
{
    feed(1, later(0), {person(1)});
    const auto first = agent(1, false);
    feed(2, later(30), {});
    feed(3, later(50), {person(1)});
    EXPECT_EQ(agent(1, false), first);
    feed(4, later(111), {});
    feed(5, later(112), {person(1)});
    EXPECT_NE(agent(1, false), nullptr);
    EXPECT_NE(agent(1, false), first);
    EXPECT_EQ(counters().duplicateIds, 0U);
}
