#include "app/FrameClock.h"

#include <array>
#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

constexpr std::int64_t kMillisecondsPerDay = 86'400'000;
constexpr int kFirstYear = 1970;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

int daysInMonth(int year, int month)
{
    constexpr std::array<int, 12> kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeapYear = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && isLeapYear ? 29 : kDays.at(static_cast<std::size_t>(month - 1));
}

// Days from 1970-01-01 in the Gregorian calendar; the year is taken to begin in March so that a
// leap day ends it.
std::int64_t daysFromCivil(int year, int month, int day)
{
    const std::int64_t shifted = month <= 2 ? year - 1 : year;
    const std::int64_t era = (shifted >= 0 ? shifted : shifted - 399) / 400;
    const std::int64_t yearOfEra = shifted - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146'097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719'468;
}

void setDate(TrackClock& clock, std::int64_t days)
{
    const std::int64_t shifted = days + 719'468;
    const std::int64_t era = (shifted >= 0 ? shifted : shifted - 146'096) / 146'097;
    const std::int64_t dayOfEra = shifted - era * 146'097;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    clock.day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    clock.month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    clock.year = static_cast<int>(yearOfEra + era * 400 + (clock.month <= 2 ? 1 : 0));
}

// Takes pieces from the front of a text; once a piece does not fit, every later one fails as well.
class ClockText
{
public:
    explicit ClockText(std::string_view text)
        : m_text(text)
    {
    }

    int number(std::size_t digits)
    {
        if (m_text.size() < digits) {
            m_isGood = false;
        }
        int value = 0;
        for (std::size_t i = 0; m_isGood && i < digits; ++i) {
            m_isGood = isDigit(m_text[i]);
            value = value * 10 + (m_text[i] - '0');
        }
        if (m_isGood) {
            m_text.remove_prefix(digits);
        }
        return m_isGood ? value : 0;
    }

    bool take(std::string_view anyOf)
    {
        const bool isThere =
            m_isGood && !m_text.empty() && anyOf.find(m_text.front()) != std::string_view::npos;
        if (isThere) {
            m_text.remove_prefix(1);
        }
        return isThere;
    }

    void require(std::string_view anyOf) { m_isGood = take(anyOf); }

    // Digits behind the decimal point as milliseconds; what is finer is cut off.
    int fraction()
    {
        int value = 0;
        int weight = 100;
        m_isGood = m_isGood && !m_text.empty() && isDigit(m_text.front());
        while (m_isGood && !m_text.empty() && isDigit(m_text.front())) {
            value += weight * (m_text.front() - '0');
            weight /= 10;
            m_text.remove_prefix(1);
        }
        return value;
    }

    bool hasNext() const { return m_isGood && !m_text.empty(); }

    bool isUsedUp() const { return m_isGood && m_text.empty(); }

private:
    std::string_view m_text;
    bool m_isGood = true;
};

// Reads a zone and says whether it can be one.
bool readZone(ClockText& text)
{
    if (!text.hasNext() || text.take("Zz")) {
        return true;
    }
    text.require("+-");
    const int hours = text.number(2);
    int minutes = 0;
    if (text.take(":") || text.hasNext()) {
        minutes = text.number(2);
    }
    return hours < 24 && minutes < 60;
}

bool isDateAndTime(const TrackClock& clock)
{
    return clock.year >= kFirstYear && clock.month >= 1 && clock.month <= 12 && clock.day >= 1 &&
           clock.day <= daysInMonth(clock.year, clock.month) && clock.hour < 24 &&
           clock.minute < 60 && clock.second < 60;
}

} // namespace

std::int64_t clockToMilliseconds(const TrackClock& clock)
{
    const std::int64_t days = daysFromCivil(clock.year, clock.month, clock.day);
    const std::int64_t seconds =
        (days * 24 + clock.hour) * 3600 + std::int64_t{clock.minute} * 60 + clock.second;
    return seconds * 1000 + clock.millisecond;
}

TrackClock millisecondsToClock(std::int64_t milliseconds)
{
    std::int64_t days = milliseconds / kMillisecondsPerDay;
    std::int64_t rest = milliseconds % kMillisecondsPerDay;
    if (rest < 0) {
        rest += kMillisecondsPerDay;
        --days;
    }
    TrackClock clock;
    setDate(clock, days);
    clock.millisecond = static_cast<int>(rest % 1000);
    clock.second = static_cast<int>(rest / 1000 % 60);
    clock.minute = static_cast<int>(rest / 60'000 % 60);
    clock.hour = static_cast<int>(rest / 3'600'000);
    return clock;
}

std::optional<TrackClock> parseClock(std::string_view text)
{
    ClockText rest(text);
    TrackClock clock;
    clock.year = rest.number(4);
    rest.require("-");
    clock.month = rest.number(2);
    rest.require("-");
    clock.day = rest.number(2);
    rest.require("T ");
    clock.hour = rest.number(2);
    rest.require(":");
    clock.minute = rest.number(2);
    rest.require(":");
    clock.second = rest.number(2);
    if (rest.take(".,")) {
        clock.millisecond = rest.fraction();
    }
    const bool isZone = readZone(rest);
    if (!isZone || !rest.isUsedUp() || !isDateAndTime(clock)) {
        return std::nullopt;
    }
    return clock;
}

std::string printClock(const TrackClock& clock)
{
    return fmt::format(
        "{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}",
        clock.year,
        clock.month,
        clock.day,
        clock.hour,
        clock.minute,
        clock.second,
        clock.millisecond);
}

} // namespace scenariomatch
