#include "operators/Values.h"

#include "Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace scenariomatch
{

using namespace samples;

TEST(Values, ReadNothingFromAnEmptyPointer)
{
    const Value missing;
    EXPECT_EQ(number(missing), std::nullopt);
    EXPECT_EQ(truth(missing), nullptr);
    EXPECT_EQ(text(missing), nullptr);
    EXPECT_EQ(timeStamp(missing), nullptr);
    EXPECT_EQ(interval(missing), nullptr);
    EXPECT_FALSE(point(missing));
    EXPECT_EQ(points(missing), nullptr);
}

TEST(Values, ReadNothingFromAValueWhoseTagIsNotItsClass)
{
    for (const std::string& tag : anyTypes()) {
        const Value value = disguised(tag);
        ASSERT_EQ(value->m_type, tag);
        EXPECT_EQ(number(value), std::nullopt) << tag;
        EXPECT_EQ(truth(value), nullptr) << tag;
        EXPECT_EQ(text(value), nullptr) << tag;
        EXPECT_EQ(timeStamp(value), nullptr) << tag;
        EXPECT_EQ(interval(value), nullptr) << tag;
        EXPECT_FALSE(point(value)) << tag;
        EXPECT_EQ(points(value), nullptr) << tag;
    }
}

TEST(Values, ReadBothKindsOfNumbers)
{
    EXPECT_EQ(number(whole(-3)), -3.0);
    EXPECT_EQ(number(decimal(2.5)), 2.5);
    EXPECT_EQ(number(decimal(kInfinity)), kInfinity);
    EXPECT_EQ(number(decimal(kNaN)), std::nullopt);
    EXPECT_EQ(number(word("3")), std::nullopt);
}

TEST(Values, ReadAllKindsOfPoints)
{
    const auto space = point(at(1, 2, 3));
    ASSERT_TRUE(space);
    EXPECT_TRUE(space->hasHeight);
    EXPECT_EQ(space->z, 3.0);
    const auto wholeSpace = point(wholeAt(1, 2, 3));
    ASSERT_TRUE(wholeSpace);
    EXPECT_TRUE(wholeSpace->hasHeight);
    EXPECT_EQ(wholeSpace->y, 2.0);
    const auto plane = point(at(1, 2));
    ASSERT_TRUE(plane);
    EXPECT_FALSE(plane->hasHeight);
    const auto wholePlane = point(wholeAt(1, 2));
    ASSERT_TRUE(wholePlane);
    EXPECT_FALSE(wholePlane->hasHeight);
    EXPECT_EQ(wholePlane->x, 1.0);
}

TEST(Values, ReadNoPointWithoutFiniteCoordinates)
{
    EXPECT_FALSE(point(at(kNaN, 0)));
    EXPECT_FALSE(point(at(0, kInfinity)));
    EXPECT_FALSE(point(at(0, 0, kNaN)));
    EXPECT_EQ(points(ring({{0, 0, 0}, {0, kNaN, 0}})), nullptr);
    EXPECT_EQ(points(ring({{0, 0, -kInfinity}})), nullptr);
    ASSERT_NE(points(ring({})), nullptr);
}

TEST(Values, ReadNoTruthWithoutConfidence)
{
    EXPECT_EQ(truth(fact(true, kNaN)), nullptr);
    EXPECT_NE(truth(fact(true, 0.0)), nullptr);
}

TEST(Values, MeasureInSpaceOnlyBetweenHeights)
{
    const Point low{0, 0, 0, true};
    const Point high{3, 4, 12, true};
    const Point flat{3, 4, 0, false};
    EXPECT_EQ(distanceBetween(low, high), 13.0);
    EXPECT_EQ(distanceBetween(low, flat), 5.0);
    EXPECT_EQ(distanceBetween(flat, high), 0.0);
}

TEST(Values, SecondsAreAsExactAsMilliseconds)
{
    EXPECT_EQ(secondsBetween(*stamp(960), *stamp(1000)), 0.04);
    EXPECT_EQ(secondsBetween(*stamp(10900), *stamp(11100)), 0.2);
    EXPECT_EQ(secondsBetween(*stamp(1001), *stamp(0)), -1.001);
}

TEST(Values, MakeNoMeasureThatIsNotFinite)
{
    EXPECT_EQ(measure(std::nullopt), nullptr);
    EXPECT_EQ(measure(kNaN), nullptr);
    EXPECT_EQ(measure(-kInfinity), nullptr);
    EXPECT_EQ(number(measure(4.0)), 4.0);
}

} // namespace scenariomatch
