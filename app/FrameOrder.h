#pragma once

#include "app/FrameTimer.h"
#include "app/TrackFrame.h"
#include "app/TrackProblems.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace scenariomatch
{

// Puts a clock on every frame and sees to it that frames come in order of time: a frame whose
// number does not grow is refused, a clock that goes back is replaced by the one before.
//
// The problems outlive the object.
class FrameOrder
{
public:
    FrameOrder(FrameTimer timer, TrackProblems& problems)
        : m_timer(timer)
        , m_problems(problems)
    {
    }

    FrameTimer& timer() { return m_timer; }

    // Sets number and clock of the frame; false, and the problem reported, when the frame is to be
    // left out. The clock is the tracks' own, if they have one.
    bool admit(
        TrackFrame& frame,
        int number,
        const std::optional<TrackClock>& clock,
        const TrackPlace& place);

private:
    std::optional<std::int64_t>
    timeOf(int number, const std::optional<TrackClock>& clock, const TrackPlace& place);

    FrameTimer m_timer;
    TrackProblems& m_problems;
    std::optional<int> m_lastNumber;
    std::int64_t m_lastTime = 0;
};

} // namespace scenariomatch
