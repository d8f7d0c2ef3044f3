#pragma once

#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// Wall clock of a frame, as written in the tracks; a time zone is read and not applied.
struct TrackClock
{
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

// Left, top and size of a 2-D box in pixels.
struct TrackBox
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// A position in metres or, without calibration, in pixels of the foot point.
struct TrackPoint
{
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

// 3-D size in the unit of the positions.
struct TrackSize
{
    float width = 0.0F;
    float height = 0.0F;
    float depth = 0.0F;
};

// One tracked object in one frame. What a format does not carry is absent, never 0.
struct TrackedActor
{
    int id = 0;
    std::string type;
    TrackBox box;
    std::optional<TrackPoint> position;
    std::optional<TrackSize> size;
};

// All tracked objects of one frame: what readers make and writers take.
struct TrackFrame
{
    int number = 0;
    TrackClock clock;
    std::vector<TrackedActor> actors;
};

} // namespace scenariomatch
