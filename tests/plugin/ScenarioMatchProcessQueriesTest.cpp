#include "engine/RecognitionObserver.h"
#include "ProcessFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kSeen = "PrimitiveState(Seen, PhysicalObjects((p : Person)))\n";
constexpr const char* kZone =
    "<Element kind='zone' name='Entrance' shape='polygon'>"
    "<Vertex x='0' y='0'/><Vertex x='1' y='0'/><Vertex x='0' y='1'/></Element>";
constexpr const char* kVisit =
    "PrimitiveState(Inside, PhysicalObjects((p : Person)(z : Zone)) Alarm((Level : URGENT)))\n"
    "CompositeEvent(Visit, PhysicalObjects((p : Person)(z : Zone))"
    " Components((c : PrimitiveState Inside(p, z)))"
    " Alarm((Level : VERYURGENT)(Text : Somebody came in)))\n";

class ScenarioMatchProcessQueries : public scenariomatch::ProcessFixture
{
protected:
    std::vector<std::string> currentNames() const
    {
        return names(m_process->getCurrentFrameEvents());
    }

    static std::vector<std::string> names(const rhmAbstractProcessEventRecognition::Events& events)
    {
        std::vector<std::string> result;
        for (const auto& event : events) {
            result.push_back(event->getTRXName());
        }
        return result;
    }

    // One line per event of the view.
    std::vector<std::string> viewed() const
    {
        std::vector<std::string> lines;
        m_process->visitEvents([&](const scenariomatch::RecognisedEvent& event) {
            std::string line = std::to_string(event.id) + (event.isNew ? " new " : " old ");
            line += std::string(event.name) + " " + std::string(event.kind);
            for (const auto& object : event.objects) {
                line += " [" + std::string(object.variable) + " " + std::string(object.type) + " " +
                        std::to_string(object.id) + " " + std::string(object.name) + "]";
            }
            for (const auto& part : event.parts) {
                line += " (" + std::string(part.variable) + " " + std::to_string(part.id) + " " +
                        std::string(part.name) + ")";
            }
            lines.push_back(line);
        });
        return lines;
    }
};

class CountingObserver : public scenariomatch::RecognitionObserver
{
public:
    void instanceNew(const CSScenarioInstance& /*instance*/) override { ++m_new; }

    int m_new = 0;
};

} // namespace

TEST_F(ScenarioMatchProcessQueries, AreEmptyBeforeTheFirstFrame)
{
    EXPECT_TRUE(m_process->getCurrentFrameEvents().isEmpty());
    EXPECT_TRUE(m_process->getAllFramesEvents().isEmpty());
    EXPECT_EQ(m_process->generateEventListStreamToNotify(), "");
    EXPECT_EQ(m_process->generateEventListStorageStream(), "");
    EXPECT_THAT(viewed(), IsEmpty());
    EXPECT_EQ(m_process->counters().models, 0U);
}

TEST_F(ScenarioMatchProcessQueries, AreEmptyInAFrameInWhichNothingEnded)
{
    m_process->setParamEvensToNotify("Seen");
    ASSERT_TRUE(start({.models = kSeen, .usedModels = "Seen"}));
    frame(1, 0.0, {person(7)});
    EXPECT_THAT(currentNames(), ElementsAre("Seen"));
    frame(2, 1.0, {});
    EXPECT_TRUE(m_process->getCurrentFrameEvents().isEmpty());
    EXPECT_EQ(m_process->generateEventListStreamToNotify(), "");
    EXPECT_THAT(viewed(), IsEmpty());
    EXPECT_THAT(names(m_process->getAllFramesEvents()), ElementsAre("Seen"));
}

TEST_F(ScenarioMatchProcessQueries, GiveRecordsOfTheFramesEvents)
{
    m_process->setParamBayesianRatio(2.0);
    ASSERT_TRUE(start({.models = kVisit, .usedModels = "Inside,Visit", .context = kZone}));
    frame(10, 0.0, {person(7)});
    frame(12, 1.25, {person(7)});
    const auto events = m_process->getCurrentFrameEvents();
    ASSERT_EQ(events.size(), 2);
    const rhmDataEvent& inside = *events[0];
    EXPECT_EQ(inside.getTRXId(), 0U);
    EXPECT_EQ(inside.getTRXName(), "Inside");
    EXPECT_EQ(inside.getTRXType(), "PrimitiveState");
    EXPECT_EQ(inside.getTRXAlarmLevel(), "URGENT");
    EXPECT_EQ(inside.getTRXConfidence(), 0.5);
    EXPECT_EQ(inside.getTRXBegin().getFrameNumber(), 10);
    EXPECT_EQ(inside.getTRXBegin().getYear(), 2026);
    EXPECT_EQ(inside.getTRXBegin().getMonth(), 5);
    EXPECT_EQ(inside.getTRXBegin().getDay(), 4);
    EXPECT_EQ(inside.getTRXBegin().getHour(), 10);
    EXPECT_EQ(inside.getTRXBegin().getMinute(), 0);
    EXPECT_EQ(inside.getTRXBegin().getSecond(), 0);
    EXPECT_EQ(inside.getTRXEnd().getFrameNumber(), 12);
    EXPECT_EQ(inside.getTRXEnd().getSecond(), 1);
    EXPECT_EQ(inside.getTRXEnd().getMillisecond(), 250);
    EXPECT_EQ(inside.getTRXDuration(), 1.25);
    EXPECT_EQ(inside.getTRXLatency(), 0.0);
    EXPECT_THAT(inside.getInvolvedActorIds(), ElementsAre(7));
    EXPECT_EQ(events[1]->getTRXName(), "Visit");
    EXPECT_EQ(events[1]->getTRXType(), "CompositeEvent");
    EXPECT_EQ(events[1]->getTRXConfidence(), 0.25);
}

TEST_F(ScenarioMatchProcessQueries, NameEveryPersonInvolved)
{
    ASSERT_TRUE(start(
        {.models = "PrimitiveState(Two, PhysicalObjects((a : Person)(b : Person)))",
         .usedModels = "Two"}));
    frame(1, 0.0, {person(7), person(4)});
    const auto events = m_process->getCurrentFrameEvents();
    ASSERT_EQ(events.size(), 2);
    EXPECT_THAT(events[0]->getInvolvedActorIds(), ElementsAre(7, 4));
    EXPECT_THAT(events[1]->getInvolvedActorIds(), ElementsAre(4, 7));
}

TEST_F(ScenarioMatchProcessQueries, NameNobodyWhereOnlyZonesAreInvolved)
{
    ASSERT_TRUE(start(
        {.models = "PrimitiveState(Place, PhysicalObjects((z : Zone)))",
         .usedModels = "Place",
         .context = kZone}));
    frame(1, 0.0, {});
    const auto events = m_process->getCurrentFrameEvents();
    ASSERT_EQ(events.size(), 1);
    EXPECT_THAT(events[0]->getInvolvedActorIds(), ElementsAre(-1));
}

TEST_F(ScenarioMatchProcessQueries, LeaveEventsBelowTheReportLevelOut)
{
    m_process->setParamXML3AlarmLevel("VERYURGENT");
    ASSERT_TRUE(start(
        {.models = std::string(kSeen) + kVisit,
         .usedModels = "Seen,Inside,Visit",
         .context = kZone}));
    frame(1, 0.0, {person(7)});
    EXPECT_THAT(currentNames(), ElementsAre("Visit"));
    EXPECT_THAT(names(m_process->getAllFramesEvents()), ElementsAre("Visit"));
    EXPECT_EQ(viewed().size(), 1U);
}

TEST_F(ScenarioMatchProcessQueries, GiveAllRememberedEventsLatestFirst)
{
    ASSERT_TRUE(start({.models = kSeen, .usedModels = "Seen"}));
    frame(1, 0.0, {person(7)});
    frame(2, 2.0, {person(8)});
    const auto events = m_process->getAllFramesEvents();
    ASSERT_EQ(events.size(), 2);
    EXPECT_THAT(events[0]->getInvolvedActorIds(), ElementsAre(8));
    EXPECT_THAT(events[1]->getInvolvedActorIds(), ElementsAre(7));
    EXPECT_EQ(events[1]->getTRXDuration(), 0.0);
    EXPECT_EQ(m_process->getCurrentFrameEvents().size(), 1);
}

TEST_F(ScenarioMatchProcessQueries, NotifyTheEventsThatAreNamed)
{
    ASSERT_TRUE(start(
        {.models = std::string(kSeen) + kVisit,
         .usedModels = "Seen,Inside,Visit",
         .context = kZone,
         .parameters = "EventsToNotify: \"Seen,Visit\"\n"}));
    frame(1, 0.0, {person(7)});
    frame(2, 61.05, {person(7)});
    EXPECT_EQ(
        m_process->generateEventListStreamToNotify(),
        "4,Seen,2026-5-4,10:1:1.50,2026-5-4,10:1:1.50\n"
        "5,Visit,2026-5-4,10:1:1.50,2026-5-4,10:1:1.50\n");
}

TEST_F(ScenarioMatchProcessQueries, NotifyWhateverLevelAnEventHas)
{
    m_process->setParamXML3AlarmLevel("SUPERURGENT");
    m_process->setParamEvensToNotify("Seen");
    ASSERT_TRUE(start({.models = kSeen, .usedModels = "Seen"}));
    frame(1, 0.0, {person(7)});
    EXPECT_EQ(
        m_process->generateEventListStreamToNotify(),
        "0,Seen,2026-5-4,10:0:0.0,2026-5-4,10:0:0.0\n");
}

TEST_F(ScenarioMatchProcessQueries, KeepBlanksAroundNamesToNotify)
{
    ASSERT_TRUE(start({.models = kSeen, .usedModels = "Seen"}));
    frame(1, 0.0, {person(7)});
    for (const char* names : {"Other, Seen", "", ",", "S", "Seen "}) {
        m_process->setParamEvensToNotify(names);
        EXPECT_EQ(m_process->generateEventListStreamToNotify(), "") << names;
    }
    m_process->setParamEvensToNotify(",Seen,");
    EXPECT_NE(m_process->generateEventListStreamToNotify(), "");
}

TEST_F(ScenarioMatchProcessQueries, ShowObjectsAndPartsInTheView)
{
    ASSERT_TRUE(start({.models = kVisit, .usedModels = "Inside,Visit", .context = kZone}));
    frame(1, 0.0, {person(7)});
    EXPECT_THAT(
        viewed(),
        ElementsAre(
            "0 new Inside PrimitiveState [p Person 7 ] [z Zone 0 Entrance]",
            "1 new Visit CompositeEvent [p Person 7 ] [z Zone 0 Entrance] (c 0 Inside)"));
    frame(2, 1.0, {person(7), person(8)});
    EXPECT_THAT(
        viewed(),
        ElementsAre(
            "0 old Inside PrimitiveState [p Person 7 ] [z Zone 0 Entrance]",
            "2 new Inside PrimitiveState [p Person 8 ] [z Zone 0 Entrance]",
            "1 old Visit CompositeEvent [p Person 7 ] [z Zone 0 Entrance] (c 0 Inside)",
            "3 new Visit CompositeEvent [p Person 8 ] [z Zone 0 Entrance] (c 2 Inside)"));
}

TEST_F(ScenarioMatchProcessQueries, ShowTimesAndAlarmsInTheView)
{
    ASSERT_TRUE(start({.models = kVisit, .usedModels = "Inside,Visit", .context = kZone}));
    frame(10, 0.0, {person(7)});
    frame(12, 1.25, {person(7)});
    int seen = 0;
    m_process->visitEvents([&](const scenariomatch::RecognisedEvent& event) {
        if (event.name != "Visit") {
            return;
        }
        ++seen;
        EXPECT_EQ(event.alarmLevel, "VERYURGENT");
        EXPECT_EQ(event.alarm, 2);
        EXPECT_EQ(event.text, "Somebody came in");
        EXPECT_EQ(event.confidence, 1.0);
        EXPECT_EQ(event.begin.frame, 10);
        EXPECT_EQ(event.begin.clock.hour, 10);
        EXPECT_EQ(event.end.frame, 12);
        EXPECT_EQ(event.end.clock.millisecond, 250);
        EXPECT_EQ(event.duration, 1.25);
    });
    EXPECT_EQ(seen, 1);
}

TEST_F(ScenarioMatchProcessQueries, EnterNothingIntoAgents)
{
    ASSERT_TRUE(start({.models = kSeen, .usedModels = "Seen"}));
    frame(1, 0.0, {person(7)});
    viewed();
    m_process->generateEventListStorageStream();
    EXPECT_EQ(attribute(7, false, "Name"), "(none)");
}

TEST_F(ScenarioMatchProcessQueries, CountWhatRecognitionDid)
{
    ASSERT_TRUE(start(
        {.models = std::string(kSeen) + kVisit,
         .usedModels = "Seen,Inside,Visit",
         .context = kZone}));
    frame(1, 0.0, {person(7), person(8)});
    const auto counters = m_process->counters();
    EXPECT_EQ(counters.models, 3U);
    EXPECT_EQ(counters.liveInstances, 6U);
    EXPECT_EQ(counters.accepted, 6);
    EXPECT_GE(counters.tested, counters.accepted);
    EXPECT_EQ(counters.operatorFailures, 0U);
    frame(2, 1.0, {});
    EXPECT_EQ(m_process->counters().accepted, 0);
    EXPECT_EQ(m_process->counters().liveInstances, 6U);
}

TEST_F(ScenarioMatchProcessQueries, TellAnObserver)
{
    ASSERT_TRUE(start({.models = kSeen, .usedModels = "Seen"}));
    CountingObserver observer;
    m_process->setObserver(&observer);
    frame(1, 0.0, {person(7), person(8)});
    EXPECT_EQ(observer.m_new, 2);
    m_process->setObserver(nullptr);
    frame(2, 1.0, {person(9)});
    EXPECT_EQ(observer.m_new, 2);
}

TEST_F(ScenarioMatchProcessQueries, FindEventsOfAClockWithOddMilliseconds)
{
    ASSERT_TRUE(start({.models = kSeen, .usedModels = "Seen"}));
    const auto perform = [&](int second, int millisecond, int id) {
        m_process->getSynchronizer()->setDateTime(
            {.year = 2026,
             .month = 5,
             .day = 4,
             .hour = 10,
             .minute = 0,
             .second = second,
             .millisecond = millisecond});
        m_process->getSynchronizer()->setFrameNumber(id);
        m_process->setActors({person(id)});
        testing::internal::CaptureStdout();
        m_process->performEventRecognition();
        testing::internal::GetCapturedStdout();
    };
    // The same instant, written in two ways: both events end now.
    perform(9, 1000, 7);
    perform(10, 0, 8);
    EXPECT_EQ(m_process->getCurrentFrameEvents().size(), 2);
}
