#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace scenariomatch
{

// Where somebody was: milliseconds and a place on the ground.
struct TrackSample
{
    std::int64_t time = 0;
    double x = 0.0;
    double y = 0.0;
};

// A place that is kept of a track, in quanta. Between two of them places lie on the line, but for
// one after a gap: before it nobody was to be seen.
struct KeyPoint
{
    std::int64_t time = 0;
    std::int64_t x = 0;
    std::int64_t y = 0;
    bool isAfterGap = false;
};

// Thins a track: finds key points from which every sample can be told, place for time, up to a
// small departure. Needs the time and memory of one sample each.
//
// Example:
//     KeyPoints points(0.01, 0.05);
//     points.add({0, 1.0, 2.0});
//     points.add({40, 1.1, 2.0});
//     const std::vector<KeyPoint> kept = points.take();
class KeyPoints
{
public:
    // The departure must be more than the quantum.
    KeyPoints(double quantum, double mostDeparture);

    // In order of time; of several samples at a time the first one counts.
    void add(const TrackSample& sample);
    // Out of view: the next sample comes after a gap.
    void interrupt();
    // All key points, once, in the end.
    std::vector<KeyPoint> take();

private:
    // The speeds along an axis that pass all samples since the last key point.
    struct Speeds
    {
        double least = 0.0;
        double most = 0.0;

        bool contains(double speed) const { return speed >= least && speed <= most; }

        void narrow(double distance, double tolerance, double time);
    };

    KeyPoint quantised(const TrackSample& sample) const;
    double speedTo(std::int64_t from, std::int64_t to, double time) const;
    bool isReached(const KeyPoint& point) const;
    void narrowTo(const TrackSample& sample);
    void keepLast();

    double m_quantum;
    // Along each axis.
    double m_tolerance;
    std::vector<KeyPoint> m_kept;
    // The sample after the last key point that was seen last.
    std::optional<KeyPoint> m_last;
    std::optional<std::int64_t> m_lastTime;
    Speeds m_speedsX;
    Speeds m_speedsY;
    bool m_isInterrupted = false;
};

} // namespace scenariomatch
