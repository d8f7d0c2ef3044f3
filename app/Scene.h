#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A scene to make tracks from, as its file describes it (docs/scenes.md).
//
// Numbers with decimals are whole numbers of thousandths (of the scene's unit, of a second, of a
// frame per second, of certainty), so that all arithmetic is exact and a scene gives the same
// tracks on every machine.
namespace scenariomatch
{

enum class SceneUnit { Metre, Pixel };

enum class ScenePose { Standing, Lying };

// Of the foot point.
struct ScenePosition
{
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t z = 0;
};

// Of a standing object.
struct SceneSize
{
    std::int64_t width = 500;
    std::int64_t height = 1750;
    std::int64_t depth = 300;
};

// From one time up to, but not including, another one.
struct SceneSpan
{
    std::int64_t from = 0;
    std::int64_t to = 0;
};

// Where an object is at a time, and its pose from then on.
struct SceneWayPoint
{
    std::int64_t time = 0;
    ScenePosition position;
    ScenePose pose = ScenePose::Standing;
};

// The id that an object has from a time on.
struct SceneIdentity
{
    std::int64_t time = 0;
    int id = 0;
};

// Exists from its first way point to its last one and moves in a straight line from each to the
// next.
struct SceneObject
{
    int id = 0;
    std::string type = "PERSON";
    SceneSize size;
    // At least one, in order of time.
    std::vector<SceneWayPoint> path;
    // Greatest distance that noise moves the object along each axis.
    std::int64_t jitter = 0;
    // Share of the frames in which the object is missed.
    std::int64_t missed = 0;
    // When the object is not seen.
    std::vector<SceneSpan> gaps;
    // Identity switches, in order of time.
    std::vector<SceneIdentity> switches;
};

// People who walk from one random place of a hall to another.
struct SceneCrowd
{
    int people = 0;
    // Square metres.
    std::int64_t areaPerPerson = 20'000;
    // Width to height of the hall.
    std::array<std::int64_t, 2> aspect{4, 3};
    // Least and greatest, metres a second; of a share of the legs the fast ones.
    std::array<std::int64_t, 2> speeds{800, 1800};
    std::int64_t fastLegs = 50;
    std::array<std::int64_t, 2> fastSpeeds{2500, 4000};
    // Share of the legs after which a person stands still, and for how long.
    std::int64_t stops = 600;
    std::array<std::int64_t, 2> stopTimes{0, 10'000};
    int firstId = 1;
    std::string type = "PERSON";
    SceneSize size;
};

struct Scene
{
    std::int64_t frameRate = 25'000;
    // Milliseconds since 1970-01-01T00:00:00; the default is 2000-01-01T00:00:00.
    std::int64_t start = 946'684'800'000;
    // Frames are made for times from 0 up to, but not including, this one.
    std::int64_t duration = 0;
    std::uint64_t seed = 1;
    SceneUnit unit = SceneUnit::Metre;
    std::int64_t pixelsPerMetre = 40'000;
    std::vector<SceneObject> objects;
    std::optional<SceneCrowd> crowd;

    // Milliseconds from the start to the frame.
    std::int64_t frameTime(std::int64_t frame) const
    {
        return (frame * 1'000'000 + frameRate / 2) / frameRate;
    }
};

} // namespace scenariomatch
