#include "app/TrackClockText.h"

#include <chrono>
#include <fmt/format.h>
#include <iterator>

namespace scenariomatch
{

std::string clockText(const TrackClock& clock)
{
    std::string text;
    appendClock(text, clock);
    return text;
}

void appendClock(std::string& text, const TrackClock& clock)
{
    fmt::format_to(
        std::back_inserter(text),
        "{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}",
        clock.year,
        clock.month,
        clock.day,
        clock.hour,
        clock.minute,
        clock.second,
        clock.millisecond);
}

std::int64_t clockMilliseconds(const TrackClock& clock)
{
    namespace time = std::chrono;
    const time::sys_days firstOfMonth =
        time::year{clock.year} / time::January / 1 + time::months{clock.month - 1};
    const std::int64_t days = firstOfMonth.time_since_epoch().count() + std::int64_t{clock.day} - 1;
    const std::int64_t minutes = (days * 24 + clock.hour) * 60 + clock.minute;
    return (minutes * 60 + clock.second) * 1000 + clock.millisecond;
}

TrackClock clockFromMilliseconds(std::int64_t milliseconds)
{
    namespace time = std::chrono;
    const time::sys_time<time::milliseconds> instant{time::milliseconds{milliseconds}};
    const time::sys_days midnight = time::floor<time::days>(instant);
    const time::year_month_day date{midnight};
    const auto ofDay = static_cast<int>((instant - midnight).count());
    TrackClock clock;
    clock.year = static_cast<int>(date.year());
    clock.month = static_cast<int>(static_cast<unsigned>(date.month()));
    clock.day = static_cast<int>(static_cast<unsigned>(date.day()));
    clock.hour = ofDay / 3'600'000;
    clock.minute = ofDay / 60'000 % 60;
    clock.second = ofDay / 1000 % 60;
    clock.millisecond = ofDay % 1000;
    return clock;
}

} // namespace scenariomatch
