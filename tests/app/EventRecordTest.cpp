#include "app/EventRecord.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

const std::string kEvent =
    R"({"name":"Meeting","begin":"2026-05-04T10:00:01.000","begin_frame":25,)"
    R"("end":"2026-05-04T10:00:02.000","end_frame":50,)"
    R"("objects":[{"id":7,"name":""},{"id":0,"name":"Door"}]})";

std::string labelProblem(const std::string& text)
{
    return readLabels(text, "truth").problem.value_or("");
}

std::string eventProblem(const std::string& text)
{
    return readEvents(text, "events", RecordUnit::Frame).problem.value_or("");
}

} // namespace

TEST(EventRecord, ReadsLabelsOfATable)
{
    const RecordReading reading = readLabels(
        "model,objects,begin_frame,end_frame,recording,group\r\n"
        "\n"
        "B|A,3;1;North door,10,20,hall,yes\r\n"
        "\"C, or so\",,30,30,,",
        "truth");
    EXPECT_EQ(reading.problem, std::nullopt);
    EXPECT_EQ(reading.unit, RecordUnit::Frame);
    ASSERT_EQ(reading.records.size(), 2U);
    const EventRecord& label = reading.records[0];
    EXPECT_EQ(label.models, (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(label.ids, (std::set<int>{1, 3}));
    EXPECT_EQ(label.places, std::set<std::string>{"North door"});
    EXPECT_EQ(label.begin, 10);
    EXPECT_EQ(label.end, 20);
    EXPECT_EQ(label.recording, "hall");
    EXPECT_TRUE(label.isGroup);
    EXPECT_EQ(reading.records[1].models, std::vector<std::string>{"C, or so"});
    EXPECT_FALSE(reading.records[1].isGroup);
    EXPECT_EQ(reading.records[1].length(), 1);
}

TEST(EventRecord, ReadsLabelsWithAClock)
{
    const RecordReading reading =
        readLabels("begin,end,model\n1970-01-01T00:00:01.5,1970-01-01 00:00:02,A\n", "truth");
    EXPECT_EQ(reading.unit, RecordUnit::Millisecond);
    ASSERT_EQ(reading.records.size(), 1U);
    EXPECT_EQ(reading.records[0].begin, 1500);
    EXPECT_EQ(reading.records[0].end, 2000);
}

TEST(EventRecord, ReadsEventsInTheUnitAskedFor)
{
    const RecordReading frames = readEvents(kEvent, "events", RecordUnit::Frame);
    ASSERT_EQ(frames.records.size(), 1U);
    EXPECT_EQ(frames.records[0].begin, 25);
    EXPECT_EQ(frames.records[0].end, 50);
    EXPECT_EQ(frames.records[0].ids, std::set<int>{7});
    EXPECT_EQ(frames.records[0].places, std::set<std::string>{"Door"});
    const RecordReading times = readEvents(kEvent, "events", RecordUnit::Millisecond);
    ASSERT_EQ(times.records.size(), 1U);
    EXPECT_EQ(times.records[0].length(), 1001);
    EXPECT_TRUE(readEvents("", "events", RecordUnit::Frame).records.empty());
}

TEST(EventRecord, ReadsLabelsInTheFormOfEvents)
{
    const RecordReading times = readLabels(kEvent + "\n" + kEvent, "truth");
    EXPECT_EQ(times.problem, std::nullopt);
    EXPECT_EQ(times.unit, RecordUnit::Millisecond);
    EXPECT_EQ(times.records.size(), 2U);
    const RecordReading frames = readLabels(
        R"({"name":"A|B","begin_frame":1,"end_frame":2,"objects":[],"recording":"hall","group":true})",
        "truth");
    EXPECT_EQ(frames.unit, RecordUnit::Frame);
    ASSERT_EQ(frames.records.size(), 1U);
    EXPECT_EQ(frames.records[0].models.size(), 2U);
    EXPECT_EQ(frames.records[0].recording, "hall");
    EXPECT_TRUE(frames.records[0].isGroup);
}

TEST(EventRecord, SaysWhatIsWrongWithALabel)
{
    const std::string header = "model,objects,begin_frame,end_frame,group\n";
    EXPECT_EQ(labelProblem(""), "truth:1: there are no labels, not even a header");
    EXPECT_EQ(
        labelProblem("model,start\n"),
        "truth:1: there is no column 'start'; there are recording, model, objects, begin, end, "
        "begin_frame, end_frame, group");
    EXPECT_EQ(labelProblem("model,model\n"), "truth:1: the column 'model' stands here twice");
    const std::string columns = "truth:1: the columns must be 'model' and either 'begin' and 'end' "
                                "or 'begin_frame' and 'end_frame'";
    EXPECT_EQ(labelProblem("model,begin,end_frame\n"), columns);
    EXPECT_EQ(labelProblem("begin,end\n"), columns);
    EXPECT_EQ(labelProblem("model,begin,end,begin_frame,end_frame\n"), columns);
    EXPECT_EQ(labelProblem(header + "A,1\n"), "truth:2: the row has 2 fields, not 5 as the header");
    EXPECT_EQ(labelProblem(header + "A|,1,1,2,\n"), "truth:2: the name of a model is empty");
    EXPECT_EQ(labelProblem(header + "A,1;,1,2,\n"), "truth:2: the name of an object is empty");
    EXPECT_EQ(
        labelProblem(header + "A,1,1.5,2,\n"),
        "truth:2: 'begin_frame' must be the number of a frame");
    EXPECT_EQ(
        labelProblem(header + "A,1,1,99999999999,\n"),
        "truth:2: 'end_frame' must be the number of a frame");
    EXPECT_EQ(labelProblem(header + "\nA,1,3,2,\n"), "truth:3: it ends before it begins");
    EXPECT_EQ(labelProblem(header + "A,1,1,2,maybe\n"), "truth:2: 'group' must be yes or no");
    EXPECT_EQ(labelProblem(header + "\"A,1,1,2,\n"), "truth:2: a quotation mark is not closed");
    EXPECT_EQ(
        labelProblem("model,begin,end\nA,noon,2026-05-04T10:00:00\n"),
        "truth:2: 'begin' must be a time like 2026-05-04T10:00:00.000");
    EXPECT_EQ(
        labelProblem(R"({"name":"A","begin_frame":1,"end_frame":2,"objects":[],"group":1})"),
        "truth:1: 'group' must be true or false");
}

TEST(EventRecord, SaysWhatIsWrongWithAnEvent)
{
    EXPECT_EQ(eventProblem("[]"), "events:1: the line is no JSON object");
    EXPECT_EQ(eventProblem(kEvent + "\n{\"name\""), "events:2: the line is no JSON object");
    EXPECT_EQ(eventProblem(std::string(100'000, '[')), "events:1: the line is no JSON object");
    EXPECT_EQ(eventProblem("{}"), "events:1: there is no 'name'");
    EXPECT_EQ(eventProblem(R"({"name":1})"), "events:1: 'name' must be a text");
    EXPECT_EQ(eventProblem(R"({"name":"A","objects":{}})"), "events:1: 'objects' must be a list");
    EXPECT_EQ(
        eventProblem(R"({"name":"A","objects":[{"id":"x"}]})"),
        "events:1: 'id' must be a whole number");
    EXPECT_EQ(eventProblem(R"({"name":"A","objects":[1]})"), "events:1: there is no 'id'");
    EXPECT_EQ(
        eventProblem(R"({"name":"A","objects":[],"begin_frame":1e99})"),
        "events:1: 'begin_frame' must be a whole number");
    EXPECT_EQ(
        eventProblem(R"({"name":"A","objects":[],"begin_frame":18446744073709551615})"),
        "events:1: 'begin_frame' must be a whole number");
}

TEST(EventRecord, RefusesMoreThanItMayHold)
{
    const std::string two = kEvent + "\n" + kEvent;
    EXPECT_EQ(
        readEvents(two, "events", RecordUnit::Frame, {.records = 1}).problem,
        "events:2: the file has more than 1 records");
    EXPECT_EQ(
        readEvents(kEvent, "events", RecordUnit::Frame, {.objects = 1}).problem,
        "events:1: more than 1 objects take part");
}

} // namespace scenariomatch
