#include "app/FrameOrder.h"

#include "app/FrameClock.h"

#include <fmt/format.h>

namespace scenariomatch
{

bool FrameOrder::admit(
    TrackFrame& frame, int number, const std::optional<TrackClock>& clock, const TrackPlace& place)
{
    if (m_lastNumber && number <= *m_lastNumber) {
        m_problems.report(
            Oddity::FrameGoesBack,
            place,
            fmt::format("frame {} comes after frame {}", number, *m_lastNumber));
        return false;
    }
    std::optional<std::int64_t> time = timeOf(number, clock, place);
    if (!time) {
        return false;
    }
    if (m_lastNumber && *time < m_lastTime) {
        m_problems.report(
            Oddity::ClockGoesBack,
            place,
            fmt::format(
                "the clock goes back by {} ms; the frame before lends its own",
                m_lastTime - *time));
        time = m_lastTime;
    }
    frame.number = number;
    frame.clock = millisecondsToClock(*time);
    m_lastNumber = number;
    m_lastTime = *time;
    return true;
}

std::optional<std::int64_t>
FrameOrder::timeOf(int number, const std::optional<TrackClock>& clock, const TrackPlace& place)
{
    if (clock) {
        m_timer.note(number, *clock);
        return clockToMilliseconds(*clock);
    }
    const std::optional<std::int64_t> time = m_timer.milliseconds(number);
    if (!time && !m_timer.hasRate()) {
        m_problems.report(
            Oddity::Malformed,
            place,
            "the frame has no time, and no frame rate was given with --fps");
    } else if (!time) {
        m_problems.report(Oddity::OutOfRange, place, "the frame would be later than the year 9999");
    }
    return time;
}

} // namespace scenariomatch
