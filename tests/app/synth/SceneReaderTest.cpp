#include "app/SceneReader.h"

#include "tests/app/synth/SceneText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

namespace scenariomatch
{

namespace
{

// A text and the three lines that are said about it.
struct BadScene
{
    std::string name;
    std::string text;
    std::string problem;
};

std::ostream& operator<<(std::ostream& out, const BadScene& scene)
{
    return out << scene.name;
}

class BadSceneTest : public testing::TestWithParam<BadScene>
{
};

const std::string kObject = "objects:\n  - {id: 1, path: [{time: 0, position: [1, 2]}], ";

} // namespace

TEST_P(BadSceneTest, IsRefusedWithPlaceAndReason)
{
    const SceneReading reading = readScene(GetParam().text, "s.yaml");
    EXPECT_FALSE(reading.scene.has_value());
    EXPECT_EQ(reading.problem, GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(
    SceneReader,
    BadSceneTest,
    testing::Values(
        BadScene{"Empty", "", "s.yaml:1:1: a scene is a mapping of keys to values\n\n^\n"},
        BadScene{"List", "- a\n", "s.yaml:1:1: a scene is a mapping of keys to values\n- a\n^\n"},
        BadScene{"NoYaml", "duration: [1\n", "s.yaml:2:1: end of sequence flow not found\n\n^\n"},
        BadScene{
            "TwoDocuments",
            "duration: 1\n---\nduration: 2\n",
            "s.yaml:2:1: a scene file holds one scene\n---\n^\n"},
        BadScene{
            "UnknownKey",
            "durations: 1\n",
            "s.yaml:1:1: a scene has no key 'durations'; it has frame_rate, start, duration, seed, "
            "unit, pixels_per_metre, objects, crowd\ndurations: 1\n^\n"},
        BadScene{
            "KeyThatIsNoText",
            "[a]: 1\n",
            "s.yaml:1:1: a scene has no key a list or mapping; it has frame_rate, start, duration, "
            "seed, unit, pixels_per_metre, objects, crowd\n[a]: 1\n^\n"},
        BadScene{
            "KeyTwice",
            "seed: 1\nseed: 2\n",
            "s.yaml:2:1: the key 'seed' stands here twice\nseed: 2\n^\n"},
        BadScene{
            "NothingToMake",
            "seed: 1\n",
            "s.yaml:1:1: a scene without objects needs the key 'duration'\nseed: 1\n^\n"},
        BadScene{
            "FrameRateZero",
            "frame_rate: 0\n",
            "s.yaml:1:13: 'frame_rate' must be a number from 0.001 to 1000 with at most three "
            "decimals, not '0'\nframe_rate: 0\n            ^\n"},
        BadScene{
            "FrameRateNoNumber",
            "frame_rate: fast\n",
            "s.yaml:1:13: 'frame_rate' must be a number from 0.001 to 1000 with at most three "
            "decimals, not 'fast'\nframe_rate: fast\n            ^\n"},
        BadScene{
            "Start",
            "start: yesterday\n",
            "s.yaml:1:8: 'start' must be a time like 2026-05-04T10:00:00.000\n"
            "start: yesterday\n       ^\n"},
        BadScene{
            "StartOnAnImpossibleDay",
            "start: 2026-02-29T10:00:00\n",
            "s.yaml:1:8: 'start' must be a time like 2026-05-04T10:00:00.000\n"
            "start: 2026-02-29T10:00:00\n       ^\n"},
        BadScene{
            "DurationNegative",
            "duration: -1\n",
            "s.yaml:1:11: 'duration' must be a number from 0.001 to 1000000 with at most three "
            "decimals, not '-1'\nduration: -1\n          ^\n"},
        BadScene{
            "TooManyFrames",
            "frame_rate: 1000\nduration: 10000.001\n",
            "s.yaml:2:11: the scene has more than 10000000 frames\nduration: 10000.001\n"
            "          ^\n"},
        BadScene{
            "SeedNegative",
            "seed: -1\n",
            "s.yaml:1:7: 'seed' must be a whole number from 0 to 9223372036854775807, not '-1'\n"
            "seed: -1\n      ^\n"},
        BadScene{
            "Unit",
            "unit: foot\n",
            "s.yaml:1:7: 'unit' must be metre or pixel\nunit: foot\n      ^\n"},
        BadScene{
            "PixelsPerMetreOfPixels",
            "unit: pixel\npixels_per_metre: 3\n",
            "s.yaml:2:19: 'pixels_per_metre' needs the unit metre\npixels_per_metre: 3\n"
            "                  ^\n"},
        BadScene{
            "ObjectsNoList",
            "objects: 3\n",
            "s.yaml:1:10: 'objects' must be a list\nobjects: 3\n         ^\n"}));

INSTANTIATE_TEST_SUITE_P(
    SceneReaderObjects,
    BadSceneTest,
    testing::Values(
        BadScene{
            "NoMapping",
            "objects: [7]\n",
            "s.yaml:1:11: an object is a mapping of keys to values\nobjects: [7]\n          ^\n"},
        BadScene{
            "NoPath",
            "objects:\n  - {id: 1}\n",
            "s.yaml:2:5: an object needs the key 'path'\n  - {id: 1}\n    ^\n"},
        BadScene{
            "NoId",
            "objects:\n  - {path: []}\n",
            "s.yaml:2:5: an object needs the key 'id'\n  - {path: []}\n    ^\n"},
        BadScene{
            "IdNegative",
            "objects:\n  - {id: -1, path: []}\n",
            "s.yaml:2:10: 'id' must be a whole number from 0 to 2147483647, not '-1'\n"
            "  - {id: -1, path: []}\n         ^\n"},
        BadScene{
            "EmptyPath",
            "objects:\n  - {id: 1, path: []}\n",
            "s.yaml:2:19: 'path' has 1 to 200000 elements, not 0\n  - {id: 1, path: []}\n"
            "                  ^\n"},
        BadScene{
            "EmptyType",
            kObject + "type: ''}\n",
            "s.yaml:2:56: 'type' must be a text of 1 to 256 bytes\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}], type: ''}\n" +
                std::string(55, ' ') + "^\n"},
        BadScene{
            "SizeOfOneNumber",
            kObject + "size: [1]}\n",
            "s.yaml:2:56: 'size' has 2 to 3 elements, not 1\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}], size: [1]}\n" +
                std::string(55, ' ') + "^\n"},
        BadScene{
            "SizeZero",
            kObject + "size: [0, 1]}\n",
            "s.yaml:2:57: 'size' must be a number from 0.001 to 1000 with at most three decimals, "
            "not '0'\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}], size: [0, 1]}\n" +
                std::string(56, ' ') + "^\n"},
        BadScene{
            "Jitter",
            kObject + "jitter: 0.1234}\n",
            "s.yaml:2:58: 'jitter' must be a number from 0 to 100000 with at most three decimals, "
            "not '0.1234'\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}], jitter: 0.1234}\n" +
                std::string(57, ' ') + "^\n"},
        BadScene{
            "MissedMoreThanAll",
            kObject + "missed: 1.1}\n",
            "s.yaml:2:58: 'missed' must be a number from 0 to 1 with at most three decimals, not "
            "'1.1'\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}], missed: 1.1}\n" +
                std::string(57, ' ') + "^\n"},
        BadScene{
            "GapThatEndsFirst",
            kObject + "gaps: [[2, 2]]}\n",
            "s.yaml:2:61: the gap does not end later than it begins\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}], gaps: [[2, 2]]}\n" +
                std::string(60, ' ') + "^\n"},
        BadScene{
            "SwitchBehindThePath",
            kObject + "switches: [{time: 1, id: 2}]}\n",
            "s.yaml:2:68: the switch is not later than what is before it, or later than the path\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}], switches: [{time: 1, id: 2}]}\n" +
                std::string(67, ' ') + "^\n"},
        BadScene{
            "SameIdTwice",
            "objects:\n"
            "  - {id: 1, path: [{time: 0, position: [1, 2]}, {time: 5}]}\n"
            "  - {id: 1, path: [{time: 5, position: [1, 2]}]}\n",
            "s.yaml:3:10: the id 1 stands for two objects at the same time\n"
            "  - {id: 1, path: [{time: 5, position: [1, 2]}]}\n         ^\n"},
        BadScene{
            "IdOfTheCrowd",
            "objects:\n"
            "  - {id: 2, path: [{time: 0, position: [1, 2]}]}\n"
            "crowd: {people: 3}\n",
            "s.yaml:3:8: the id 2 stands for two objects at the same time\ncrowd: {people: 3}\n"
            "       ^\n"}));

INSTANTIATE_TEST_SUITE_P(
    SceneReaderPaths,
    BadSceneTest,
    testing::Values(
        BadScene{
            "NoTime",
            "objects:\n- id: 1\n  path:\n  - {position: [1, 2]}\n",
            "s.yaml:4:5: the first way point needs the key 'time'\n  - {position: [1, 2]}\n"
            "    ^\n"},
        BadScene{
            "NoPosition",
            "objects:\n- id: 1\n  path:\n  - {time: 0}\n",
            "s.yaml:4:5: the first way point needs the key 'position'\n  - {time: 0}\n    ^\n"},
        BadScene{
            "WrongKey",
            "objects:\n- id: 1\n  path:\n  - {time: 0, position: [1, 2]}\n  - {tine: 3}\n",
            "s.yaml:5:6: a way point has no key 'tine'; it has time, position, pose\n"
            "  - {tine: 3}\n     ^\n"},
        BadScene{
            "NotLater",
            "objects:\n- id: 1\n  path:\n  - {time: 2, position: [1, 2]}\n  - {time: 2}\n",
            "s.yaml:5:12: the way point is not later than the one before\n  - {time: 2}\n"
            "           ^\n"},
        BadScene{
            "Pose",
            "objects:\n- id: 1\n  path:\n  - {time: 2, position: [1, 2], pose: odd}\n",
            "s.yaml:4:39: 'pose' must be standing or lying\n"
            "  - {time: 2, position: [1, 2], pose: odd}\n" +
                std::string(38, ' ') + "^\n"},
        BadScene{
            "PositionOfFour",
            "objects:\n- id: 1\n  path:\n  - {time: 2, position: [1, 2, 3, 4]}\n",
            "s.yaml:4:25: 'position' has 2 to 3 elements, not 4\n"
            "  - {time: 2, position: [1, 2, 3, 4]}\n" +
                std::string(24, ' ') + "^\n"},
        BadScene{
            "PixelPositionOfThree",
            "unit: pixel\nobjects:\n- id: 1\n  path:\n  - {time: 2, position: [1, 2, 3]}\n",
            "s.yaml:5:25: 'position' has 2 elements, not 3\n"
            "  - {time: 2, position: [1, 2, 3]}\n" +
                std::string(24, ' ') + "^\n"},
        BadScene{
            "PositionTooFar",
            "objects:\n- id: 1\n  path:\n  - {time: 2, position: [1, 100000.001]}\n",
            "s.yaml:4:29: 'position' must be a number from -100000 to 100000 with at most three "
            "decimals, not '100000.001'\n"
            "  - {time: 2, position: [1, 100000.001]}\n" +
                std::string(28, ' ') + "^\n"}));

INSTANTIATE_TEST_SUITE_P(
    SceneReaderCrowds,
    BadSceneTest,
    testing::Values(
        BadScene{
            "NoPeople",
            "duration: 1\ncrowd: {stops: 1}\n",
            "s.yaml:2:8: a crowd needs the key 'people'\ncrowd: {stops: 1}\n       ^\n"},
        BadScene{
            "TooManyPeople",
            "duration: 1\ncrowd: {people: 4000000000}\n",
            "s.yaml:2:17: 'people' must be a whole number from 1 to 10000, not '4000000000'\n"
            "crowd: {people: 4000000000}\n                ^\n"},
        BadScene{
            "InPixels",
            "unit: pixel\ncrowd: {people: 3}\n",
            "s.yaml:2:8: a crowd needs the unit metre\ncrowd: {people: 3}\n       ^\n"},
        BadScene{
            "WrongKey",
            "crowd: {persons: 3}\n",
            "s.yaml:1:9: a crowd has no key 'persons'; it has people, area_per_person, aspect, "
            "speeds, fast_legs, fast_speeds, stops, stop_times, first_id, type, size\n"
            "crowd: {persons: 3}\n        ^\n"},
        BadScene{
            "SpeedsTheWrongWay",
            "crowd: {people: 3, speeds: [2, 1]}\n",
            "s.yaml:1:32: the second number of 'speeds' is less than the first\n"
            "crowd: {people: 3, speeds: [2, 1]}\n" +
                std::string(31, ' ') + "^\n"},
        BadScene{
            "SpeedZero",
            "crowd: {people: 3, fast_speeds: [0, 1]}\n",
            "s.yaml:1:34: 'fast_speeds' must be a number from 0.001 to 1000 with at most three "
            "decimals, not '0'\ncrowd: {people: 3, fast_speeds: [0, 1]}\n" +
                std::string(33, ' ') + "^\n"},
        BadScene{
            "Aspect",
            "crowd: {people: 3, aspect: [1.5, 1]}\n",
            "s.yaml:1:29: 'aspect' must be a whole number from 1 to 1000, not '1.5'\n"
            "crowd: {people: 3, aspect: [1.5, 1]}\n" +
                std::string(28, ' ') + "^\n"},
        BadScene{
            "AreaTooSmall",
            "crowd: {people: 3, area_per_person: 0}\n",
            "s.yaml:1:37: 'area_per_person' must be a number from 0.1 to 10000 with at most three "
            "decimals, not '0'\ncrowd: {people: 3, area_per_person: 0}\n" +
                std::string(36, ' ') + "^\n"},
        BadScene{
            "IdsTooGreat",
            "crowd: {people: 3, first_id: 2147483646}\n",
            "s.yaml:1:30: the crowd's ids become too great\n"
            "crowd: {people: 3, first_id: 2147483646}\n" +
                std::string(29, ' ') + "^\n"},
        BadScene{
            "NoDuration",
            "crowd: {people: 3}\n",
            "s.yaml:1:1: a scene without objects needs the key 'duration'\n"
            "crowd: {people: 3}\n^\n"}));

TEST(SceneReader, ReadsEveryKeyOfAScene)
{
    const Scene scene = sceneOf(
        "frame_rate: 12.5\nstart: 2026-05-04T10:00:00.250\nduration: 3.5\nseed: 42\nunit: metre\n"
        "pixels_per_metre: 33.3\n"
        "objects:\n"
        "  - id: 7\n    type: BAG\n    size: [0.4, 0.3, 0.2]\n    jitter: 0.01\n"
        "    missed: 0.125\n    gaps: [[0.5, 1]]\n    switches: [{time: 1.5, id: 8}]\n"
        "    path: [{time: 0.25, position: [-1.5, 2, 0.75], pose: lying}, {time: 2}]\n");
    EXPECT_EQ(scene.frameRate, 12'500);
    EXPECT_EQ(scene.start % 1000, 250);
    EXPECT_EQ(scene.duration, 3500);
    EXPECT_EQ(scene.seed, 42U);
    EXPECT_EQ(scene.unit, SceneUnit::Metre);
    EXPECT_EQ(scene.pixelsPerMetre, 33'300);
    ASSERT_EQ(scene.objects.size(), 1U);
    const SceneObject& object = scene.objects[0];
    EXPECT_EQ(object.id, 7);
    EXPECT_EQ(object.type, "BAG");
    EXPECT_EQ(object.size.depth, 200);
    EXPECT_EQ(object.jitter, 10);
    EXPECT_EQ(object.missed, 125);
    ASSERT_EQ(object.gaps.size(), 1U);
    EXPECT_EQ(object.gaps[0].to, 1000);
    ASSERT_EQ(object.switches.size(), 1U);
    EXPECT_EQ(object.switches[0].time, 1500);
    EXPECT_EQ(object.switches[0].id, 8);
    ASSERT_EQ(object.path.size(), 2U);
    EXPECT_EQ(object.path[0].time, 250);
    EXPECT_EQ(object.path[1].position.x, -1500);
    EXPECT_EQ(object.path[1].position.z, 750);
    EXPECT_EQ(object.path[1].pose, ScenePose::Lying);
}

TEST(SceneReader, ReadsEveryKeyOfACrowd)
{
    const Scene scene =
        sceneOf("duration: 1\n"
                "crowd:\n"
                "  people: 5\n  area_per_person: 12.5\n  aspect: [2, 1]\n  speeds: [1, 1.5]\n"
                "  fast_legs: 0.1\n  fast_speeds: [3, 5]\n  stops: 0.5\n  stop_times: [1, 4]\n"
                "  first_id: 100\n  type: DOG\n  size: [0.3, 0.6]\n");
    ASSERT_TRUE(scene.crowd.has_value());
    EXPECT_EQ(scene.crowd->people, 5);
    EXPECT_EQ(scene.crowd->areaPerPerson, 12'500);
    EXPECT_EQ(scene.crowd->aspect[0], 2);
    EXPECT_EQ(scene.crowd->speeds[1], 1500);
    EXPECT_EQ(scene.crowd->fastLegs, 100);
    EXPECT_EQ(scene.crowd->fastSpeeds[1], 5000);
    EXPECT_EQ(scene.crowd->stops, 500);
    EXPECT_EQ(scene.crowd->stopTimes[0], 1000);
    EXPECT_EQ(scene.crowd->firstId, 100);
    EXPECT_EQ(scene.crowd->type, "DOG");
    EXPECT_EQ(scene.crowd->size.depth, 300);
}

TEST(SceneReader, ReadsSmallNegativeDecimals)
{
    const Scene scene = sceneOf("objects: [{id: 1, path: [{time: 0, position: [-0.5, -0]}]}]\n");
    EXPECT_EQ(scene.objects.at(0).path.at(0).position.x, -500);
    EXPECT_EQ(scene.objects.at(0).path.at(0).position.y, 0);
}

TEST(SceneReader, RefusesNumbersThatAreNoPlainDecimals)
{
    for (const char* const number :
         {"1e3",
          ".5",
          "5.",
          "+1",
          "0x10",
          "1,5",
          "nan",
          ".inf",
          "--1",
          "1.-5",
          "1.2.3",
          "''",
          "12345678901234567890123",
          "[1]",
          "~"}) {
        const SceneReading reading = readScene(std::string("duration: ") + number, "s.yaml");
        EXPECT_FALSE(reading.scene.has_value()) << number;
        EXPECT_THAT(reading.problem, testing::StartsWith("s.yaml:1:11: 'duration' must be"))
            << number;
    }
}

TEST(SceneReader, LetsAnIdBeUsedAgainLater)
{
    const Scene scene = sceneOf("objects:\n"
                                "  - {id: 1, path: [{time: 0, position: [1, 2]}, {time: 5}]}\n"
                                "  - {id: 1, path: [{time: 5.001, position: [1, 2]}]}\n");
    EXPECT_EQ(scene.objects.size(), 2U);
}

TEST(SceneReader, ShowsThePartOfALongLineAroundTheFault)
{
    const std::string text = "{" + std::string(500, ' ') + "bad: 1" + std::string(500, ' ') + "}";
    const SceneReading reading = readScene(text, "s.yaml");
    EXPECT_THAT(reading.problem, testing::StartsWith("s.yaml:1:502: a scene has no key 'bad'"));
    EXPECT_THAT(
        reading.problem,
        testing::EndsWith(
            "\n" + std::string(80, ' ') + "bad: 1" + std::string(34, ' ') + "\n" +
            std::string(80, ' ') + "^\n"));
}

TEST(SceneReader, PutsTheCaretUnderTheFaultBehindLettersOfSeveralBytes)
{
    const SceneReading reading = readScene(
        "objects: [{id: 1, type: \"É\", path: [{time: 0, position: [1, 2], pose: x}]}]", "s.yaml");
    EXPECT_THAT(reading.problem, testing::EndsWith("\n" + std::string(70, ' ') + "^\n"));
}

TEST(SceneReader, RefusesAFileThatIsTooLarge)
{
    SceneLimits limits;
    limits.fileBytes = 10;
    const SceneReading reading = readScene("duration: 1.0\n", "s.yaml", limits);
    EXPECT_EQ(reading.problem, "s.yaml:1:1: the file has more than 10 bytes\nduration: 1.0\n^\n");
}

TEST(SceneReader, KeepsItsLimits)
{
    SceneLimits limits;
    limits.objects = 1;
    limits.points = 2;
    limits.people = 3;
    limits.frames = 4;
    const std::string point = "{time: 0, position: [0, 0]}";
    const auto problem = [&limits](const std::string& text) {
        const std::string all = readScene(text, "s.yaml", limits).problem;
        return all.substr(0, all.find('\n'));
    };
    const std::string one = "{id: 1, path: [" + point + "]}";
    EXPECT_EQ(
        problem("objects: [" + one + ", " + one + "]"),
        "s.yaml:1:10: 'objects' has 0 to 1 elements, not 2");
    EXPECT_EQ(
        problem("objects: [{id: 1, path: [" + point + ", {time: 0.1}], gaps: [[1, 2]]}]"),
        "s.yaml:1:75: the scene has more than 2 way points, gaps and switches");
    EXPECT_EQ(
        problem("duration: 1\ncrowd: {people: 4}"),
        "s.yaml:2:17: 'people' must be a whole number from 1 to 3, not '4'");
    EXPECT_EQ(
        problem("frame_rate: 10\nduration: 0.401"),
        "s.yaml:2:11: the scene has more than 4 frames");
    EXPECT_EQ(problem("frame_rate: 10\nduration: 0.4"), "");
}

TEST(SceneReader, BearsAliasesThatStandForManyThings)
{
    std::string text = "objects:\n  - &o {id: 0, path: [{time: 0, position: [0, 0]}";
    for (int i = 1; i < 1000; ++i) {
        text += ", {time: " + std::to_string(i) + "}";
    }
    text += "]}\n";
    for (int i = 0; i < 5000; ++i) {
        text += "  - *o\n";
    }
    const SceneReading reading = readScene(text, "s.yaml");
    EXPECT_THAT(
        reading.problem,
        testing::HasSubstr("the scene has more than 200000 way points, gaps and switches"));
}

TEST(SceneReader, BearsDeepNesting)
{
    EXPECT_FALSE(readScene(std::string(100'000, '['), "s.yaml").scene.has_value());
    EXPECT_FALSE(readScene(std::string(100'000, '{'), "s.yaml").scene.has_value());
}

TEST(SceneReader, BearsBytesThatAreNoText)
{
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        bytes += static_cast<char>(i);
    }
    EXPECT_FALSE(readScene(bytes, "s.yaml").scene.has_value());
    EXPECT_FALSE(readScene(std::string(3, '\0'), "s.yaml").scene.has_value());
    EXPECT_FALSE(readScene("\xff\xfe", "s.yaml").scene.has_value());
}

} // namespace scenariomatch
