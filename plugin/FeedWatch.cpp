#include "plugin/FeedWatch.h"

#include "types/CSTimeStamp.h"

#include <chrono>
#include <cmath>
#include <string_view>

namespace scenariomatch
{

namespace
{

bool isIn(int value, int least, int greatest)
{
    return value >= least && value <= greatest;
}

bool isInCalendar(const CSTimeStamp& time)
{
    const auto isDay = [&time] {
        const std::chrono::year_month_day date(
            std::chrono::year(time.m_year),
            std::chrono::month(static_cast<unsigned>(time.m_month)),
            std::chrono::day(static_cast<unsigned>(time.m_day)));
        return date.ok();
    };
    return isIn(time.m_year, 1, 9999) && isIn(time.m_month, 1, 12) && isIn(time.m_day, 1, 31) &&
           isDay() && isIn(time.m_hour, 0, 23) && isIn(time.m_minute, 0, 59) &&
           isIn(time.m_second, 0, 59) && isIn(time.m_millisecond, 0, 999);
}

bool isFinite(const Position3D& position)
{
    return std::isfinite(position.x) && std::isfinite(position.y) && std::isfinite(position.z);
}

bool isFinite(const Information3D& size)
{
    return std::isfinite(size.getHeight()) && std::isfinite(size.getWidth()) &&
           std::isfinite(size.getDepth());
}

} // namespace

void FeedWatch::addFrame(const std::shared_ptr<CSTimeStamp>& time)
{
    m_counters.badClocks += isInCalendar(*time) ? 0U : 1U;
    if (m_last) {
        m_counters.framesGoBack += time->m_frameID <= m_last->m_frameID ? 1U : 0U;
        m_counters.clocksGoBack += *time < *m_last ? 1U : 0U;
        m_counters.clockJumps += m_last->duration(*time) > kJumpSeconds ? 1U : 0U;
    }
    m_last = time;
}

void FeedWatch::addActor(const ActorState& actor, bool isFirst)
{
    ++m_counters.actors;
    m_counters.duplicateIds += isFirst ? 0U : 1U;
    m_counters.untracked += actor.id < 0 ? 1U : 0U;
    m_counters.notFinite += isFinite(actor.position) && isFinite(actor.size) ? 0U : 1U;
    m_counters.negativeBoxes += actor.box.width < 0 || actor.box.height < 0 ? 1U : 0U;
    m_counters.unknownTypes += std::string_view(actor.type) == "Mobile" ? 1U : 0U;
}

} // namespace scenariomatch
