#include "app/FrameClock.h"
#include "tests/app/TrackReading.h"

#include <filesystem>

namespace scenariomatch
{

TEST(MotReader, ReadsTenColumnsSortedByFrame)
{
    const TrackReading reading = readTracks(
        "2,7,10,20,5,40,0.9,-1,-1,-1\n"
        "1, 7, 9.4, 20.6, 5, 40, 1, -1, -1, -1\n"
        "2,3,1,2,3,4,-1,1.5,2.5,0\n",
        withRate(10.0));
    EXPECT_EQ(reading.talk, "");
    ASSERT_EQ(reading.frames.size(), 2U);
    EXPECT_EQ(reading.frames[0].number, 1);
    EXPECT_EQ(printClock(reading.frames[0].clock), "2000-01-01T00:00:00.000");
    EXPECT_EQ(printClock(reading.frames[1].clock), "2000-01-01T00:00:00.100");
    const TrackedActor& first = reading.frames[0].actors.at(0);
    EXPECT_EQ(first.id, 7);
    EXPECT_EQ(first.type, "PERSON");
    EXPECT_EQ(first.box.x, 9);
    EXPECT_EQ(first.box.y, 21);
    EXPECT_FLOAT_EQ(first.position.value().x, 11.9F);
    EXPECT_FLOAT_EQ(first.position.value().y, 60.6F);
    EXPECT_FLOAT_EQ(first.size.value().height, 40.0F);
    ASSERT_EQ(reading.frames[1].actors.size(), 2U);
    EXPECT_EQ(reading.frames[1].actors[0].id, 7);
    EXPECT_FLOAT_EQ(reading.frames[1].actors[1].position.value().x, 1.5F);
    EXPECT_FLOAT_EQ(reading.frames[1].actors[1].position.value().y, 2.5F);
}

TEST(MotReader, ReadsNineColumnsWithClassesAndPassesOverIgnoredRows)
{
    const TrackReading reading = readTracks(
        "1,1,1,2,3,4,1,1,1\n1,2,1,2,3,4,1,3,0.5\n1,3,1,2,3,4,0,1,1\n1,4,1,2,3,4,1,7,1\n1,5,1,2,3,4,"
        "1,13,1\n",
        withRate(25.0));
    EXPECT_EQ(reading.talk, "");
    ASSERT_EQ(reading.frames.size(), 1U);
    ASSERT_EQ(reading.frames[0].actors.size(), 4U);
    EXPECT_EQ(reading.frames[0].actors[0].type, "PERSON");
    EXPECT_EQ(reading.frames[0].actors[1].type, "CAR");
    EXPECT_EQ(reading.frames[0].actors[2].id, 4);
    EXPECT_EQ(reading.frames[0].actors[2].type, "PERSON");
    EXPECT_EQ(reading.frames[0].actors[3].type, "CROWD");
}

TEST(MotReader, GivesRowsOfTenColumnsTheTypeAskedFor)
{
    TrackReaderOptions options = withRate(25.0);
    options.defaultType = "VEHICLE";
    const TrackReading reading = readTracks("1,1,1,2,3,4,1,-1,-1,-1\n1,2,1,2,3,4,1,1,1\n", options);
    EXPECT_EQ(reading.frames.at(0).actors.at(0).type, "VEHICLE");
    EXPECT_EQ(reading.frames.at(0).actors.at(1).type, "PERSON");
}

TEST(MotReader, RefusesDetections)
{
    const TrackReading reading =
        readTracks("1,-1,10,20,5,40,0.9,-1,-1,-1\n2,-1,10,20,5,40,0.9,-1,-1,-1\n", withRate(25.0));
    ASSERT_TRUE(reading.failure);
    EXPECT_FALSE(reading.failure->isUsage);
    EXPECT_EQ(reading.failure->reason, "these are detections, not tracks");
    EXPECT_TRUE(reading.frames.empty());
}

TEST(MotReader, LeavesOutUntrackedRowsAmongTracks)
{
    const TrackReading reading =
        readTracks("1,-1,10,20,5,40,0.9,-1,-1,-1\n1,2,10,20,5,40,0.9,-1,-1,-1\n", withRate(25.0));
    EXPECT_FALSE(reading.failure);
    EXPECT_EQ(
        reading.talk,
        "tracks:1:3: the identifier is negative: the object is not tracked\n"
        "1,-1,10,20,5,40,0.9,-1,-1,-1\n  ^\n");
    EXPECT_EQ(reading.frames.at(0).actors.size(), 1U);
}

TEST(MotReader, ReportsWhatIsWrongWithARow)
{
    const TrackReading reading = readTracks(
        "1,1,1,2,3,4,1,-1,-1,-1\n"
        "frame,id,x,y,w,h,conf,x,y,z\n"
        "1,2,3\n"
        "1,2,1,2,3,4,1,14,1\n"
        "1,2,1,2,nan,4,1,-1,-1,-1\n"
        "1,2,1,2,-3,4,1,-1,-1,-1\n"
        "1,2.5,1,2,3,4,1,-1,-1,-1\n"
        "-1,2,1,2,3,4,1,-1,-1,-1\n"
        "1,2,1,2,3,4,1,1e10,1,1\n"
        "1,99999999999,1,2,3,4,1,-1,-1,-1\n"
        "1,1,1,2,3,4,1,-1,-1,-1\n",
        withRate(25.0));
    EXPECT_EQ(
        reading.talk,
        "tracks:2:1: a number is expected\nframe,id,x,y,w,h,conf,x,y,z\n^\n"
        "tracks:3:1: a row has 9 or 10 columns\n1,2,3\n^\n"
        "tracks:4:15: classes are 1 to 13\n1,2,1,2,3,4,1,14,1\n              ^\n"
        "tracks:5:9: the number is not finite\n1,2,1,2,nan,4,1,-1,-1,-1\n        ^\n"
        "tracks:6:5: the box has a negative size\n1,2,1,2,-3,4,1,-1,-1,-1\n    ^\n"
        "tracks:7:3: a whole number is expected\n1,2.5,1,2,3,4,1,-1,-1,-1\n  ^\n"
        "tracks:8:1: the frame number is negative\n-1,2,1,2,3,4,1,-1,-1,-1\n^\n"
        "tracks:9:15: the position is out of range\n1,2,1,2,3,4,1,1e10,1,1\n              ^\n"
        "tracks:10:3: the number is out of range\n1,99999999999,1,2,3,4,1,-1,-1,-1\n  ^\n"
        "tracks:11: the identifier 1 is in frame 1 already\n");
    EXPECT_EQ(reading.frames.at(0).actors.size(), 1U);
    EXPECT_EQ(reading.counts.of(Oddity::UnknownClass), 1U);
    EXPECT_EQ(reading.dropped, 10U);
}

TEST(MotReader, CountsRowsThatAreNotToBeConsidered)
{
    const TrackReading reading =
        readTracks("1,1,1,2,3,4,1,1,1\n1,2,1,2,3,4,0,1,1\n", withRate(25.0));
    EXPECT_EQ(reading.talk, "");
    EXPECT_EQ(reading.counts.of(Oddity::NotConsidered), 1U);
    EXPECT_EQ(reading.dropped, 1U);
    EXPECT_EQ(reading.frames.at(0).actors.size(), 1U);
}

TEST(MotReader, NeedsAFrameRate)
{
    const TrackReading reading = readTracks("1,1,1,2,3,4,1,-1,-1,-1\n");
    ASSERT_TRUE(reading.failure);
    EXPECT_TRUE(reading.failure->isUsage);
    EXPECT_EQ(reading.failure->reason, "the tracks have no clock; give the frame rate with --fps");
}

TEST(MotReader, TakesTheFrameRateOfTheSequenceDescription)
{
    const std::filesystem::path folder = temporaryFile("sequence");
    std::filesystem::create_directories(folder / "gt");
    std::ofstream(folder / "seqinfo.ini") << "[Sequence]\nname=x\nframeRate=20\nseqLength=3\n";
    std::ofstream(folder / "gt" / "gt.txt") << "1,1,1,2,3,4,1,1,1\n2,1,1,2,3,4,1,1,1\n";
    std::filesystem::copy_file(
        folder / "gt" / "gt.txt",
        folder / "gt.txt",
        std::filesystem::copy_options::overwrite_existing);
    for (const auto& file : {folder / "gt" / "gt.txt", folder / "gt.txt"}) {
        const TrackReading reading = readTracksFile(file.string());
        ASSERT_EQ(reading.frames.size(), 2U);
        EXPECT_EQ(printClock(reading.frames[1].clock), "2000-01-01T00:00:00.050");
    }
    std::ofstream(folder / "seqinfo.ini") << "[Sequence]\nframeRate=none\n";
    EXPECT_TRUE(readTracksFile((folder / "gt.txt").string()).failure);
}

TEST(MotReader, RefusesMoreRowsThanItMayHold)
{
    TrackReaderOptions options = withRate(25.0);
    options.limits.mostRows = 1;
    const TrackReading reading = readTracks("1,1,1,2,3,4,1,1,1\n2,1,1,2,3,4,1,1,1\n", options);
    ASSERT_TRUE(reading.failure);
    EXPECT_EQ(reading.failure->reason, "there are more than 1 rows");
}

TEST(MotReader, ReadsCompressedTracks)
{
    const TrackReading reading = readTracksFile(
        writeCompressed("packed", "1,1,1,2,3,4,1,1,1\n2,1,1,2,3,4,1,1,1\n"), withRate(25.0));
    EXPECT_EQ(reading.frames.size(), 2U);
}

TEST(MotReader, LeavesOutFramesBeyondTheLastYear)
{
    const TrackReading reading =
        readTracks("1,1,1,2,3,4,1,1,1\n2147483647,1,1,2,3,4,1,1,1\n", withRate(0.001));
    EXPECT_EQ(reading.frames.size(), 1U);
    EXPECT_EQ(reading.talk, "tracks:2: the frame would be later than the year 9999\n");
}

} // namespace scenariomatch
