#include "app/FrameTimer.h"

#include "app/FrameClock.h"

#include <cmath>

namespace scenariomatch
{

FrameTimer::FrameTimer(TrackClock start, std::optional<double> framesPerSecond)
    : m_start(clockToMilliseconds(start))
    , m_framesPerSecond(framesPerSecond)
{
}

void FrameTimer::note(int frame, const TrackClock& clock)
{
    if (!m_firstFrame) {
        m_firstFrame = frame;
        m_start = clockToMilliseconds(clock);
    }
}

std::optional<std::int64_t> FrameTimer::milliseconds(int frame)
{
    if (!m_framesPerSecond) {
        return std::nullopt;
    }
    static const auto kLatest =
        static_cast<double>(clockToMilliseconds({9999, 12, 31, 23, 59, 59, 999}));
    m_firstFrame = m_firstFrame.value_or(frame);
    const double passed =
        (static_cast<double>(frame) - *m_firstFrame) * 1000.0 / *m_framesPerSecond;
    if (static_cast<double>(m_start) + passed > kLatest) {
        return std::nullopt;
    }
    return m_start + std::llround(passed);
}

} // namespace scenariomatch
