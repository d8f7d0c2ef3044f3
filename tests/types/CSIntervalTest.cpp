#include "types/CSInterval.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace scenariomatch
{
namespace
{

std::shared_ptr<CSTimeStamp> instant(double seconds, double milliseconds)
{
    return std::make_shared<CSTimeStamp>(0, seconds, milliseconds);
}

TEST(CSInterval, HasEmptyEndsByDefault)
{
    const CSInterval interval;
    EXPECT_EQ(interval.m_type, "INTERVAL");
    EXPECT_EQ(interval.m_confidence, 1.0);
    EXPECT_EQ(interval.m_start, nullptr);
    EXPECT_EQ(interval.m_end, nullptr);
}

TEST(CSInterval, SharesItsTimeStamps)
{
    const auto start = instant(1.0, 0.0);
    const auto end = instant(2.0, 0.0);
    const CSInterval interval(start, end);
    end->m_seconds = 5.0;
    EXPECT_EQ(interval.m_type, "INTERVAL");
    EXPECT_EQ(interval.m_start, start);
    EXPECT_EQ(interval.duration(), 4.0);
}

TEST(CSInterval, MeasuresSecondsFromStartToEnd)
{
    EXPECT_EQ(CSInterval(instant(10.0, 750.0), instant(12.0, 250.0)).duration(), 1.5);
    EXPECT_EQ(CSInterval(instant(12.0, 250.0), instant(10.0, 750.0)).duration(), -1.5);
}

TEST(CSInterval, HasNoDurationWithoutBothEnds)
{
    EXPECT_TRUE(std::isnan(CSInterval().duration()));
    EXPECT_TRUE(std::isnan(CSInterval(instant(1.0, 0.0), nullptr).duration()));
    EXPECT_TRUE(std::isnan(CSInterval(nullptr, instant(1.0, 0.0)).duration()));
}

TEST(CSInterval, IsEqualByIdentityOfTheTimeStamps)
{
    const auto start = instant(1.0, 0.0);
    const auto end = instant(2.0, 0.0);
    const CSInterval interval(start, end);
    const auto copy = std::make_unique<CSInterval>(interval);
    EXPECT_TRUE(*copy == interval);
    EXPECT_FALSE(*copy != interval);

    const CSInterval otherStart(std::make_shared<CSTimeStamp>(*start), end);
    EXPECT_FALSE(otherStart == interval);
    EXPECT_TRUE(otherStart != interval);
    const CSInterval otherEnd(start, std::make_shared<CSTimeStamp>(*end));
    EXPECT_FALSE(otherEnd == interval);
    EXPECT_TRUE(otherEnd != interval);
}

TEST(CSInterval, TakesOverTheBasePartByConversion)
{
    CSInterval source(instant(1.0, 0.0), instant(2.0, 0.0));
    source.m_confidence = 0.5;
    source.m_frame = 4;
    const CSInterval converted(static_cast<const CSBasicType&>(source));
    EXPECT_EQ(converted.m_type, "INTERVAL");
    EXPECT_EQ(converted.m_confidence, 0.5);
    EXPECT_EQ(converted.m_frame, 0);
    EXPECT_EQ(converted.m_start, nullptr);
    EXPECT_EQ(converted.m_end, nullptr);
}

TEST(CSInterval, PrintsTheAddressesOfItsTimeStamps)
{
    const auto start = instant(1.0, 0.0);
    std::ostringstream expected;
    expected << static_cast<const void*>(start.get()) << " 0 ";
    std::ostringstream out;
    out << CSInterval(start, nullptr);
    EXPECT_EQ(out.str(), expected.str());
}

} // namespace
} // namespace scenariomatch
