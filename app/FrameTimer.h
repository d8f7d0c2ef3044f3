#pragma once

#include "app/TrackFrame.h"

#include <cstdint>
#include <optional>

namespace scenariomatch
{

// Gives frames without a clock one: the first frame has the start, every other one is as many
// frames away from it as its number says, rounded to the millisecond.
class FrameTimer
{
public:
    FrameTimer(TrackClock start, std::optional<double> framesPerSecond);

    bool hasRate() const { return m_framesPerSecond.has_value(); }

    void setRate(double framesPerSecond) { m_framesPerSecond = framesPerSecond; }

    // A frame that has its own clock: the first one of a stream makes the others count from it.
    void note(int frame, const TrackClock& clock);

    // Milliseconds as of clockToMilliseconds; nothing without a rate and past the year 9999.
    std::optional<std::int64_t> milliseconds(int frame);

private:
    std::int64_t m_start;
    std::optional<double> m_framesPerSecond;
    std::optional<int> m_firstFrame;
};

} // namespace scenariomatch
