#pragma once

#include "app/TrackFrame.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace scenariomatch
{

// How exactly places are kept: quantum and the most that a place departs from the track.
struct TrackPrecision
{
    // Of a scene whose larger side is so long.
    static TrackPrecision ofScene(double side);

    double quantum = 0.0;
    double departure = 0.0;
};

// Keeps where all tracked objects were, frame by frame.
class ActorTracks
{
public:
    // Milliseconds from the first frame.
    void addFrame(const TrackFrame& frame, std::int64_t time);

    struct Actor
    {
        // As the tracks wrote it first.
        std::string type;
        std::int64_t first = 0;
        std::int64_t last = 0;
    };

    // By identifier.
    std::map<int, Actor> actors() const;
    // The larger side of the ground that all of them have covered.
    double side() const;
    // One JSON object of key points, the actors in order of their identifiers; see docs/report.md.
    std::string json(const TrackPrecision& precision) const;

private:
    struct Place
    {
        std::int64_t time = 0;
        float x = 0.0F;
        float y = 0.0F;
    };

    // From one frame to the next, so many times.
    struct Step
    {
        std::int64_t milliseconds = 0;
        std::size_t times = 0;
    };

    struct Track
    {
        Actor actor;
        // Indexes of places before which the actor was out of view for more than a second.
        std::vector<std::size_t> gaps;
        std::vector<Place> places;
        // The frame after the last one in which it had a place.
        std::size_t nextFrame = 0;
    };

    void addStep(std::int64_t step);
    bool isAfterGap(const Track& track, std::int64_t time) const;
    static void appendTrack(const Track& track, const TrackPrecision& precision, std::string& text);

    std::map<int, Track> m_tracks;
    std::size_t m_frames = 0;
    std::vector<Step> m_steps;
    std::int64_t m_lastTime = 0;
};

} // namespace scenariomatch
