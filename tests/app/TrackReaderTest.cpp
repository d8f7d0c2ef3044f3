#include "tests/app/TrackReading.h"

namespace scenariomatch
{

TEST(TrackReader, TellsTheFormatsByTheirContent)
{
    EXPECT_EQ(detectTrackFormat(" \n{", false), TrackFormat::JsonLines);
    EXPECT_EQ(detectTrackFormat("<?xml", false), TrackFormat::Cvml);
    EXPECT_EQ(detectTrackFormat("# x\n\n1 2 3 4\n", false), TrackFormat::Trajectory);
    EXPECT_EQ(detectTrackFormat("1,2,3\n", false), TrackFormat::Mot);
    EXPECT_EQ(detectTrackFormat("-1 2 3 4", true), TrackFormat::Trajectory);
    EXPECT_EQ(detectTrackFormat("hello world\n", false), TrackFormat::Auto);
}

TEST(TrackReader, WaitsForTheFirstRowToTellTheFormat)
{
    EXPECT_EQ(detectTrackFormat("", false), std::nullopt);
    EXPECT_EQ(detectTrackFormat("# 1,2", false), std::nullopt);
    EXPECT_EQ(detectTrackFormat("# 1,2\n1 2", false), std::nullopt);
    EXPECT_EQ(detectTrackFormat("# 1,2\n", true), std::nullopt);
}

TEST(TrackReader, SaysWhyThereIsNothingToRead)
{
    EXPECT_EQ(readTracks("").failure.value().reason, "there are no tracks in it");
    EXPECT_FALSE(readTracks("").failure.value().isUsage);
    EXPECT_EQ(
        readTracks("hello\n").failure.value().reason,
        "the format of the tracks is not known; name it with --format");
    EXPECT_TRUE(readTracks("hello\n").failure.value().isUsage);
    EXPECT_EQ(
        readTracksFile(temporaryFile("none")).failure.value().reason, "No such file or directory");
    EXPECT_EQ(
        readTracks(std::string(1'000'000, '#')).failure.value().reason,
        "the format of the tracks is not known; name it with --format");
}

TEST(TrackReader, FollowsAFormatThatIsNamed)
{
    TrackReaderOptions options = withRate(25.0);
    options.format = TrackFormat::Trajectory;
    const TrackReading reading = readTracks("1,2,3,4\n", options);
    EXPECT_TRUE(reading.frames.empty());
    EXPECT_EQ(reading.summary, "tracks: 1 malformed line left out\n");
}

} // namespace scenariomatch
