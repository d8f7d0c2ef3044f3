#include "types/CSTimeStamp.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <sstream>
#include <string>

namespace scenariomatch
{
namespace
{

// Puts the process into a time zone while it lives.
class TimeZone
{
public:
    explicit TimeZone(const char* rule)
    {
        if (const char* before = std::getenv("TZ")) {
            m_before = before;
        }
        setenv("TZ", rule, 1);
        tzset();
    }

    TimeZone(const TimeZone&) = delete;
    TimeZone(TimeZone&&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    TimeZone& operator=(TimeZone&&) = delete;

    ~TimeZone()
    {
        if (m_before) {
            setenv("TZ", m_before->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

private:
    std::optional<std::string> m_before;
};

constexpr const char* kCentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

CSTimeStamp instant(double seconds, double milliseconds)
{
    return {0, seconds, milliseconds};
}

std::string printed(const CSTimeStamp& value)
{
    std::ostringstream out;
    out << value;
    return out.str();
}

TEST(CSTimeStamp, IsZeroByDefault)
{
    const CSTimeStamp stamp;
    EXPECT_EQ(stamp.m_type, "TIMESTAMP");
    EXPECT_EQ(stamp.m_confidence, 1.0);
    EXPECT_EQ(stamp.m_frameID, 0);
    EXPECT_EQ(stamp.m_year, 0);
    EXPECT_EQ(stamp.m_month, 0);
    EXPECT_EQ(stamp.m_day, 0);
    EXPECT_EQ(stamp.m_hour, 0);
    EXPECT_EQ(stamp.m_minute, 0);
    EXPECT_EQ(stamp.m_second, 0);
    EXPECT_EQ(stamp.m_millisecond, 0);
    EXPECT_EQ(stamp.m_seconds, 0.0);
    EXPECT_EQ(stamp.m_milliseconds, 0.0);
}

TEST(CSTimeStamp, StoresTheCalendarFieldsInOrderAndComputesTheInstant)
{
    const TimeZone zone("UTC0");
    const CSTimeStamp stamp(17, 2010, 3, 15, 2, 26, 39, 40);
    EXPECT_EQ(stamp.m_type, "TIMESTAMP");
    EXPECT_EQ(stamp.m_frameID, 17);
    EXPECT_EQ(stamp.m_year, 2010);
    EXPECT_EQ(stamp.m_month, 3);
    EXPECT_EQ(stamp.m_day, 15);
    EXPECT_EQ(stamp.m_hour, 2);
    EXPECT_EQ(stamp.m_minute, 26);
    EXPECT_EQ(stamp.m_second, 39);
    EXPECT_EQ(stamp.m_millisecond, 40);
    EXPECT_EQ(stamp.m_seconds, 1268619999.0);
    EXPECT_EQ(stamp.m_milliseconds, 40.0);
}

TEST(CSTimeStamp, StoresAnInstantWithoutComputingIt)
{
    const CSTimeStamp stamp(5, 1268619999.0, 40.0);
    EXPECT_EQ(stamp.m_type, "TIMESTAMP");
    EXPECT_EQ(stamp.m_frameID, 5);
    EXPECT_EQ(stamp.m_seconds, 1268619999.0);
    EXPECT_EQ(stamp.m_milliseconds, 40.0);
    EXPECT_EQ(stamp.m_year, 0);
    EXPECT_EQ(stamp.m_millisecond, 0);
}

TEST(CSTimeStamp, RecomputesTheInstantFromChangedFields)
{
    const TimeZone zone("UTC0");
    CSTimeStamp stamp(5, 1.0, 2.0);
    stamp.m_year = 1970;
    stamp.m_month = 1;
    stamp.m_day = 2;
    stamp.m_millisecond = 999;
    stamp.computeTime();
    EXPECT_EQ(stamp.m_seconds, 86400.0);
    EXPECT_EQ(stamp.m_milliseconds, 999.0);
}

TEST(CSTimeStamp, ReadsTheCalendarInTheProcessTimeZone)
{
    const TimeZone zone("XYZ-3");
    EXPECT_EQ(CSTimeStamp(0, 1970, 1, 2, 0, 0, 0, 0).m_seconds, 86400.0 - 3 * 3600.0);
}

TEST(CSTimeStamp, KnowsNoDaylightSaving)
{
    const TimeZone zone(kCentralEurope);
    // Noon of 1 July 2010 is read as 11:00 UTC, the winter time's hour, not as 10:00 UTC.
    EXPECT_EQ(CSTimeStamp(0, 2010, 7, 1, 12, 0, 0, 0).m_seconds, 1277982000.0);
    const CSTimeStamp before(0, 2010, 3, 28, 1, 30, 0, 0);
    const CSTimeStamp after(0, 2010, 3, 28, 3, 30, 0, 0);
    EXPECT_EQ(before.duration(after), 2 * 3600.0);
}

TEST(CSTimeStamp, KeepsTheMillisecondsApartFromTheSeconds)
{
    const TimeZone zone("UTC0");
    const CSTimeStamp stamp(0, 1970, 1, 1, 0, 0, 1, 2500);
    EXPECT_EQ(stamp.m_seconds, 1.0);
    EXPECT_EQ(stamp.m_milliseconds, 2500.0);
}

TEST(CSTimeStamp, BearsCalendarFieldsThatNoCalendarHas)
{
    const TimeZone zone("UTC0");
    EXPECT_EQ(CSTimeStamp(0, 1970, 1, 1, 0, 0, 90, 0).m_seconds, 90.0);
    EXPECT_EQ(CSTimeStamp(0, INT_MIN, INT_MIN, 1, 0, 0, 0, 0).m_seconds, -1.0);
}

TEST(CSTimeStamp, MeasuresSecondsToTheOther)
{
    const TimeZone zone("UTC0");
    const CSTimeStamp earlier(1, 2010, 3, 15, 10, 0, 0, 900);
    const CSTimeStamp later(2, 2010, 3, 15, 10, 0, 1, 100);
    EXPECT_NEAR(earlier.duration(later), 0.2, 1e-12);
    EXPECT_NEAR(later.duration(earlier), -0.2, 1e-12);
    EXPECT_LT(earlier, later);
}

TEST(CSTimeStamp, MeasuresTheSameInAllThreeForms)
{
    const CSTimeStamp start = instant(10.0, 250.0);
    const auto end = std::make_shared<CSTimeStamp>(0, 12.0, 500.0);
    EXPECT_EQ(start.duration(*end), 2.25);
    EXPECT_EQ(start.duration(end.get()), 2.25);
    EXPECT_EQ(start.duration(end), 2.25);
}

TEST(CSTimeStamp, HasNoDurationToNothing)
{
    EXPECT_TRUE(std::isnan(instant(1.0, 0.0).duration(std::shared_ptr<CSTimeStamp>())));
    EXPECT_TRUE(std::isnan(instant(1.0, 0.0).duration(static_cast<const CSTimeStamp*>(nullptr))));
}

TEST(CSTimeStamp, AddsAndSubtractsToSeconds)
{
    const CSTimeStamp left = instant(100.0, 750.0);
    const CSTimeStamp right = instant(40.0, 500.0);
    EXPECT_EQ(left + right, 141.25);
    EXPECT_EQ(left - right, 60.25);
    EXPECT_EQ(right - left, -60.25);
}

TEST(CSTimeStamp, IsEqualByTheInstantAlone)
{
    CSTimeStamp left(1, 10.0, 20.0);
    CSTimeStamp right(2, 10.0, 20.0);
    right.m_year = 1999;
    EXPECT_TRUE(left == right);
    EXPECT_FALSE(left != right);
    right.m_milliseconds = 21.0;
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left != right);
    left.m_milliseconds = 21.0;
    left.m_seconds = 10.5;
    EXPECT_FALSE(left == right);
    EXPECT_TRUE(left != right);
}

TEST(CSTimeStamp, ComparesSecondsFirstAndMillisecondsSecond)
{
    struct Case
    {
        CSTimeStamp left;
        CSTimeStamp right;
        bool less, lessOrEqual, greater, greaterOrEqual;
    };

    const std::vector<Case> cases{
        {instant(1, 900), instant(2, 100), true, true, false, false},
        {instant(2, 100), instant(1, 900), false, false, true, true},
        {instant(1, 100), instant(1, 200), true, true, false, false},
        {instant(1, 200), instant(1, 100), false, false, true, true},
        {instant(1, 100), instant(1, 100), false, true, false, true},
        // 1 s + 2500 ms is later than 2 s + 100 ms, but the seconds decide.
        {instant(1, 2500), instant(2, 100), true, true, false, false},
        {instant(1, NAN), instant(1, 0), false, false, false, false},
        {instant(NAN, 1), instant(1, 0), false, false, true, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(printed(c.left) + "and " + printed(c.right));
        EXPECT_EQ(c.left < c.right, c.less);
        EXPECT_EQ(c.left <= c.right, c.lessOrEqual);
        EXPECT_EQ(c.left > c.right, c.greater);
        EXPECT_EQ(c.left >= c.right, c.greaterOrEqual);
    }
}

TEST(CSTimeStamp, CopiesAllFields)
{
    const CSTimeStamp stamp(17, 2010, 3, 15, 2, 26, 39, 40);
    const CSTimeStamp copy(stamp);
    EXPECT_EQ(copy, stamp);
    EXPECT_EQ(copy.m_frameID, 17);
    EXPECT_EQ(copy.m_year, 2010);
    EXPECT_EQ(copy.m_millisecond, 40);
}

TEST(CSTimeStamp, TakesOverTheBasePartByConversion)
{
    CSBasicType source("INT");
    source.m_confidence = 0.25;
    source.m_flag = true;
    source.m_frame = 9;
    source.m_history[1] = std::make_shared<CSBasicType>();

    const CSTimeStamp converted(source);

    EXPECT_EQ(converted.m_type, "INT");
    EXPECT_EQ(converted.m_confidence, 0.25);
    EXPECT_TRUE(converted.m_flag);
    EXPECT_EQ(converted.m_frame, 0);
    EXPECT_EQ(converted.m_history, source.m_history);
    EXPECT_EQ(converted.m_seconds, 0.0);
    EXPECT_EQ(converted.m_year, 0);
}

TEST(CSTimeStamp, PrintsSecondsAndMillisecondsInTheStreamsFormat)
{
    EXPECT_EQ(printed(instant(1268619999.0, 40.0)), "1.26862e+09 40 ");
    EXPECT_EQ(printed(instant(12.5, 0.0)), "12.5 0 ");
    std::ostringstream exact;
    exact.precision(12);
    exact << instant(1268619999.0, 40.0);
    EXPECT_EQ(exact.str(), "1268619999 40 ");
}

} // namespace
} // namespace scenariomatch
