#include "app/TrackWriter.h"

#include "app/FrameClock.h"
#include "tests/app/synth/SceneText.h"
#include "types/TextFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace scenariomatch
{

namespace
{

TrackedActor actor(int id, const std::string& type)
{
    TrackedActor result;
    result.id = id;
    result.type = type;
    result.box = {10, -20, 25, 60};
    return result;
}

// One frame with a person that has everything, a bag that has a box only, and a group; then an
// empty one.
std::vector<TrackFrame> exampleFrames()
{
    TrackFrame first;
    first.number = 11;
    first.clock = {2026, 5, 4, 10, 0, 48, 160};
    first.actors = {actor(3, "PERSON"), actor(5, "BAG"), actor(10'002, "GROUP")};
    first.actors[0].position = TrackPoint{2.4F, -4.08F, 0.5F};
    first.actors[0].size = TrackSize{0.5F, 1.75F, 0.3F};
    TrackFrame second;
    second.number = 12;
    second.clock = {2026, 5, 4, 10, 0, 48, 200};
    return {first, second};
}

// What a reader makes of tracks in a file; strict, so that nothing is passed over.
std::vector<TrackFrame> readBack(const std::string& text, TrackFormat format)
{
    std::string folder = (std::filesystem::temp_directory_path() / "tracks-XXXXXX").string();
    EXPECT_NE(mkdtemp(folder.data()), nullptr);
    const std::string file = folder + "/tracks";
    std::ofstream(file, std::ios::binary) << text;
    std::ostringstream talk;
    TrackProblemOptions strict;
    strict.isStrict = true;
    TrackProblems problems(file, talk, strict);
    TrackReaderOptions options;
    options.format = format;
    options.framesPerSecond = 12.5;
    options.start = {2026, 2, 28, 23, 59, 59, 800};
    TrackFailure failure;
    const std::unique_ptr<TrackReader> reader = openTracks(file, options, problems, failure);
    EXPECT_NE(reader, nullptr) << failure.reason;
    std::vector<TrackFrame> frames;
    TrackFrame frame;
    while (reader && reader->next(frame)) {
        frames.push_back(frame);
    }
    EXPECT_EQ(talk.str(), "");
    EXPECT_EQ(problems.total(), 0U);
    std::filesystem::remove_all(folder);
    return frames;
}

std::vector<TrackFrame> smallScene()
{
    return framesOf(
        scenariomatch::readTextFile(SCENARIOMATCH_TEST_DATA "/app/synth/small.yaml").value_or(""));
}

// Without the frames in which nothing is seen.
std::vector<TrackFrame> withActors(std::vector<TrackFrame> frames)
{
    frames.erase(
        std::remove_if(
            frames.begin(),
            frames.end(),
            [](const TrackFrame& frame) { return frame.actors.empty(); }),
        frames.end());
    return frames;
}

void expectSameBoxes(const TrackedActor& expected, const TrackedActor& found)
{
    EXPECT_EQ(found.id, expected.id);
    EXPECT_EQ(found.box.x, expected.box.x);
    EXPECT_EQ(found.box.y, expected.box.y);
    EXPECT_EQ(found.box.width, expected.box.width);
    EXPECT_EQ(found.box.height, expected.box.height);
}

void expectSamePosition(const TrackedActor& expected, const TrackedActor& found)
{
    ASSERT_TRUE(found.position.has_value());
    EXPECT_EQ(found.position->x, expected.position->x);
    EXPECT_EQ(found.position->y, expected.position->y);
    EXPECT_EQ(found.position->z, expected.position->z);
}

void expectSameFrame(const TrackFrame& expected, const TrackFrame& found, int firstNumber)
{
    EXPECT_EQ(found.number, expected.number + firstNumber);
    EXPECT_EQ(printClock(found.clock), printClock(expected.clock));
    ASSERT_EQ(found.actors.size(), expected.actors.size());
}

} // namespace

TEST(TrackWriter, WritesJsonLinesWithAllThatAFrameHolds)
{
    EXPECT_EQ(
        tracksOf(exampleFrames(), TrackFormat::JsonLines),
        R"({"frame":11,"time":"2026-05-04T10:00:48.160","actors":[)"
        R"({"id":3,"type":"PERSON","box":[10,-20,25,60],"position":[2.4,-4.08,0.5],)"
        R"("size":[0.5,1.75,0.3]},)"
        R"({"id":5,"type":"BAG","box":[10,-20,25,60]},)"
        R"({"id":10002,"type":"GROUP","box":[10,-20,25,60]}]})"
        "\n"
        R"({"frame":12,"time":"2026-05-04T10:00:48.200","actors":[]})"
        "\n");
}

TEST(TrackWriter, EscapesTypesInJsonLines)
{
    TrackFrame frame;
    frame.actors = {actor(1, "a\"\\\nb")};
    EXPECT_THAT(
        tracksOf({frame}, TrackFormat::JsonLines),
        testing::HasSubstr(R"("type":"a\"\\\nb","box")"));
}

TEST(TrackWriter, WritesJsonLinesWhenNoFormatIsAskedFor)
{
    EXPECT_EQ(
        tracksOf(exampleFrames(), TrackFormat::Auto),
        tracksOf(exampleFrames(), TrackFormat::JsonLines));
}

TEST(TrackWriter, WritesMotRowsOfTenColumnsThatCountFramesFromOne)
{
    EXPECT_EQ(
        tracksOf(exampleFrames(), TrackFormat::Mot),
        "12,3,10,-20,25,60,1,2.4,-4.08,0.5\n"
        "12,5,10,-20,25,60,1,-1,-1,-1\n"
        "12,10002,10,-20,25,60,1,-1,-1,-1\n");
}

TEST(TrackWriter, WritesTrajectoriesOfWhatHasAPosition)
{
    EXPECT_EQ(tracksOf(exampleFrames(), TrackFormat::Trajectory), "3 11 2.4 -4.08 0.5\n");
}

TEST(TrackWriter, WritesCvmlWithBagsAsRolesAndGroupsApart)
{
    const std::string box = "    <box h=\"60\" w=\"25\" xc=\"22.5\" yc=\"10\"/>\n"
                            "    <appearance>visible</appearance>\n";
    const auto hypothesis = [](const std::string& role) {
        return "    <hypothesislist>\n"
               "     <hypothesis evaluation=\"1.0\" id=\"1\" prev=\"1.0\">\n"
               "      <movement evaluation=\"1.0\">none</movement>\n"
               "      <role evaluation=\"1.0\">" +
               role +
               "</role>\n"
               "      <context evaluation=\"1.0\">none</context>\n"
               "      <situation evaluation=\"1.0\">none</situation>\n"
               "     </hypothesis>\n"
               "    </hypothesislist>\n";
    };
    const std::string orientation = "    <orientation>0</orientation>\n";
    EXPECT_EQ(
        tracksOf(exampleFrames(), TrackFormat::Cvml),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<dataset name=\"scene\">\n"
        " <frame number=\"11\">\n  <objectlist>\n   <object id=\"3\">\n" +
            orientation + box + hypothesis("walker") + "   </object>\n   <object id=\"5\">\n" +
            orientation + box + hypothesis("leaving object") +
            "   </object>\n  </objectlist>\n  <grouplist>\n   <group id=\"2\">\n" + orientation +
            box + "    <members></members>\n" + hypothesis("walkers") +
            "   </group>\n  </grouplist>\n </frame>\n"
            " <frame number=\"12\">\n  <objectlist>\n  </objectlist>\n"
            "  <grouplist>\n  </grouplist>\n </frame>\n</dataset>\n");
}

TEST(TrackWriter, KeepsTheIdOfAGroupThatIsSmall)
{
    TrackFrame frame;
    frame.actors = {actor(7, "GROUP")};
    EXPECT_THAT(tracksOf({frame}, TrackFormat::Cvml), testing::HasSubstr("<group id=\"7\">"));
}

TEST(TrackWriter, WritesWholeFilesOfNoFrames)
{
    EXPECT_EQ(tracksOf({}, TrackFormat::JsonLines), "");
    EXPECT_EQ(tracksOf({}, TrackFormat::Mot), "");
    EXPECT_EQ(tracksOf({}, TrackFormat::Trajectory), "");
    EXPECT_EQ(
        tracksOf({}, TrackFormat::Cvml),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<dataset name=\"scene\">\n</dataset>\n");
}

TEST(TrackWriter, WritesJsonLinesThatReadBackTheSame)
{
    const std::vector<TrackFrame> frames = smallScene();
    const auto found = readBack(tracksOf(frames, TrackFormat::JsonLines), TrackFormat::Auto);
    ASSERT_EQ(found.size(), frames.size());
    EXPECT_EQ(tracksOf(found, TrackFormat::Mot), tracksOf(frames, TrackFormat::Mot));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        expectSameFrame(frames[i], found[i], 0);
        for (std::size_t k = 0; k < found[i].actors.size(); ++k) {
            EXPECT_EQ(found[i].actors[k].type, frames[i].actors[k].type);
            expectSameBoxes(frames[i].actors[k], found[i].actors[k]);
            expectSamePosition(frames[i].actors[k], found[i].actors[k]);
        }
    }
}

TEST(TrackWriter, WritesMetresAsJsonLinesThatReadBackTheSame)
{
    const auto frames = framesOf("duration: 4\ncrowd: {people: 10}\n");
    const std::string text = tracksOf(frames, TrackFormat::JsonLines);
    EXPECT_EQ(tracksOf(readBack(text, TrackFormat::Auto), TrackFormat::JsonLines), text);
}

TEST(TrackWriter, WritesMotThatReadsBackTheSame)
{
    const std::vector<TrackFrame> frames = withActors(smallScene());
    const auto found = readBack(tracksOf(frames, TrackFormat::Mot), TrackFormat::Auto);
    ASSERT_EQ(found.size(), frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        expectSameFrame(frames[i], found[i], 1);
        for (std::size_t k = 0; k < found[i].actors.size(); ++k) {
            expectSameBoxes(frames[i].actors[k], found[i].actors[k]);
            expectSamePosition(frames[i].actors[k], found[i].actors[k]);
        }
    }
}

TEST(TrackWriter, WritesCvmlThatReadsBackTheSame)
{
    const std::vector<TrackFrame> frames = smallScene();
    const auto found = readBack(tracksOf(frames, TrackFormat::Cvml), TrackFormat::Auto);
    ASSERT_EQ(found.size(), frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        expectSameFrame(frames[i], found[i], 0);
        for (std::size_t k = 0; k < found[i].actors.size(); ++k) {
            EXPECT_EQ(found[i].actors[k].type, frames[i].actors[k].type);
            expectSameBoxes(frames[i].actors[k], found[i].actors[k]);
            expectSamePosition(frames[i].actors[k], found[i].actors[k]);
        }
    }
}

TEST(TrackWriter, WritesTrajectoriesThatReadBackTheSame)
{
    const std::vector<TrackFrame> frames = withActors(smallScene());
    const auto found = readBack(tracksOf(frames, TrackFormat::Trajectory), TrackFormat::Auto);
    ASSERT_EQ(found.size(), frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        expectSameFrame(frames[i], found[i], 0);
        for (std::size_t k = 0; k < found[i].actors.size(); ++k) {
            EXPECT_EQ(found[i].actors[k].id, frames[i].actors[k].id);
            expectSamePosition(frames[i].actors[k], found[i].actors[k]);
        }
    }
}

} // namespace scenariomatch
