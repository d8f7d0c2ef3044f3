#pragma once

#include "app/TrackFrame.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace scenariomatch
{

// A rectangle of the hall that the crowd walks in, in metres.
struct CrowdZone
{
    std::string name;
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    double top = 0.0;
};

// The people that the benchmarks look at: the same ones every time and on every machine.
//
// They walk about in a hall of 20 square metres a person, four to three, seen 25 times a second.
// One way in twenty is run, after six in ten people stand still for up to ten seconds. Positions
// are rounded to the centimetre, and everyone is in every frame.
//
// Example:
//     const Crowd crowd(20, 1500);
//     for (const TrackFrame& frame : crowd.frames()) { ... }
class Crowd
{
public:
    static constexpr int kFramesPerSecond = 25;

    Crowd(int people, int frames);

    int people() const { return m_people; }

    const std::vector<TrackFrame>& frames() const { return m_frames; }

    // A strip from one share of the hall's width to another one, over the middle of its height.
    CrowdZone strip(std::string name, double from, double to) const;
    // The zones that the four questions are about: near the left wall and near the right one.
    CrowdZone zoneA() const;
    CrowdZone zoneB() const;

private:
    int m_people;
    // Of the hall.
    double m_width;
    double m_height;
    std::vector<TrackFrame> m_frames;
};

// Writes the frames of such a crowd as JSON Lines, one after the other.
void writeCrowd(int people, int frames, std::ostream& out);

// The scene context with these zones, as text. A zone's ring is closed, its inside to the left.
std::string crowdContext(const std::vector<CrowdZone>& zones);

} // namespace scenariomatch
