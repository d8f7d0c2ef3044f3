#include "app/EventWriterJsonLines.h"

#include "tests/app/synth/EventExample.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

namespace scenariomatch
{

namespace
{

std::string written(const ReportedEvent& event)
{
    std::ostringstream out;
    EventWriterJsonLines writer(out);
    writer.write(event);
    writer.finish();
    return out.str();
}

} // namespace

TEST(EventWriterJsonLines, WritesOneObjectALine)
{
    EXPECT_EQ(
        written(exampleEvent()),
        R"({"id":4,"name":"Meet","kind":"CompositeEvent","alarm_level":"URGENT","alarm":2,)"
        R"("text":"two people meet","confidence":0.1,"begin":"2026-05-04T10:00:06.160",)"
        R"("begin_frame":154,"end":"2026-05-04T10:00:48.200","end_frame":1205,"duration":42.04,)"
        R"("objects":[{"variable":"p1","type":"PERSON","id":17,"name":""},)"
        R"({"variable":"z","type":"Zone","id":3,"name":"Entrance"}],)"
        R"("sub_events":[{"variable":"c1","id":2,"name":"Close"}]})"
        "\n");
}

TEST(EventWriterJsonLines, WritesEmptyListsOfAnEventWithoutParticipants)
{
    const auto json = nlohmann::json::parse(written({}));
    EXPECT_TRUE(json.at("objects").is_array());
    EXPECT_TRUE(json.at("objects").empty());
    EXPECT_TRUE(json.at("sub_events").empty());
}

TEST(EventWriterJsonLines, EscapesTextSoThatItComesBackTheSame)
{
    ReportedEvent event = exampleEvent();
    event.name = "a \"b\" \\ \n \t \x01 é";
    event.objects[1].name = "Zone \"1\"";
    const std::string line = written(event);
    const auto json = nlohmann::json::parse(line);
    EXPECT_EQ(json.at("name"), event.name);
    EXPECT_EQ(json.at("objects").at(1).at("name"), event.objects[1].name);
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
}

TEST(EventWriterJsonLines, ReplacesBytesThatAreNoUtf8)
{
    ReportedEvent event = exampleEvent();
    event.name = "a\xff"
                 "b";
    EXPECT_EQ(nlohmann::json::parse(written(event)).at("name"), "a\uFFFDb");
}

TEST(EventWriterJsonLines, WritesNullForNumbersThatAreNotFinite)
{
    ReportedEvent event = exampleEvent();
    event.confidence = std::numeric_limits<double>::quiet_NaN();
    event.duration = std::numeric_limits<double>::infinity();
    const auto json = nlohmann::json::parse(written(event));
    EXPECT_TRUE(json.at("confidence").is_null());
    EXPECT_TRUE(json.at("duration").is_null());
}

TEST(EventWriterJsonLines, RoundsDurationsToTheMillisecond)
{
    ReportedEvent event = exampleEvent();
    event.duration = 3 - 0.96;
    EXPECT_THAT(written(event), testing::HasSubstr("\"duration\":2.04,"));
}

TEST(EventWriterJsonLines, WritesNothingForNoEvents)
{
    std::ostringstream out;
    EventWriterJsonLines writer(out);
    writer.finish();
    EXPECT_EQ(out.str(), "");
}

} // namespace scenariomatch
