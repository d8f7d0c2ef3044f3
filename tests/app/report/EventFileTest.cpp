#include "app/report/EventFile.h"

#include "app/EventWriterJsonLines.h"
#include "app/FrameClock.h"
#include "tests/app/ProgramRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace scenariomatch
{

namespace
{

ReportedEvent meeting()
{
    ReportedEvent event;
    event.id = 12;
    event.name = "Meeting";
    event.kind = "CompositeEvent";
    event.alarmLevel = "URGENT";
    event.alarm = 1;
    event.text = "Two <people> \"meet\"";
    event.confidence = 0.25;
    event.begin = {*parseClock("2026-05-04T10:00:00.040"), 1};
    event.end = {*parseClock("2026-05-04T10:00:01.080"), 27};
    event.duration = 1.04;
    event.objects = {{"p", "Person", 3, ""}, {"z", "Zone", 0, "Floor"}};
    event.subEvents = {{"c1", 11, "Near"}};
    return event;
}

std::string linesOf(const std::vector<ReportedEvent>& events)
{
    std::ostringstream text;
    EventWriterJsonLines writer(text);
    for (const ReportedEvent& event : events) {
        writer.write(event);
    }
    writer.finish();
    return text.str();
}

void expectProblem(const std::string& line, const std::string& reason)
{
    EXPECT_EQ(readEventText("\n" + line, "e.jsonl").problem, "e.jsonl:2: " + reason) << line;
}

} // namespace

TEST(EventFile, GivesBackWhatWasWritten)
{
    ReportedEvent odd = meeting();
    odd.id = -1;
    odd.subEvents.clear();
    odd.confidence = std::numeric_limits<double>::quiet_NaN();
    const std::string lines = linesOf({meeting(), odd});
    const EventReading reading = readEventText(lines, "e.jsonl");
    EXPECT_FALSE(reading.problem);
    ASSERT_EQ(reading.events.size(), 2U);
    EXPECT_TRUE(std::isnan(reading.events[1].confidence));
    EXPECT_EQ(linesOf(reading.events), lines);
}

TEST(EventFile, TakesWhatIsMissingForEmpty)
{
    const EventReading reading = readEventText(
        R"({"id":1,"name":"A","begin":"2026-05-04T10:00:00","end":"2026-05-04T10:00:01","objects":[]})",
        "e.jsonl");
    EXPECT_FALSE(reading.problem);
    ASSERT_EQ(reading.events.size(), 1U);
    EXPECT_EQ(reading.events[0].kind, "");
    EXPECT_EQ(reading.events[0].confidence, 1.0);
    EXPECT_EQ(reading.events[0].end.frame, 0);
}

TEST(EventFile, SaysWhatIsWrongWhere)
{
    expectProblem("[1]", "the line is no JSON object");
    expectProblem("{}", "there is no 'id'");
    expectProblem(R"({"id":1.5})", "'id' must be a whole number");
    expectProblem(R"({"id":1,"name":2})", "'name' must be a text");
    const std::string head = R"({"id":1,"name":"A",)";
    expectProblem(
        head + R"("begin":"soon"})", "'begin' must be a time like 2026-05-04T10:00:00.000");
    const std::string times =
        head + R"("begin":"2026-05-04T10:00:00","end":"2026-05-04T10:00:00",)";
    expectProblem(times + R"("objects":{}})", "'objects' must be a list");
    expectProblem(times + R"("objects":[3]})", "'objects' must be a list of objects");
    expectProblem(
        times + R"("objects":[],"sub_events":[3]})", "'sub_events' must be a list of objects");
    expectProblem(times + R"("objects":[],"confidence":"much"})", "'confidence' must be a number");
}

TEST(EventFile, HasSoManyEventsAndNoMore)
{
    const std::string lines = linesOf({meeting(), meeting()});
    EXPECT_FALSE(readEventText(lines, "e.jsonl", 2).problem);
    EXPECT_EQ(
        readEventText(lines, "e.jsonl", 1).problem, "e.jsonl:2: the file has more than 1 events");
}

TEST(EventFile, MustBeThere)
{
    const std::string path = temporary("nowhere");
    EXPECT_EQ(readEventFile(path).problem, path + ": No such file or directory");
}

} // namespace scenariomatch
