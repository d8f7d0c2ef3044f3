#include "app/SceneTracks.h"

#include "app/FrameClock.h"
#include "tests/app/synth/SceneText.h"
#include "types/TextFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace scenariomatch
{

namespace
{

std::string wholeFile(const std::string& name)
{
    const auto text = scenariomatch::readTextFile(name);
    EXPECT_TRUE(text.has_value()) << name;
    return text.value_or("");
}

// The x of the only object in each frame, -1 where there is none.
std::vector<float> xs(const std::string& text)
{
    std::vector<float> result;
    for (const TrackFrame& frame : framesOf(text)) {
        result.push_back(frame.actors.empty() ? -1.0F : frame.actors.front().position->x);
    }
    return result;
}

const std::string kWalk = "frame_rate: 1\n"
                          "objects:\n"
                          "  - id: 3\n"
                          "    path: [{time: 0, position: [0, 0]}, {time: 4, position: [8, 2]}]\n";

} // namespace

TEST(SceneTracks, NumbersAndTimesTheFrames)
{
    const auto frames = framesOf("frame_rate: 25\nstart: 2026-12-31T23:59:59.950\nduration: 0.1\n");
    ASSERT_EQ(frames.size(), 3U);
    EXPECT_EQ(frames[0].number, 0);
    EXPECT_EQ(printClock(frames[0].clock), "2026-12-31T23:59:59.950");
    EXPECT_EQ(frames[2].number, 2);
    EXPECT_EQ(printClock(frames[2].clock), "2027-01-01T00:00:00.030");
}

TEST(SceneTracks, BeginsInTheYear2000WhenNothingElseIsSaid)
{
    const auto frames = framesOf("duration: 1");
    ASSERT_EQ(frames.size(), 25U);
    EXPECT_EQ(printClock(frames[0].clock), "2000-01-01T00:00:00.000");
}

TEST(SceneTracks, RoundsTimesOfOddFrameRatesToTheMillisecond)
{
    const auto frames = framesOf("frame_rate: 29.97\nduration: 0.15\n");
    ASSERT_EQ(frames.size(), 5U);
    EXPECT_EQ(frames[1].clock.millisecond, 33);
    EXPECT_EQ(frames[2].clock.millisecond, 67);
    EXPECT_EQ(frames[4].clock.millisecond, 133);
}

TEST(SceneTracks, MovesAnObjectInStraightLinesAtConstantSpeed)
{
    const auto frames = framesOf(kWalk);
    ASSERT_EQ(frames.size(), 5U);
    for (int i = 0; i < 5; ++i) {
        const auto& actors = frames.at(static_cast<std::size_t>(i)).actors;
        ASSERT_EQ(actors.size(), 1U);
        EXPECT_EQ(actors[0].id, 3);
        EXPECT_EQ(actors[0].type, "PERSON");
        EXPECT_EQ(actors[0].position->x, 2.0F * static_cast<float>(i));
        EXPECT_EQ(actors[0].position->y, 0.5F * static_cast<float>(i));
        EXPECT_EQ(actors[0].position->z, 0.0F);
    }
}

TEST(SceneTracks, LetsAnObjectExistFromItsFirstToItsLastWayPoint)
{
    EXPECT_THAT(
        xs("frame_rate: 1\nduration: 5\nobjects:\n"
           "  - {id: 1, path: [{time: 1, position: [1, 0]}, {time: 3, position: [3, 0]}]}\n"),
        testing::ElementsAre(-1, 1, 2, 3, -1));
}

TEST(SceneTracks, LetsAnObjectStayWhereAWayPointHasNoPosition)
{
    EXPECT_THAT(
        xs("frame_rate: 1\nobjects:\n"
           "  - {id: 1, path: [{time: 0, position: [1, 0]}, {time: 2}, {time: 3, position: [5, "
           "0]}]}\n"),
        testing::ElementsAre(1, 1, 1, 5));
}

TEST(SceneTracks, ReadsAHeightAboveTheGround)
{
    const auto frames = framesOf("objects: [{id: 1, path: [{time: 0, position: [1, 2, 0.5]}]}]\n");
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_EQ(frames[0].actors.at(0).position->z, 0.5F);
}

TEST(SceneTracks, HidesAnObjectInItsGaps)
{
    EXPECT_THAT(
        xs(kWalk + "    gaps: [[1, 3], [3.5, 10]]\n"), testing::ElementsAre(0, -1, -1, 6, -1));
}

TEST(SceneTracks, ChangesTheIdentityFromATimeOn)
{
    std::vector<int> ids;
    for (const TrackFrame& frame :
         framesOf(kWalk + "    switches: [{time: 1, id: 9}, {time: 3.5, id: 3}]\n")) {
        ids.push_back(frame.actors.at(0).id);
    }
    EXPECT_THAT(ids, testing::ElementsAre(3, 9, 9, 9, 3));
}

TEST(SceneTracks, LetsTwoObjectsExchangeTheirIds)
{
    const auto frames = framesOf("frame_rate: 1\nobjects:\n"
                                 "  - {id: 1, path: [{time: 0, position: [0, 0]}, {time: 2}], "
                                 "switches: [{time: 1, id: 2}]}\n"
                                 "  - {id: 2, path: [{time: 0, position: [5, 0]}, {time: 2}], "
                                 "switches: [{time: 1, id: 1}]}\n");
    ASSERT_EQ(frames.size(), 3U);
    EXPECT_EQ(frames[0].actors.at(0).id, 1);
    EXPECT_EQ(frames[1].actors.at(0).id, 2);
    EXPECT_EQ(frames[1].actors.at(0).position->x, 0.0F);
    EXPECT_EQ(frames[1].actors.at(1).id, 1);
}

TEST(SceneTracks, MissesTheShareOfFramesThatIsAskedFor)
{
    const std::string object =
        "duration: 400\nobjects:\n"
        "  - {id: 1, path: [{time: 0, position: [1, 0]}, {time: 400}], missed: ";
    const auto seen = [&object](const std::string& share) {
        const std::vector<float> all = xs(object + share + "}\n");
        return std::count(all.begin(), all.end(), 1.0F);
    };
    EXPECT_EQ(seen("0"), 10'000);
    EXPECT_EQ(seen("1"), 0);
    EXPECT_NEAR(static_cast<double>(seen("0.3")), 7000, 150);
}

TEST(SceneTracks, JittersWithinTheDistanceAskedFor)
{
    const std::vector<float> all =
        xs("objects: [{id: 1, jitter: 0.2, path: [{time: 0, position: [5, 5]}, {time: 100}]}]\n");
    const auto [least, greatest] = std::minmax_element(all.begin(), all.end());
    EXPECT_GE(*least, 4.8F);
    EXPECT_LT(*least, 4.82F);
    EXPECT_LE(*greatest, 5.2F);
    EXPECT_GT(*greatest, 5.18F);
}

TEST(SceneTracks, KeepsTheChanceOfOtherObjectsWhenOneIsAdded)
{
    const std::string one =
        "objects:\n  - {id: 1, jitter: 1, path: [{time: 0, position: [5, 5]}, {time: 1}]}\n";
    const std::string two =
        one + "  - {id: 2, jitter: 1, path: [{time: 0, position: [9, 9]}, {time: 1}]}\n";
    const auto alone = framesOf(one);
    const auto together = framesOf(two);
    ASSERT_EQ(alone.size(), together.size());
    for (std::size_t i = 0; i < alone.size(); ++i) {
        EXPECT_EQ(alone[i].actors.at(0).position->x, together[i].actors.at(0).position->x);
    }
    EXPECT_NE(together[0].actors.at(0).position->x - 5, together[0].actors.at(1).position->x - 9);
}

TEST(SceneTracks, DependsOnTheSeed)
{
    const std::string crowd = "duration: 1\ncrowd: {people: 3}\n";
    const auto text = [](const std::string& scene) {
        return tracksOf(framesOf(scene), TrackFormat::JsonLines);
    };
    EXPECT_EQ(text(crowd), text("seed: 1\n" + crowd));
    EXPECT_NE(text(crowd), text("seed: 2\n" + crowd));
}

TEST(SceneTracks, RoundsMetresToTheCentimetreAndDrawsTheBoxAtScale)
{
    const auto frames = framesOf(
        "pixels_per_metre: 10\nobjects:\n"
        "  - {id: 1, size: [0.6, 1.8, 0.4], path: [{time: 0, position: [2.004, 3.996]}]}\n");
    const TrackedActor& actor = frames.at(0).actors.at(0);
    EXPECT_EQ(actor.position->x, 2.0F);
    EXPECT_EQ(actor.position->y, 4.0F);
    EXPECT_EQ(actor.size->width, 0.6F);
    EXPECT_EQ(actor.size->height, 1.8F);
    EXPECT_EQ(actor.size->depth, 0.4F);
    EXPECT_EQ(actor.box.x, 17);
    EXPECT_EQ(actor.box.width, 6);
    EXPECT_EQ(actor.box.height, 18);
    EXPECT_EQ(actor.box.y + actor.box.height, 40);
}

TEST(SceneTracks, PutsThePositionOfAPixelSceneUnderTheBox)
{
    const auto frames =
        framesOf("unit: pixel\nobjects:\n"
                 "  - {id: 1, size: [25, 62.4], path: [{time: 0, position: [40.2, 230.4]}]}\n");
    const TrackedActor& actor = frames.at(0).actors.at(0);
    EXPECT_EQ(actor.box.x, 28);
    EXPECT_EQ(actor.box.y, 168);
    EXPECT_EQ(actor.box.width, 25);
    EXPECT_EQ(actor.box.height, 62);
    EXPECT_EQ(actor.position->x, 40.5F);
    EXPECT_EQ(actor.position->y, 230.0F);
    EXPECT_FALSE(actor.size.has_value());
}

TEST(SceneTracks, HasADefaultSizeInEachUnit)
{
    const std::string objects = "objects: [{id: 1, path: [{time: 0, position: [50, 100]}]}]\n";
    const TrackedActor metre = framesOf(objects).at(0).actors.at(0);
    EXPECT_EQ(metre.size->width, 0.5F);
    EXPECT_EQ(metre.size->height, 1.75F);
    EXPECT_EQ(metre.size->depth, 0.3F);
    EXPECT_EQ(metre.box.width, 20);
    EXPECT_EQ(metre.box.height, 70);
    const TrackedActor pixel = framesOf("unit: pixel\n" + objects).at(0).actors.at(0);
    EXPECT_EQ(pixel.box.width, 24);
    EXPECT_EQ(pixel.box.height, 60);
}

TEST(SceneTracks, MakesAnObjectWithoutDepthAsDeepAsWide)
{
    const auto frames =
        framesOf("objects: [{id: 1, size: [0.7, 2], path: [{time: 0, position: [5, 5]}]}]\n");
    EXPECT_EQ(frames.at(0).actors.at(0).size->depth, 0.7F);
}

TEST(SceneTracks, LaysAnObjectDownFromAWayPointOn)
{
    const auto frames = framesOf("frame_rate: 1\nobjects:\n"
                                 "  - id: 1\n"
                                 "    path:\n"
                                 "      - {time: 0, position: [5, 5]}\n"
                                 "      - {time: 1, pose: lying}\n"
                                 "      - {time: 2}\n"
                                 "      - {time: 3, pose: standing}\n");
    ASSERT_EQ(frames.size(), 4U);
    const std::vector<bool> isLying{false, true, true, false};
    for (std::size_t i = 0; i < 4; ++i) {
        const TrackedActor& actor = frames[i].actors.at(0);
        EXPECT_EQ(actor.size->width, isLying[i] ? 1.75F : 0.5F);
        EXPECT_EQ(actor.size->height, isLying[i] ? 0.5F : 1.75F);
        EXPECT_EQ(actor.box.width, isLying[i] ? 70 : 20);
        EXPECT_EQ(actor.box.height, isLying[i] ? 20 : 70);
        EXPECT_EQ(actor.box.y + actor.box.height, 200);
    }
}

TEST(SceneTracks, RoundsTheSameWayOnBothSidesOfTheOrigin)
{
    const auto frames =
        framesOf("unit: pixel\nobjects:\n"
                 "  - {id: 1, size: [2, 2], path: [{time: 0, position: [-10.5, -20.5]}]}\n"
                 "  - {id: 2, size: [2, 2], path: [{time: 0, position: [10.5, 20.5]}]}\n");
    EXPECT_EQ(frames.at(0).actors.at(0).box.x, -11);
    EXPECT_EQ(frames.at(0).actors.at(0).box.y, -22);
    EXPECT_EQ(frames.at(0).actors.at(1).box.x, 10);
    EXPECT_EQ(frames.at(0).actors.at(1).box.y, 19);
}

TEST(SceneTracks, KeepsTheCrowdInItsHallAndEveryoneInEveryFrame)
{
    const auto frames = framesOf("duration: 60\ncrowd: {people: 20, area_per_person: 20}\n");
    ASSERT_EQ(frames.size(), 1500U);
    float right = 0;
    float bottom = 0;
    for (const TrackFrame& frame : frames) {
        ASSERT_EQ(frame.actors.size(), 20U);
        for (std::size_t i = 0; i < frame.actors.size(); ++i) {
            const TrackedActor& actor = frame.actors[i];
            ASSERT_EQ(actor.id, static_cast<int>(i) + 1);
            ASSERT_GE(actor.position->x, 0.0F);
            ASSERT_GE(actor.position->y, 0.0F);
            right = std::max(right, actor.position->x);
            bottom = std::max(bottom, actor.position->y);
        }
    }
    // 400 square metres, 4 to 3.
    EXPECT_LE(right, 23.1F);
    EXPECT_GT(right, 21.0F);
    EXPECT_LE(bottom, 17.33F);
    EXPECT_GT(bottom, 15.5F);
}

TEST(SceneTracks, LetsTheCrowdWalkRunAndStopAsAskedFor)
{
    const auto frames = framesOf("duration: 600\ncrowd: {people: 20}\n");
    std::size_t still = 0;
    std::size_t slow = 0;
    std::size_t walking = 0;
    std::size_t running = 0;
    std::size_t tooFast = 0;
    for (std::size_t i = 25; i < frames.size(); i += 25) {
        for (std::size_t person = 0; person < 20; ++person) {
            const TrackPoint now = *frames[i].actors[person].position;
            const TrackPoint before = *frames[i - 25].actors[person].position;
            const double speed = std::hypot(now.x - before.x, now.y - before.y);
            still += speed < 0.02 ? 1 : 0;
            slow += speed >= 0.02 && speed < 0.78 ? 1 : 0;
            walking += speed >= 0.78 && speed < 1.82 ? 1 : 0;
            running += speed >= 1.82 && speed < 4.02 ? 1 : 0;
            tooFast += speed >= 4.02 ? 1 : 0;
        }
    }
    const auto all = static_cast<double>(still + slow + walking + running);
    EXPECT_EQ(tooFast, 0U);
    // A way takes about ten seconds, a stop five after six ways of ten, a run of one way in twenty
    // three and a half.
    EXPECT_NEAR(static_cast<double>(still) / all, 0.2, 0.08);
    EXPECT_GT(static_cast<double>(walking) / all, 0.5);
    EXPECT_GT(static_cast<double>(running) / all, 0.005);
    EXPECT_LT(static_cast<double>(running) / all, 0.05);
    EXPECT_LT(static_cast<double>(slow) / all, 0.25);
}

TEST(SceneTracks, TakesEverySettingOfTheCrowd)
{
    const auto frames =
        framesOf("frame_rate: 1\nduration: 100\ncrowd:\n"
                 "  people: 2\n  area_per_person: 10000\n  aspect: [1, 2]\n  speeds: [1, 1]\n"
                 "  fast_legs: 0\n  fast_speeds: [9, 9]\n  stops: 0\n  stop_times: [3, 3]\n"
                 "  first_id: 40\n  type: ROBOT\n  size: [1, 2, 3]\n");
    ASSERT_EQ(frames.size(), 100U);
    const TrackedActor& first = frames[0].actors.at(0);
    EXPECT_EQ(first.id, 40);
    EXPECT_EQ(frames[0].actors.at(1).id, 41);
    EXPECT_EQ(first.type, "ROBOT");
    EXPECT_EQ(first.size->depth, 3.0F);
    int atSpeed = 0;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        const TrackPoint now = *frames[i].actors[0].position;
        const TrackPoint before = *frames[i - 1].actors[0].position;
        ASSERT_LE(now.x, 100.0F);
        ASSERT_LE(now.y, 200.0F);
        const double speed = std::hypot(now.x - before.x, now.y - before.y);
        atSpeed += std::abs(speed - 1.0) < 0.02 ? 1 : 0;
    }
    EXPECT_GE(atSpeed, 95);
}

TEST(SceneTracks, LetsEveryoneRunWhenAllLegsAreFast)
{
    const auto frames = framesOf(
        "frame_rate: 1\nduration: 50\ncrowd: {people: 1, area_per_person: 10000, fast_legs: 1, "
        "fast_speeds: [4, 4], stops: 0}\n");
    const TrackPoint first = *frames.at(0).actors[0].position;
    const TrackPoint second = *frames.at(1).actors[0].position;
    const double speed = std::hypot(second.x - first.x, second.y - first.y);
    EXPECT_NEAR(speed, 4.0, 0.02);
}

TEST(SceneTracks, PinsTheBytesOfASmallScene)
{
    const std::string folder = SCENARIOMATCH_TEST_DATA "/app/synth/";
    const auto frames = framesOf(wholeFile(folder + "small.yaml"));
    EXPECT_EQ(tracksOf(frames, TrackFormat::JsonLines), wholeFile(folder + "small.jsonl"));
    EXPECT_EQ(tracksOf(frames, TrackFormat::Mot), wholeFile(folder + "small.mot.txt"));
    EXPECT_EQ(tracksOf(frames, TrackFormat::Cvml), wholeFile(folder + "small.xml"));
    EXPECT_EQ(tracksOf(frames, TrackFormat::Trajectory), wholeFile(folder + "small.txt"));
}

TEST(SceneTracks, PinsTheBytesOfASmallCrowd)
{
    const std::string folder = SCENARIOMATCH_TEST_DATA "/app/synth/";
    const auto frames = framesOf(wholeFile(folder + "crowd3.yaml"));
    EXPECT_EQ(tracksOf(frames, TrackFormat::JsonLines), wholeFile(folder + "crowd3.jsonl"));
}

TEST(SceneTracks, MakesTheScenesOfTheDocumentation)
{
    const std::string text = wholeFile(SYNTH_TEST_ROOT "/docs/scenes.md");
    std::size_t scenes = 0;
    const std::string fence = "```yaml\n";
    for (std::size_t at = text.find(fence); at != std::string::npos; at = text.find(fence, at)) {
        at += fence.size();
        EXPECT_FALSE(framesOf(text.substr(at, text.find("```", at) - at)).empty());
        ++scenes;
    }
    EXPECT_EQ(scenes, 2U);
}

TEST(SceneTracks, MakesTheCrowdOfTheExamples)
{
    const auto frames = framesOf(wholeFile(SYNTH_TEST_ROOT "/examples/crowd/crowd20.yaml"));
    EXPECT_EQ(frames.size(), 1500U);
    EXPECT_EQ(frames.at(0).actors.size(), 20U);
}

} // namespace scenariomatch
