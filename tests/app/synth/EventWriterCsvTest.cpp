#include "app/EventWriterCsv.h"

#include "tests/app/synth/EventExample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace scenariomatch
{

namespace
{

constexpr const char* kHeader =
    "id,name,kind,alarm_level,alarm,text,confidence,begin,begin_frame,end,end_frame,duration,"
    "objects,sub_events\r\n";

std::string written(const std::vector<ReportedEvent>& events)
{
    std::ostringstream out;
    EventWriterCsv writer(out);
    for (const ReportedEvent& event : events) {
        writer.write(event);
    }
    writer.finish();
    return out.str();
}

} // namespace

TEST(EventWriterCsv, WritesAHeaderAndARecordForEachEvent)
{
    const std::string record =
        "4,Meet,CompositeEvent,URGENT,2,two people meet,0.1,2026-05-04T10:00:06.160,154,"
        "2026-05-04T10:00:48.200,1205,42.04,p1=PERSON 17;z=Zone 3 Entrance,c1=2 Close\r\n";
    EXPECT_EQ(written({exampleEvent(), exampleEvent()}), kHeader + record + record);
}

TEST(EventWriterCsv, WritesTheHeaderWhenThereAreNoEvents)
{
    EXPECT_EQ(written({}), kHeader);
}

TEST(EventWriterCsv, QuotesCommasQuotesAndLineBreaks)
{
    ReportedEvent event = exampleEvent();
    event.name = "a,b";
    event.kind = "say \"hello\"";
    event.text = "two\r\nlines";
    event.alarmLevel = "line\nfeed";
    EXPECT_THAT(
        written({event}),
        testing::HasSubstr(
            "4,\"a,b\",\"say \"\"hello\"\"\",\"line\nfeed\",2,\"two\r\nlines\",0.1,"));
}

// A spreadsheet takes text that begins so for a formula.
TEST(EventWriterCsv, SaysThatTextIsNoFormula)
{
    ReportedEvent event = exampleEvent();
    event.name = "=1+1";
    event.kind = "+1";
    event.text = "-1,@b";
    event.alarmLevel = "@SUM(A1)";
    EXPECT_THAT(written({event}), testing::HasSubstr("4,'=1+1,'+1,'@SUM(A1),2,\"'-1,@b\",0.1,"));
    event.name = "\t=1+1";
    EXPECT_THAT(written({event}), testing::HasSubstr("4,'\t=1+1,"));
}

TEST(EventWriterCsv, LeavesEmptyFieldsEmpty)
{
    ReportedEvent event = exampleEvent();
    event.text.clear();
    event.objects.clear();
    event.subEvents.clear();
    const std::string text = written({event});
    EXPECT_THAT(text, testing::HasSubstr(",URGENT,2,,0.1,"));
    EXPECT_THAT(text, testing::EndsWith(",42.04,,\r\n"));
}

} // namespace scenariomatch
