#include "app/explain/NearMiss.h"

#include "app/FrameClock.h"

#include <tuple>

namespace scenariomatch
{

Moment momentOf(const CSTimeStamp& time)
{
    const TrackClock clock{
        time.m_year,
        time.m_month,
        time.m_day,
        time.m_hour,
        time.m_minute,
        time.m_second,
        time.m_millisecond};
    return {time.m_frameID, clockToMilliseconds(clock)};
}

bool MissRank::operator<(const MissRank& other) const
{
    return std::tie(failing, unmeasured, share) <
           std::tie(other.failing, other.unmeasured, other.share);
}

MissRank MissRank::with(std::optional<double> margin, double scale) const
{
    return {failing + 1, unmeasured + (margin ? 0 : 1), share + (margin ? *margin / scale : 0.0)};
}

} // namespace scenariomatch
