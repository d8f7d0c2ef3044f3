#include "types/CSTimeStamp.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <ostream>

namespace
{

// A calendar field may hold anything a host sends; the difference stops at the smallest int.
int minus(int value, int amount)
{
    return std::max(value, std::numeric_limits<int>::min() + amount) - amount;
}

} // namespace

CSTimeStamp::CSTimeStamp()
    : CSBasicType("TIMESTAMP")
{
}

// NOLINTNEXTLINE(readability-function-size): the eight fields are the interface
CSTimeStamp::CSTimeStamp(
    int frameID, int year, int month, int day, int hour, int minute, int second, int millisecond)
    : CSBasicType("TIMESTAMP")
    , m_frameID(frameID)
    , m_year(year)
    , m_month(month)
    , m_day(day)
    , m_hour(hour)
    , m_minute(minute)
    , m_second(second)
    , m_millisecond(millisecond)
{
    computeTime();
}

CSTimeStamp::CSTimeStamp(int frameID, double seconds, double milliseconds)
    : CSBasicType("TIMESTAMP")
    , m_frameID(frameID)
    , m_seconds(seconds)
    , m_milliseconds(milliseconds)
{
}

CSTimeStamp::CSTimeStamp(const CSBasicType& other)
    : CSBasicType(Converted{other})
{
}

void CSTimeStamp::computeTime()
{
    std::tm calendar{};
    calendar.tm_year = minus(m_year, 1900);
    calendar.tm_mon = minus(m_month, 1);
    calendar.tm_mday = m_day;
    calendar.tm_hour = m_hour;
    calendar.tm_min = m_minute;
    calendar.tm_sec = m_second;
    // Durations stay right over the night when the clocks change.
    calendar.tm_isdst = 0;
    m_seconds = static_cast<double>(std::mktime(&calendar));
    m_milliseconds = m_millisecond;
}

double CSTimeStamp::duration(const CSTimeStamp* other) const
{
    if (other == nullptr) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return (other->m_seconds - m_seconds) + (other->m_milliseconds - m_milliseconds) / 1000.0;
}

double CSTimeStamp::duration(const CSTimeStamp& other) const
{
    return duration(&other);
}

double CSTimeStamp::duration(const std::shared_ptr<CSTimeStamp>& other) const
{
    return duration(other.get());
}

bool CSTimeStamp::operator==(const CSTimeStamp& other) const
{
    return m_seconds == other.m_seconds && m_milliseconds == other.m_milliseconds;
}

bool CSTimeStamp::operator!=(const CSTimeStamp& other) const
{
    return !(*this == other);
}

bool CSTimeStamp::operator<(const CSTimeStamp& other) const
{
    if (m_seconds < other.m_seconds) {
        return true;
    }
    if (m_seconds > other.m_seconds) {
        return false;
    }
    return m_milliseconds < other.m_milliseconds;
}

bool CSTimeStamp::operator<=(const CSTimeStamp& other) const
{
    if (m_seconds < other.m_seconds) {
        return true;
    }
    if (m_seconds > other.m_seconds) {
        return false;
    }
    return m_milliseconds <= other.m_milliseconds;
}

bool CSTimeStamp::operator>(const CSTimeStamp& other) const
{
    if (m_seconds > other.m_seconds) {
        return true;
    }
    if (m_seconds < other.m_seconds) {
        return false;
    }
    return m_milliseconds > other.m_milliseconds;
}

bool CSTimeStamp::operator>=(const CSTimeStamp& other) const
{
    if (m_seconds > other.m_seconds) {
        return true;
    }
    if (m_seconds < other.m_seconds) {
        return false;
    }
    return m_milliseconds >= other.m_milliseconds;
}

double CSTimeStamp::operator+(const CSTimeStamp& other) const
{
    return (m_seconds + other.m_seconds) + (m_milliseconds + other.m_milliseconds) / 1000.0;
}

double CSTimeStamp::operator-(const CSTimeStamp& other) const
{
    return (m_seconds - other.m_seconds) + (m_milliseconds - other.m_milliseconds) / 1000.0;
}

std::ostream& operator<<(std::ostream& out, const CSTimeStamp& value)
{
    return out << value.m_seconds << " " << value.m_milliseconds << " ";
}
