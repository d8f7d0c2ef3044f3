#include "app/FrameClock.h"
#include "TrackReading.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

// One rule for each oddity, in every format in which it can occur: what is counted, how many
// objects are dropped, and which frames with which objects come out.
namespace scenariomatch
{

namespace
{

struct OddTracks
{
    const char* name;
    std::string text;
    // As "name count, ...".
    std::string counted;
    std::uint64_t dropped;
    // As "number: identifier identifier; ...".
    std::string frames;
};

std::ostream& operator<<(std::ostream& out, const OddTracks& tracks)
{
    return out << tracks.name;
}

std::string jsonFrame(int number, const std::string& time, const std::string& actors)
{
    return R"({"frame":)" + std::to_string(number) + R"(,"time":")" + time + R"(","actors":[)" +
           actors + "]}\n";
}

std::string jsonFrame(int number, const std::string& actors)
{
    return jsonFrame(number, "2026-05-04T10:00:00", actors);
}

std::string jsonActor(const std::string& id, const std::string& box = "1,2,3,4")
{
    return R"({"id":)" + id + R"(,"box":[)" + box + "]}";
}

std::string cvmlFrame(const std::string& number, const std::string& objects)
{
    return R"(<frame number=")" + number + R"("><objectlist>)" + objects +
           "</objectlist></frame>\n";
}

std::string cvmlObject(const std::string& id, const std::string& height = "4")
{
    return R"(<object id=")" + id + R"("><box xc="1" yc="2" w="3" h=")" + height +
           R"("/></object>)";
}

std::string cvml(const std::string& frames)
{
    return "<dataset>" + frames + "</dataset>";
}

std::string
motRow(const std::string& frame, const std::string& id, const std::string& box = "1,2,3,4")
{
    return frame + "," + id + "," + box + ",1,-1,-1,-1\n";
}

std::string countsOf(const TrackReading& reading)
{
    std::string text;
    reading.counts.visit([&text](Oddity oddity, std::uint64_t count) {
        text += (text.empty() ? "" : ", ") + std::string(textOf(oddity).name) + " " +
                std::to_string(count);
    });
    return text;
}

std::string framesOf(const TrackReading& reading)
{
    std::string text;
    for (const TrackFrame& frame : reading.frames) {
        text += (text.empty() ? "" : "; ") + std::to_string(frame.number) + ":";
        for (const TrackedActor& actor : frame.actors) {
            text += " " + std::to_string(actor.id);
        }
    }
    return text;
}

class OddTracksTest : public testing::TestWithParam<OddTracks>
{
};

const std::vector<OddTracks> kJson = {
    {"JsonFrameRepeats",
     jsonFrame(1, jsonActor("1")) + jsonFrame(1, jsonActor("2")) + jsonFrame(2, jsonActor("3")),
     "frame-goes-back 1",
     1,
     "1: 1; 2: 3"},
    {"JsonFrameGoesBack",
     jsonFrame(5, jsonActor("1")) + jsonFrame(4, jsonActor("1") + "," + jsonActor("2")) +
         jsonFrame(6, ""),
     "frame-goes-back 1",
     2,
     "5: 1; 6:"},
    {"JsonIdentifierTwice",
     jsonFrame(1, jsonActor("1") + "," + jsonActor("1") + "," + jsonActor("2")),
     "duplicate-id 1",
     1,
     "1: 1 2"},
    {"JsonIdentifierNegative",
     jsonFrame(1, jsonActor("-1") + "," + jsonActor("0")),
     "untracked 1",
     1,
     "1: 0"},
    {"JsonIdentifierTooGreat", jsonFrame(1, jsonActor("2147483648")), "out-of-range 1", 1, "1:"},
    {"JsonIdentifierComesBack",
     jsonFrame(1, jsonActor("1")) + jsonFrame(2, "") + jsonFrame(90000, jsonActor("1")),
     "",
     0,
     "1: 1; 2:; 90000: 1"},
    {"JsonNotFinite", jsonFrame(1, jsonActor("1", "1e999,2,3,4")), "not-finite 1", 1, "1:"},
    {"JsonNaN",
     jsonFrame(1, jsonActor("1", "NaN,2,3,4") + "," + jsonActor("2", "1,-Infinity,3,4")),
     "not-finite 2",
     2,
     "1:"},
    {"JsonBoxOfNegativeSize",
     jsonFrame(
         1,
         jsonActor("1", "1,2,-3,4") + "," + jsonActor("2", "1,2,3,-4") + "," +
             jsonActor("3", "1,2,0,0")),
     "negative-box 2",
     2,
     "1: 3"},
    {"JsonTimeThatDoesNotExist", jsonFrame(1, "2026-02-30T10:00:00", ""), "malformed 1", 0, ""}};

const std::vector<OddTracks> kCvml = {
    {"CvmlFrameRepeats",
     cvml(cvmlFrame("1", cvmlObject("1")) + cvmlFrame("1", cvmlObject("2"))),
     "frame-goes-back 1",
     1,
     "1: 1"},
    {"CvmlFrameGoesBack",
     cvml(
         cvmlFrame("5", "") + cvmlFrame("4", cvmlObject("2") + cvmlObject("3")) +
         cvmlFrame("6", "")),
     "frame-goes-back 1",
     2,
     "5:; 6:"},
    {"CvmlFrameWithoutNumber", cvml(cvmlFrame("x", cvmlObject("1"))), "malformed 1", 1, ""},
    {"CvmlIdentifierTwice",
     cvml(cvmlFrame("1", cvmlObject("1") + cvmlObject("1") + cvmlObject("2"))),
     "duplicate-id 1",
     1,
     "1: 1 2"},
    {"CvmlIdentifierNegative", cvml(cvmlFrame("1", cvmlObject("-1"))), "untracked 1", 1, "1:"},
    {"CvmlNotFinite", cvml(cvmlFrame("1", cvmlObject("1", "inf"))), "not-finite 1", 1, "1:"},
    {"CvmlBoxOfNegativeSize",
     cvml(cvmlFrame("1", cvmlObject("1", "-4"))),
     "negative-box 1",
     1,
     "1:"},
    {"CvmlIdentifierComesBack",
     cvml(
         cvmlFrame("1", cvmlObject("1")) + cvmlFrame("2", "") +
         cvmlFrame("90000", cvmlObject("1"))),
     "",
     0,
     "1: 1; 2:; 90000: 1"}};

const std::vector<OddTracks> kRows = {
    {"MotRowsInAnyOrder",
     motRow("5", "1") + motRow("4", "1") + motRow("5", "2"),
     "",
     0,
     "4: 1; 5: 1 2"},
    {"MotIdentifierTwice", motRow("1", "1") + motRow("1", "1"), "duplicate-id 1", 1, "1: 1"},
    {"MotIdentifierNegative", motRow("1", "-1") + motRow("1", "1"), "untracked 1", 1, "1: 1"},
    {"MotFrameNegative", motRow("-1", "1") + motRow("1", "1"), "out-of-range 1", 1, "1: 1"},
    {"MotNotFinite",
     motRow("1", "1", "nan,2,3,4") + motRow("1", "2", "1,inf,3,4"),
     "not-finite 2",
     2,
     ""},
    {"MotBoxOfNegativeSize",
     motRow("1", "1", "1,2,-3,4") + motRow("1", "2"),
     "negative-box 1",
     1,
     "1: 2"},
    {"MotUnknownClass", "1,1,1,2,3,4,1,14,1\n1,2,1,2,3,4,1,1,1\n", "unknown-class 1", 1, "1: 2"},
    {"MotNotConsidered", "1,1,1,2,3,4,0,1,1\n1,2,1,2,3,4,1,1,1\n", "not-considered 1", 1, "1: 2"},
    {"MotIdentifierComesBack", motRow("1", "1") + motRow("90000", "1"), "", 0, "1: 1; 90000: 1"},
    {"TrajectoryRowsInAnyOrder", "1 5 1 2\n1 4 1 2\n2 5 1 2\n", "", 0, "4: 1; 5: 1 2"},
    {"TrajectoryIdentifierTwice", "1 1 1 2\n1 1 3 4\n", "duplicate-id 1", 1, "1: 1"},
    {"TrajectoryIdentifierNegative", "-1 1 1 2\n1 1 3 4\n", "untracked 1", 1, "1: 1"},
    {"TrajectoryNotFinite", "1 1 nan 2\n2 1 1 -inf\n3 1 1 2\n", "not-finite 2", 2, "1: 3"},
    {"TrajectoryIdentifierComesBack", "1 1 1 2\n1 90000 3 4\n", "", 0, "1: 1; 90000: 1"}};

std::string titleOf(const testing::TestParamInfo<OddTracks>& info)
{
    return info.param.name;
}

// The clocks of frames with these times, and what was counted.
std::string clocksOf(std::initializer_list<const char*> times)
{
    std::string text;
    int number = 0;
    for (const char* time : times) {
        text += jsonFrame(++number, time, "");
    }
    const TrackReading reading = readTracks(text);
    std::string clocks;
    for (const TrackFrame& frame : reading.frames) {
        clocks += printClock(frame.clock).substr(5, 14) + " ";
    }
    return clocks + countsOf(reading);
}

} // namespace

TEST_P(OddTracksTest, FollowTheirRule)
{
    const TrackReading reading = readTracks(GetParam().text, withRate(25.0));
    EXPECT_EQ(countsOf(reading), GetParam().counted);
    EXPECT_EQ(reading.dropped, GetParam().dropped);
    EXPECT_EQ(framesOf(reading), GetParam().frames);
}

INSTANTIATE_TEST_SUITE_P(Json, OddTracksTest, testing::ValuesIn(kJson), titleOf);
INSTANTIATE_TEST_SUITE_P(Cvml, OddTracksTest, testing::ValuesIn(kCvml), titleOf);
INSTANTIATE_TEST_SUITE_P(Rows, OddTracksTest, testing::ValuesIn(kRows), titleOf);

TEST(OddClocks, GoOnOverMidnightAndTheEndsOfMonths)
{
    EXPECT_EQ(
        clocksOf({"2026-12-31T23:59:59.9", "2027-01-01T00:00:00.1"}),
        "12-31T23:59:59 01-01T00:00:00 ");
    EXPECT_EQ(
        clocksOf({"2028-02-28T23:59:59", "2028-02-29T00:00:00", "2028-03-01T00:00:00"}),
        "02-28T23:59:59 02-29T00:00:00 03-01T00:00:00 ");
    EXPECT_EQ(
        clocksOf({"2026-02-28T23:59:59", "2026-03-01T00:00:00"}), "02-28T23:59:59 03-01T00:00:00 ");
    EXPECT_EQ(
        clocksOf({"2026-02-28T23:59:59", "2026-02-29T00:00:00", "2100-02-29T00:00:00"}),
        "02-28T23:59:59 malformed 2");
}

TEST(OddClocks, StandStillUntilTheyHaveCaughtUp)
{
    EXPECT_EQ(
        clocksOf(
            {"2026-05-04T10:00:02",
             "2026-05-04T10:00:00",
             "2026-05-04T10:00:02",
             "2026-05-04T10:00:03"}),
        "05-04T10:00:02 05-04T10:00:02 05-04T10:00:02 05-04T10:00:03 clock-goes-back 1");
}

TEST(OddClocks, AreWallClocksWhenDaylightSavingChanges)
{
    EXPECT_EQ(
        clocksOf({"2026-03-29T01:59:59+01:00", "2026-03-29T03:00:00+02:00"}),
        "03-29T01:59:59 03-29T03:00:00 ");
    EXPECT_EQ(
        clocksOf(
            {"2026-10-25T02:59:59+02:00",
             "2026-10-25T02:00:00+01:00",
             "2026-10-25T03:00:00+01:00"}),
        "10-25T02:59:59 10-25T02:59:59 10-25T03:00:00 clock-goes-back 1");
}

TEST(OddClocks, AreComputedOverMidnightAndLeapDaysWhereTracksHaveNone)
{
    TrackReaderOptions options = withRate(1.0);
    options.start = {2028, 2, 28, 23, 59, 59, 0};
    const TrackReading reading =
        readTracks("1 1 1 2\n1 2 1 2\n1 86401 1 2\n1 86402 1 2\n", options);
    ASSERT_EQ(reading.frames.size(), 4U);
    EXPECT_EQ(printClock(reading.frames[1].clock), "2028-02-29T00:00:00.000");
    EXPECT_EQ(printClock(reading.frames[2].clock), "2028-02-29T23:59:59.000");
    EXPECT_EQ(printClock(reading.frames[3].clock), "2028-03-01T00:00:00.000");
}

} // namespace scenariomatch
