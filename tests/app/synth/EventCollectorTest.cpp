#include "app/EventCollector.h"

#include "app/FrameClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <sstream>

namespace scenariomatch
{

namespace
{

// What a frame shows of one event.
struct Shown
{
    int id = 0;
    int beginFrame = 0;
    double confidence = 1.0;
};

class FakeView : public RecognitionView
{
public:
    void visitEvents(const EventVisitor& visit) const override
    {
        for (const Shown& shown : m_shown) {
            RecognisedEvent event;
            event.id = shown.id;
            event.name = "Meet";
            event.kind = "CompositeEvent";
            event.alarmLevel = "URGENT";
            event.alarm = 2;
            event.text = "hello";
            event.confidence = shown.confidence;
            event.begin = {shown.beginFrame, {2026, 5, 4, 10, 0, 0, shown.beginFrame}};
            event.end = {m_frame, {2026, 5, 4, 10, 0, 1, m_frame}};
            event.duration = m_frame - shown.beginFrame;
            event.objects = m_objects;
            event.parts = m_parts;
            visit(event);
        }
    }

    RecognitionCounters counters() const override { return {}; }

    int nextEventId() const override { return 0; }

    void setNextEventId(int /*id*/) override {}

    void visitModels(const ModelVisitor& /*visit*/) const override {}

    void printPlans(std::ostream& /*out*/) const override {}

    void setObserver(RecognitionObserver* /*observer*/) override {}

    void show(int frame, std::vector<Shown> shown)
    {
        m_frame = frame;
        m_shown = std::move(shown);
    }

private:
    int m_frame = 0;
    std::vector<Shown> m_shown;
    std::vector<RecognisedObject> m_objects{{"p", "Person", 3, "Anna"}};
    std::vector<RecognisedPart> m_parts{{"c1", 7, "Close"}};
};

// Remembers what it is handed.
class FakeWriter : public EventWriter
{
public:
    void write(const ReportedEvent& event) override
    {
        m_events.push_back(event);
        m_log += std::to_string(event.id) + ':' + std::to_string(event.begin.frame) + '-' +
                 std::to_string(event.end.frame) + ' ';
    }

    void finish() override { m_log += "finished"; }

    std::vector<ReportedEvent> m_events;
    // "ID:BEGIN-END " for each event.
    std::string m_log;
};

class EventCollectorTest : public testing::Test
{
protected:
    // Shows a frame whose clock is so many milliseconds after the first.
    void frame(EventCollector& collector, int milliseconds, std::vector<Shown> shown)
    {
        m_view.show(m_frame++, std::move(shown));
        collector.addFrame(
            m_view, millisecondsToClock(clockToMilliseconds({2026, 5, 4}) + milliseconds));
    }

    EventCollector whenOver(double prolongation)
    {
        return {m_writer, prolongation, EventCollector::Reporting::WhenOver};
    }

    FakeView m_view;
    FakeWriter m_writer;
    int m_frame = 0;
};

} // namespace

TEST_F(EventCollectorTest, HandsOnAnEventOnceWhenItIsOver)
{
    EventCollector collector = whenOver(1.0);
    frame(collector, 0, {{1, 0}});
    frame(collector, 40, {{1, 0}});
    frame(collector, 80, {{1, 0}});
    frame(collector, 1080, {});
    EXPECT_EQ(m_writer.m_log, "");
    frame(collector, 1081, {});
    EXPECT_EQ(m_writer.m_log, "1:0-2 ");
    frame(collector, 5000, {});
    collector.finish();
    EXPECT_EQ(m_writer.m_log, "1:0-2 finished");
}

TEST_F(EventCollectorTest, KeepsAnEventThatIsExtendedWithinTheProlongation)
{
    EventCollector collector = whenOver(1.0);
    frame(collector, 0, {{1, 0}});
    frame(collector, 900, {});
    frame(collector, 1000, {{1, 0}});
    frame(collector, 1900, {});
    EXPECT_EQ(m_writer.m_log, "");
    collector.finish();
    EXPECT_EQ(m_writer.m_log, "1:0-2 finished");
}

TEST_F(EventCollectorTest, HandsOnWhatIsOpenAtTheEndOfTheStream)
{
    EventCollector collector = whenOver(5.0);
    frame(collector, 0, {{2, 0}});
    frame(collector, 40, {{3, 1}, {1, 1}});
    collector.finish();
    EXPECT_EQ(m_writer.m_log, "2:0-0 1:1-1 3:1-1 finished");
}

TEST_F(EventCollectorTest, OrdersEventsByEndAndThenById)
{
    EventCollector collector = whenOver(1.0);
    frame(collector, 0, {{9, 0}, {2, 0}, {5, 0}});
    frame(collector, 40, {{4, 1}, {2, 0}, {8, 1}});
    frame(collector, 80, {{3, 2}});
    frame(collector, 3000, {});
    EXPECT_EQ(m_writer.m_log, "5:0-0 9:0-0 2:0-1 4:1-1 8:1-1 3:2-2 ");
}

TEST_F(EventCollectorTest, HandsOnEventsAtOnceWhenNothingIsEverExtended)
{
    EventCollector collector = whenOver(-1.0);
    frame(collector, 0, {{2, 0}, {1, 0}});
    EXPECT_EQ(m_writer.m_log, "1:0-0 2:0-0 ");
    frame(collector, 40, {{3, 1}});
    EXPECT_EQ(m_writer.m_log, "1:0-0 2:0-0 3:1-1 ");
}

TEST_F(EventCollectorTest, ReportsTheLastStandOfAnEvent)
{
    EventCollector collector = whenOver(1.0);
    frame(collector, 0, {{1, 0, 0.5}});
    frame(collector, 40, {{1, -7, 0.75}});
    collector.finish();
    ASSERT_EQ(m_writer.m_events.size(), 1U);
    const ReportedEvent& event = m_writer.m_events.front();
    EXPECT_EQ(event.id, 1);
    EXPECT_EQ(event.name, "Meet");
    EXPECT_EQ(event.kind, "CompositeEvent");
    EXPECT_EQ(event.alarmLevel, "URGENT");
    EXPECT_EQ(event.alarm, 2);
    EXPECT_EQ(event.text, "hello");
    EXPECT_EQ(event.confidence, 0.75);
    EXPECT_EQ(event.begin.frame, -7);
    EXPECT_EQ(event.end.frame, 1);
    EXPECT_EQ(printClock(event.end.clock), "2026-05-04T10:00:01.001");
    EXPECT_EQ(event.duration, 8.0);
    ASSERT_EQ(event.objects.size(), 1U);
    EXPECT_EQ(event.objects[0].variable, "p");
    EXPECT_EQ(event.objects[0].type, "Person");
    EXPECT_EQ(event.objects[0].id, 3);
    EXPECT_EQ(event.objects[0].name, "Anna");
    ASSERT_EQ(event.subEvents.size(), 1U);
    EXPECT_EQ(event.subEvents[0].variable, "c1");
    EXPECT_EQ(event.subEvents[0].id, 7);
    EXPECT_EQ(event.subEvents[0].name, "Close");
}

TEST_F(EventCollectorTest, PassesEveryFramesEventsOnAsTheyAre)
{
    EventCollector collector(m_writer, 5.0, EventCollector::Reporting::EveryFrame);
    frame(collector, 0, {{2, 0}, {1, 0}});
    EXPECT_EQ(m_writer.m_log, "2:0-0 1:0-0 ");
    frame(collector, 40, {{2, 0}});
    EXPECT_EQ(m_writer.m_log, "2:0-0 1:0-0 2:0-1 ");
    collector.finish();
    EXPECT_EQ(m_writer.m_log, "2:0-0 1:0-0 2:0-1 finished");
}

TEST_F(EventCollectorTest, BearsAClockThatStandsOrGoesBack)
{
    EventCollector collector = whenOver(1.0);
    frame(collector, 5000, {{1, 0}});
    frame(collector, 5000, {{2, 1}});
    frame(collector, 0, {{3, 2}});
    EXPECT_EQ(m_writer.m_log, "");
    collector.finish();
    EXPECT_EQ(m_writer.m_log, "3:2-2 1:0-0 2:1-1 finished");
}

TEST_F(EventCollectorTest, FinishesWithoutEvents)
{
    EventCollector collector = whenOver(1.0);
    frame(collector, 0, {});
    collector.finish();
    EXPECT_EQ(m_writer.m_log, "finished");
}

} // namespace scenariomatch
