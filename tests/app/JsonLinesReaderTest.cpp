#include "app/FrameClock.h"
#include "tests/app/TrackReading.h"

namespace scenariomatch
{

namespace
{

// A line of one frame whose actors are the text.
std::string lineOf(const std::string& actors, int frame = 1)
{
    return R"({"frame":)" + std::to_string(frame) + R"(,"time":"2026-05-04T10:00:00","actors":[)" +
           actors + "]}\n";
}

// Reads one actor, of which nothing but the reason for leaving it out is expected.
std::string faultOf(const std::string& actor)
{
    const TrackReading reading = readTracks(lineOf(actor));
    EXPECT_EQ(reading.frames.size(), 1U);
    EXPECT_TRUE(reading.frames.empty() || reading.frames[0].actors.empty());
    const std::size_t begin = reading.talk.find(": ");
    return begin == std::string::npos
               ? ""
               : reading.talk.substr(begin + 2, reading.talk.find('\n') - begin - 2);
}

// Reads one line that is left out, and says where and why.
std::string refusalOf(const std::string& line)
{
    const TrackReading reading = readTracks(line);
    EXPECT_TRUE(reading.frames.empty());
    EXPECT_EQ(reading.problems, 1U);
    return reading.talk.substr(0, reading.talk.find('\n'));
}

} // namespace

TEST(JsonLinesReader, ReadsAFrameWithAllThatItMayHold)
{
    const TrackReading reading = readTracks(
        R"({"frame":12,"time":"2026-05-04T10:00:48.160Z","camera":{"x":[1,{"y":2}]},"actors":[)"
        R"({"id":3,"type":"BAG","box":[10,20.4,5,40.6],"position":[1.5,-2,0.25],"size":[0.5,1.75,0.3],"note":"x"},)"
        R"({"id":4,"box":[1,2,3,4]}]})"
        "\n\n  \n"
        R"({"frame":13,"time":"2026-05-04T10:00:48.200+02:00","actors":[]})");
    EXPECT_EQ(reading.talk, "");
    ASSERT_EQ(reading.frames.size(), 2U);
    const TrackFrame& frame = reading.frames[0];
    EXPECT_EQ(frame.number, 12);
    EXPECT_EQ(printClock(frame.clock), "2026-05-04T10:00:48.160");
    ASSERT_EQ(frame.actors.size(), 2U);
    EXPECT_EQ(frame.actors[0].id, 3);
    EXPECT_EQ(frame.actors[0].type, "BAG");
    EXPECT_EQ(frame.actors[0].box.x, 10);
    EXPECT_EQ(frame.actors[0].box.y, 20);
    EXPECT_EQ(frame.actors[0].box.width, 5);
    EXPECT_EQ(frame.actors[0].box.height, 41);
    EXPECT_FLOAT_EQ(frame.actors[0].position.value().x, 1.5F);
    EXPECT_FLOAT_EQ(frame.actors[0].position.value().y, -2.0F);
    EXPECT_FLOAT_EQ(frame.actors[0].position.value().z, 0.25F);
    EXPECT_FLOAT_EQ(frame.actors[0].size.value().width, 0.5F);
    EXPECT_FLOAT_EQ(frame.actors[0].size.value().height, 1.75F);
    EXPECT_FLOAT_EQ(frame.actors[0].size.value().depth, 0.3F);
    EXPECT_EQ(frame.actors[1].type, "PERSON");
    EXPECT_FLOAT_EQ(frame.actors[1].position.value().x, 2.5F);
    EXPECT_FLOAT_EQ(frame.actors[1].position.value().y, 6.0F);
    EXPECT_FLOAT_EQ(frame.actors[1].size.value().height, 4.0F);
    EXPECT_TRUE(reading.frames[1].actors.empty());
    EXPECT_EQ(printClock(reading.frames[1].clock), "2026-05-04T10:00:48.200");
}

TEST(JsonLinesReader, TakesNullForMissingAndMembersInAnyOrder)
{
    const TrackReading reading = readTracks(
        R"({"actors":[{"position":[1,2,3],"box":null,"size":null,"type":null,"id":7.0}],"time":null,"frame":1e1})",
        withRate(25.0));
    EXPECT_EQ(reading.talk, "");
    ASSERT_EQ(reading.frames.size(), 1U);
    EXPECT_EQ(reading.frames[0].number, 10);
    ASSERT_EQ(reading.frames[0].actors.size(), 1U);
    EXPECT_EQ(reading.frames[0].actors[0].id, 7);
    EXPECT_EQ(reading.frames[0].actors[0].type, "PERSON");
    EXPECT_FALSE(reading.frames[0].actors[0].size);
}

TEST(JsonLinesReader, UnescapesTypes)
{
    const TrackReading reading =
        readTracks(lineOf(R"({"id":1,"type":"B\u0041G","box":[1,2,3,4]})"));
    ASSERT_EQ(reading.frames.size(), 1U);
    EXPECT_EQ(reading.frames[0].actors.at(0).type, "BAG");
}

TEST(JsonLinesReader, GivesFramesWithoutATimeTheirsByTheRate)
{
    TrackReaderOptions options = withRate(10.0);
    options.start = {2026, 5, 4, 12, 0, 0, 0};
    const TrackReading reading =
        readTracks("{\"frame\":5,\"actors\":[]}\n{\"frame\":8,\"actors\":[]}\n", options);
    ASSERT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(printClock(reading.frames[0].clock), "2026-05-04T12:00:00.000");
    EXPECT_EQ(printClock(reading.frames[1].clock), "2026-05-04T12:00:00.300");
}

TEST(JsonLinesReader, CountsFromTheFirstFramesOwnTimeWhereItHasOne)
{
    const TrackReading reading =
        readTracks(lineOf("", 1) + "{\"frame\":3,\"actors\":[]}\n", withRate(10.0));
    ASSERT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(printClock(reading.frames[1].clock), "2026-05-04T10:00:00.200");
}

TEST(JsonLinesReader, NeedsARateForFramesWithoutATime)
{
    EXPECT_EQ(
        refusalOf("{\"frame\":5,\"actors\":[]}\n"),
        "tracks:1:1: the frame has no time, and no frame rate was given with --fps");
}

TEST(JsonLinesReader, PointsAtWhatIsWrongInALine)
{
    const TrackReading reading = readTracks("{\"frame\":\"five\",\"actors\":[]}\n");
    EXPECT_EQ(
        reading.talk,
        "tracks:1:10: \"frame\" is not a frame number\n{\"frame\":\"five\",\"actors\":[]}\n        "
        " ^\n");
    EXPECT_EQ(reading.summary, "tracks: 1 malformed line left out\n");
}

TEST(JsonLinesReader, LeavesOutLinesThatAreNoFrame)
{
    EXPECT_EQ(
        refusalOf("{\"frame\":-1,\"actors\":[]}"), "tracks:1:10: \"frame\" is not a frame number");
    EXPECT_EQ(
        refusalOf("{\"frame\":1.5,\"actors\":[]}"), "tracks:1:10: \"frame\" is not a frame number");
    EXPECT_EQ(
        refusalOf("{\"frame\":1e99,\"actors\":[]}"),
        "tracks:1:10: \"frame\" is not a frame number");
    EXPECT_EQ(refusalOf("{\"actors\":[]}"), "tracks:1:1: \"frame\" is missing");
    EXPECT_EQ(refusalOf("{\"frame\":1}"), "tracks:1:1: \"actors\" is missing");
    EXPECT_EQ(refusalOf("{\"frame\":1,\"actors\":5}"), "tracks:1:21: \"actors\" is not a list");
    EXPECT_EQ(
        refusalOf("{\"frame\":1,\"time\":\"noon\",\"actors\":[]}"),
        "tracks:1:19: \"time\" is not a date and time");
    EXPECT_EQ(
        refusalOf("{\"frame\":1,\"time\":7,\"actors\":[]}"),
        "tracks:1:19: \"time\" is not a date and time");
    EXPECT_EQ(
        refusalOf("{\"frame\":1,\"actors\":[]} 5"),
        "tracks:1:1: the line does not end with its JSON object");
    EXPECT_EQ(
        refusalOf("{\"frame\":1,\"actors\":[]} {}"), "tracks:1:25: there is text behind the frame");
    EXPECT_EQ(
        refusalOf("{\"frame\":1,\"actors\":[]"),
        "tracks:1:1: the line does not end with its JSON object");
    EXPECT_EQ(
        refusalOf("{\"frame\":1 \"actors\":[]}"), "tracks:1:12: the line is not JSON from here on");
    EXPECT_EQ(
        refusalOf("{\"frame\":1,\"actors\":[{]}"),
        "tracks:1:23: the line is not JSON from here on");
    EXPECT_EQ(refusalOf("{\"frame"), "tracks:1:1: the line is not JSON");
    EXPECT_EQ(refusalOf("{\"fr\xFF\":1}"), "tracks:1:1: the line is not JSON");
}

TEST(JsonLinesReader, GoesOnBehindALineThatIsLeftOut)
{
    TrackReaderOptions options;
    options.format = TrackFormat::JsonLines;
    const TrackReading reading =
        readTracks("[1]\n7\n\"x\"\n" + lineOf("") + "{\n" + lineOf("", 2), options);
    EXPECT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(reading.summary, "tracks: 4 malformed lines left out\n");
}

TEST(JsonLinesReader, LeavesOutObjectsWithAReason)
{
    EXPECT_EQ(faultOf("5"), "the actor is not a JSON object");
    EXPECT_EQ(faultOf(R"({"box":[1,2,3,4]})"), "\"id\" is missing");
    EXPECT_EQ(faultOf(R"({"id":"1","box":[1,2,3,4]})"), "\"id\" is not a whole number");
    EXPECT_EQ(faultOf(R"({"id":1.5,"box":[1,2,3,4]})"), "\"id\" is not a whole number");
    EXPECT_EQ(
        faultOf(R"({"id":-1,"box":[1,2,3,4]})"),
        "the identifier is negative: the object is not tracked");
    EXPECT_EQ(
        faultOf(R"({"id":18446744073709551615,"box":[1,2,3,4]})"),
        "the identifier is greater than 2147483647");
    EXPECT_EQ(faultOf(R"({"id":1})"), "\"box\" and \"position\" are missing");
    EXPECT_EQ(faultOf(R"({"id":1,"box":[1,2,3]})"), "\"box\" is not a list of 4 numbers");
    EXPECT_EQ(faultOf(R"({"id":1,"box":[1,2,3,4,5]})"), "\"box\" is not a list of 4 numbers");
    EXPECT_EQ(faultOf(R"({"id":1,"box":[1,2,"3",4]})"), "\"box\" is not a list of 4 numbers");
    EXPECT_EQ(faultOf(R"({"id":1,"box":[1,2,[],4]})"), "\"box\" is not a list of 4 numbers");
    EXPECT_EQ(faultOf(R"({"id":1,"box":7})"), "\"box\" is not a list of 4 numbers");
    EXPECT_EQ(faultOf(R"({"id":1,"position":[1,2]})"), "\"position\" is not a list of 3 numbers");
    EXPECT_EQ(
        faultOf(R"({"id":1,"box":[1,2,3,4],"size":[1]})"), "\"size\" is not a list of 3 numbers");
    EXPECT_EQ(faultOf(R"({"id":1,"box":[1,2,3,4],"type":3})"), "\"type\" is not a text");
    EXPECT_EQ(
        faultOf(R"({"id":1,"box":[1,2,3,4],"type":")" + std::string(300, 'T') + "\"}"),
        "\"type\" is longer than 256 bytes");
    EXPECT_EQ(faultOf(R"({"id":1,"box":[1,2,-3,4]})"), "the box has a negative size");
    EXPECT_EQ(faultOf(R"({"id":1,"position":[1,2,3],"size":[1,-2,3]})"), "the size is negative");
    EXPECT_EQ(faultOf(R"({"id":1,"box":[1e12,2,3,4]})"), "the box has a number out of range");
    EXPECT_EQ(faultOf(R"({"id":1,"position":[1e12,2,3]})"), "the position is out of range");
    EXPECT_EQ(
        faultOf(R"({"id":1,"position":[1,2,3],"size":[1e12,2,3]})"), "the size is out of range");
}

TEST(JsonLinesReader, LeavesOutObjectsWithNumbersThatAreNotFinite)
{
    for (const char* number : {"NaN", "Infinity", "-Infinity", "1e999"}) {
        const TrackReading reading = readTracks(lineOf(
            std::string(R"({"id":1,"position":[)") + number +
            R"(,2,3]},{"id":2,"box":[1,2,3,4]})"));
        EXPECT_EQ(reading.summary, "tracks: 1 object with a number that is not finite left out\n");
        ASSERT_EQ(reading.frames.size(), 1U);
        EXPECT_EQ(reading.frames[0].actors.size(), 1U);
        EXPECT_EQ(reading.frames[0].actors.at(0).id, 2);
    }
}

TEST(JsonLinesReader, KeepsTheFirstOfTwoObjectsWithOneIdentifier)
{
    const TrackReading reading = readTracks(
        lineOf(R"({"id":1,"box":[1,2,3,4]},{"id":2,"box":[1,2,3,4]},{"id":1,"box":[9,9,9,9]})"));
    ASSERT_EQ(reading.frames.size(), 1U);
    ASSERT_EQ(reading.frames[0].actors.size(), 2U);
    EXPECT_EQ(reading.frames[0].actors[0].box.x, 1);
    EXPECT_TRUE(reading.talk.starts_with("tracks:1:101: the identifier is in this frame already\n"))
        << reading.talk;
    EXPECT_EQ(reading.summary, "tracks: 1 repeated identifier left out\n");
}

TEST(JsonLinesReader, LeavesOutFramesWhoseNumberDoesNotGrow)
{
    const TrackReading reading =
        readTracks(lineOf("", 5) + lineOf("", 5) + lineOf("", 4) + lineOf("", 6));
    ASSERT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(reading.frames[1].number, 6);
    EXPECT_TRUE(reading.talk.starts_with("tracks:2:1: frame 5 comes after frame 5\n"))
        << reading.talk;
    EXPECT_EQ(reading.summary, "tracks: 2 frames out of order left out\n");
}

TEST(JsonLinesReader, GivesAFrameWhoseClockGoesBackTheClockBeforeIt)
{
    const TrackReading reading =
        readTracks("{\"frame\":1,\"time\":\"2026-05-04T10:00:01\",\"actors\":[]}\n"
                   "{\"frame\":2,\"time\":\"2026-05-04T10:00:00.750\",\"actors\":[]}\n"
                   "{\"frame\":3,\"time\":\"2026-05-04T10:00:01\",\"actors\":[]}\n");
    ASSERT_EQ(reading.frames.size(), 3U);
    EXPECT_EQ(printClock(reading.frames[1].clock), "2026-05-04T10:00:01.000");
    EXPECT_TRUE(reading.talk.starts_with(
        "tracks:2:1: the clock goes back by 250 ms; the frame before lends its own\n"))
        << reading.talk;
    EXPECT_EQ(reading.summary, "tracks: 1 clock that goes back replaced\n");
}

TEST(JsonLinesReader, LeavesOutLinesThatAreTooLong)
{
    TrackReaderOptions options;
    options.limits.input.longestLine = 100;
    const TrackReading reading = readTracks(
        R"({"frame":1,"actors":[)" + std::string(1000, ' ') + "]}\n" + lineOf("", 2), options);
    EXPECT_EQ(reading.frames.size(), 1U);
    EXPECT_TRUE(
        reading.talk.starts_with("tracks:1:1: the line is longer than 100 bytes\n{\"frame\":1"))
        << reading.talk;
    EXPECT_EQ(reading.summary, "tracks: 1 line too long left out\n");
}

TEST(JsonLinesReader, LeavesOutObjectsBeyondTheLimitOfAFrame)
{
    TrackReaderOptions options;
    options.limits.mostActors = 1;
    const TrackReading reading =
        readTracks(lineOf(R"({"id":1,"box":[1,2,3,4]},{"id":2,"box":[1,2,3,4]})"), options);
    ASSERT_EQ(reading.frames.size(), 1U);
    EXPECT_EQ(reading.frames[0].actors.size(), 1U);
    EXPECT_NE(reading.talk.find("the frame has more than 1 objects"), std::string::npos)
        << reading.talk;
    EXPECT_EQ(reading.summary, "tracks: 1 object too many for its frame left out\n");
}

TEST(JsonLinesReader, DropsTheObjectsOfALineThatBreaks)
{
    const std::string object = R"({"id":1,"box":[1,2,3,4]})";
    for (const std::string& line :
         {R"({"frame":1,"time":"2026-05-04T10:00:00","actors":[)" + object + R"(,{"id":2]})",
          R"({"frame":1,"time":"2026-05-04T10:00:00","actors":[)" + object + R"(],"actors":[]})",
          R"({"time":"2026-05-04T10:00:00","actors":[)" + object + "]}"}) {
        const TrackReading reading = readTracks(line + "\n");
        EXPECT_TRUE(reading.frames.empty()) << line;
        EXPECT_EQ(reading.summary, "tracks: 1 malformed line left out\n") << line;
        EXPECT_GE(reading.dropped, 1U) << line;
    }
}

TEST(JsonLinesReader, StopsAtTheFirstProblemWhenStrict)
{
    TrackProblemOptions strict;
    strict.isStrict = true;
    const TrackReading reading = readTracks(
        lineOf("", 1) + lineOf(R"({"id":-1,"box":[1,2,3,4]},{"id":-2,"box":[1,2,3,4]})", 2) +
            lineOf("", 3),
        {},
        strict);
    EXPECT_EQ(reading.frames.size(), 1U);
    EXPECT_EQ(reading.problems, 1U);
}

TEST(JsonLinesReader, SurvivesDeepNestingAndEveryCutOfALine)
{
    readTracks(lineOf("") + R"({"frame":2,"x":)" + std::string(100'000, '[') + "\n");
    readTracks(lineOf(std::string(100'000, '{')));
    const std::string line = lineOf(R"({"id":1,"type":"P\u00e4","box":[1,2.5,3,4],"size":null})");
    for (std::size_t size = 1; size + 2 < line.size(); ++size) {
        const TrackReading reading = readTracks(line.substr(0, size) + "\n");
        EXPECT_TRUE(reading.frames.empty()) << size;
        EXPECT_EQ(reading.problems, 1U) << size;
    }
}

TEST(JsonLinesReader, ReadsCompressedTracksAndReportsWhereTheyAreDamaged)
{
    std::string text;
    for (int i = 0; i < 20'000; ++i) {
        text += lineOf(R"({"id":)" + std::to_string(i * 7919 % 10'007) + R"(,"box":[1,2,3,4]})", i);
    }
    const std::string path = writeCompressed("packed", text);
    EXPECT_EQ(readTracksFile(path).frames.size(), 20'000U);
    std::stringstream packed;
    packed << std::ifstream(path, std::ios::binary).rdbuf();
    const TrackReading cut = readTracks(packed.str().substr(0, packed.str().size() / 2));
    EXPECT_GT(cut.frames.size(), 5000U);
    EXPECT_NE(cut.talk.find(": the compressed data ends too early\n"), std::string::npos);
    EXPECT_NE(cut.summary.find("1 damaged end left out"), std::string::npos);
}

} // namespace scenariomatch
