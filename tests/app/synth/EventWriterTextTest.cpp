#include "app/EventWriterText.h"

#include "tests/app/synth/EventExample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace scenariomatch
{

namespace
{

std::string written(const std::vector<ReportedEvent>& events)
{
    std::ostringstream out;
    EventWriterText writer(out);
    for (const ReportedEvent& event : events) {
        writer.write(event);
    }
    writer.finish();
    return out.str();
}

} // namespace

TEST(EventWriterText, AlignsTheColumns)
{
    ReportedEvent other = exampleEvent();
    other.name = "Alone";
    other.objects = {{"p", "PERSON", 5, ""}};
    other.text.clear();
    other.duration = 0.0;
    other.confidence = 1.0;
    EXPECT_EQ(
        written({exampleEvent(), other}),
        "who                  what   from                     to                       duration  "
        "confidence  alarm\n"
        "PERSON 17, Entrance  Meet   2026-05-04 10:00:06.160  2026-05-04 10:00:48.200   42.04 s  "
        "      0.10  URGENT: two people meet\n"
        "PERSON 5             Alone  2026-05-04 10:00:06.160  2026-05-04 10:00:48.200    0.00 s  "
        "      1.00  URGENT\n");
}

TEST(EventWriterText, CountsCharactersAndNotBytes)
{
    ReportedEvent first = exampleEvent();
    first.name = "Über";
    ReportedEvent second = exampleEvent();
    second.name = "Over";
    const std::string text = written({first, second});
    EXPECT_THAT(text, testing::HasSubstr("  Über  2026"));
    EXPECT_THAT(text, testing::HasSubstr("  Over  2026"));
}

TEST(EventWriterText, ShowsControlCharactersAsQuestionMarks)
{
    ReportedEvent event = exampleEvent();
    event.name = "a\nb\x1b[31m\x7f";
    EXPECT_THAT(written({event}), testing::HasSubstr("  a?b?[31m?  "));
}

TEST(EventWriterText, SaysThatThereAreNoEvents)
{
    EXPECT_EQ(written({}), "no events\n");
}

TEST(EventWriterText, ShowsAnEventWithoutObjects)
{
    ReportedEvent event = exampleEvent();
    event.objects.clear();
    EXPECT_THAT(written({event}), testing::HasSubstr("\n-    Meet  "));
}

TEST(EventWriterText, WritesManyEventsInBlocksWithAHeaderEach)
{
    const std::vector<ReportedEvent> events(1001, exampleEvent());
    const std::string text = written(events);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1001 + 2);
    std::ostringstream out;
    EventWriterText writer(out);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(out.str(), "");
        writer.write(exampleEvent());
    }
    EXPECT_NE(out.str(), "");
}

} // namespace scenariomatch
