#include "app/explain/ValueWords.h"

#include "app/explain/NumberWords.h"
#include "types/CSAllTypes.h"

#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

std::string pointText(const CSPlainValue::Position& point)
{
    const std::string plane = numberText(point.x) + ", " + numberText(point.y);
    return point.hasHeight ? fmt::format("({}, {})", plane, numberText(point.z))
                           : fmt::format("({})", plane);
}

std::string timeText(const CSTimeStamp& time)
{
    return fmt::format(
        "{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}",
        time.m_year,
        time.m_month,
        time.m_day,
        time.m_hour,
        time.m_minute,
        time.m_second,
        time.m_millisecond);
}

std::string intervalText(const CSPlainValue::Span& interval)
{
    if (interval.start == nullptr || interval.end == nullptr) {
        return "a time without end";
    }
    return fmt::format("{} s", numberText(interval.start->duration(*interval.end)));
}

} // namespace

std::string valueText(const CSPlainValue& value)
{
    switch (value.m_kind) {
    case CSPlainValue::Kind::None:
        return "no value";
    case CSPlainValue::Kind::Bool:
        return value.m_truth ? "true" : "false";
    case CSPlainValue::Kind::Number:
        return numberText(value.m_number);
    case CSPlainValue::Kind::Point:
        return pointText(value.m_point);
    case CSPlainValue::Kind::Interval:
        return intervalText(value.m_interval);
    case CSPlainValue::Kind::Text:
        return value.text()->m_value;
    case CSPlainValue::Kind::TimeStamp:
        return timeText(*value.timeStamp());
    case CSPlainValue::Kind::Points:
        return fmt::format("{} points", value.points()->m_points.size());
    case CSPlainValue::Kind::Other:
        break;
    }
    return "a value of another kind";
}

} // namespace scenariomatch
