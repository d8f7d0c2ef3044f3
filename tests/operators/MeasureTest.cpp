#include "operators/measure/Measure.h"

#include "Samples.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

Value noTime()
{
    return std::make_shared<CSInterval>(std::make_shared<CSTimeStamp>(0, kNaN, 0.0), stamp(0));
}

Value noEnd()
{
    return std::make_shared<CSInterval>(stamp(0), nullptr);
}

} // namespace

TEST(Measure, DurationIsFromStartToEnd)
{
    EXPECT_EQ(number(answer(duration, {span(960, 1000)})), 0.04);
    EXPECT_EQ(number(answer(duration, {span(0, 90500)})), 90.5);
    EXPECT_EQ(number(answer(duration, {span(700, 700)})), 0.0);
}

TEST(Measure, GapIsFromTheFirstsEndToTheSecondsStart)
{
    EXPECT_EQ(number(answer(gap, {span(0, 1000), span(1040, 5000)})), 0.04);
    EXPECT_EQ(number(answer(gap, {span(0, 1000), span(1000, 5000)})), 0.0);
    EXPECT_EQ(number(answer(gap, {span(0, 3000), span(1000, 5000)})), -2.0);
}

TEST(Measure, HasNoValueForABrokenInterval)
{
    for (const Value& broken : Values{
             nullptr,
             std::make_shared<CSInterval>(),
             noEnd(),
             noTime(),
             span(1000, 999),
             whole(3),
             disguised("INTERVAL")}) {
        EXPECT_EQ(answer(duration, {broken}), nullptr);
        EXPECT_EQ(answer(gap, {broken, span(0, 1)}), nullptr);
        EXPECT_EQ(answer(gap, {span(0, 1), broken}), nullptr);
    }
}

TEST(Measure, HasNoValueForWrongCounts)
{
    EXPECT_EQ(answer(duration, {}), nullptr);
    EXPECT_EQ(answer(duration, {span(0, 1), span(0, 1)}), nullptr);
    EXPECT_EQ(answer(gap, {}), nullptr);
    EXPECT_EQ(answer(gap, {span(0, 1)}), nullptr);
    EXPECT_EQ(answer(gap, {span(0, 1), span(0, 1), span(0, 1)}), nullptr);
}

} // namespace scenariomatch
