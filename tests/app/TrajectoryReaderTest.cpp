#include "app/FrameClock.h"
#include "tests/app/TrackReading.h"

namespace scenariomatch
{

TEST(TrajectoryReader, ReadsRowsInAnyOrderWithAnyBlanks)
{
    const TrackReading reading = readTracks("# made by hand\n# framerate: 16 fps\n\n2 6 1 "
                                            "2\n1\t5\t-0.5\t2.25\t1.76\n 1  6 -0.25 2.5 1.76 \n");
    EXPECT_EQ(reading.talk, "");
    ASSERT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(reading.frames[0].number, 5);
    EXPECT_EQ(printClock(reading.frames[1].clock), "2000-01-01T00:00:00.063");
    const TrackedActor& first = reading.frames[0].actors.at(0);
    EXPECT_EQ(first.id, 1);
    EXPECT_EQ(first.type, "PERSON");
    EXPECT_FLOAT_EQ(first.position.value().x, -0.5F);
    EXPECT_FLOAT_EQ(first.position.value().y, 2.25F);
    EXPECT_FLOAT_EQ(first.position.value().z, 0.0F);
    EXPECT_FLOAT_EQ(first.size.value().height, 1.76F);
    EXPECT_FLOAT_EQ(first.size.value().width, 0.0F);
    ASSERT_EQ(reading.frames[1].actors.size(), 2U);
    EXPECT_EQ(reading.frames[1].actors[0].id, 2);
    EXPECT_FALSE(reading.frames[1].actors[0].size);
}

TEST(TrajectoryReader, PrefersTheRateGivenByTheUser)
{
    const TrackReading reading =
        readTracks("# framerate: 16 fps\n1 0 1 2\n1 1 1 2\n", withRate(10.0));
    EXPECT_EQ(printClock(reading.frames.at(1).clock), "2000-01-01T00:00:00.100");
}

TEST(TrajectoryReader, NeedsAFrameRate)
{
    const TrackReading reading = readTracks("# framerate: fast\n1 0 1 2\n");
    ASSERT_TRUE(reading.failure);
    EXPECT_TRUE(reading.failure->isUsage);
}

TEST(TrajectoryReader, ScalesPositionsAndHeight)
{
    TrackReaderOptions options = withRate(25.0);
    options.ground = GroundMapper(0.01, std::nullopt);
    options.defaultType = "ROBOT";
    const TrackReading reading = readTracks("1 0 -554.5 309 176\n", options);
    EXPECT_FLOAT_EQ(reading.frames.at(0).actors.at(0).position.value().x, -5.545F);
    EXPECT_FLOAT_EQ(reading.frames.at(0).actors.at(0).size.value().height, 1.76F);
    EXPECT_EQ(reading.frames.at(0).actors.at(0).type, "ROBOT");
}

TEST(TrajectoryReader, ReportsWhatIsWrongWithARow)
{
    const TrackReading reading = readTracks(
        "1 0 1 2\n1 1 2\n1 1 2 3 4 5\n1 x 2 3\n1 1 inf 3\n1 1 2e9 3\n1 1 2 3 4e9\n-2 1 2 3\n1 -1 2 "
        "3\n1 0 5 5\n",
        withRate(25.0));
    EXPECT_EQ(
        reading.talk,
        "tracks:2:1: a row is \"id frame x y\" or \"id frame x y z\"\n1 1 2\n^\n"
        "tracks:3:1: a row is \"id frame x y\" or \"id frame x y z\"\n1 1 2 3 4 5\n^\n"
        "tracks:4:3: a number is expected\n1 x 2 3\n  ^\n"
        "tracks:5:5: the number is not finite\n1 1 inf 3\n    ^\n"
        "tracks:6:5: the position is out of range\n1 1 2e9 3\n    ^\n"
        "tracks:7:9: the height is out of range\n1 1 2 3 4e9\n        ^\n"
        "tracks:8:1: the identifier is negative: the object is not tracked\n-2 1 2 3\n^\n"
        "tracks:9:3: the frame number is negative\n1 -1 2 3\n  ^\n"
        "tracks:10: the identifier 1 is in frame 0 already\n");
    EXPECT_EQ(reading.frames.size(), 1U);
}

TEST(TrajectoryReader, LeavesOutLinesThatAreTooLong)
{
    TrackReaderOptions options = withRate(25.0);
    options.limits.input.longestLine = 20;
    const TrackReading reading =
        readTracks("1 0 1 2\n1 1 1 2" + std::string(100, ' ') + "\n", options);
    EXPECT_EQ(reading.frames.size(), 1U);
    EXPECT_EQ(reading.summary, "tracks: 1 line too long left out\n");
}

TEST(TrajectoryReader, StopsAtTheFirstProblemWhenStrict)
{
    TrackProblemOptions strict;
    strict.isStrict = true;
    const TrackReading reading = readTracks("1 0 1 2\n1 x 1 2\n1 y 1 2\n", withRate(25.0), strict);
    EXPECT_TRUE(reading.frames.empty());
    EXPECT_EQ(reading.problems, 1U);
}

} // namespace scenariomatch
