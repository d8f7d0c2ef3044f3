#include "app/explain/ZoneBorder.h"

#include <gtest/gtest.h>

#include <limits>

namespace scenariomatch
{

namespace
{

const std::vector<CS3DDPoint> kSquare{{0, 0, 0}, {4, 0, 0}, {4, 2, 0}, {0, 2, 0}};

CSPlainValue::Position at(double x, double y)
{
    return {x, y, 0.0, false};
}

} // namespace

TEST(ZoneBorder, IsNearestOnAnEdgeOrACorner)
{
    const auto edge = nearestBorder(at(1, 5), kSquare);
    EXPECT_EQ(edge->x, 1);
    EXPECT_EQ(edge->y, 2);
    EXPECT_EQ(edge->distance, 3);
    const auto corner = nearestBorder(at(7, 6), kSquare);
    EXPECT_EQ(corner->x, 4);
    EXPECT_EQ(corner->y, 2);
    EXPECT_EQ(corner->distance, 5);
}

TEST(ZoneBorder, IsMeasuredFromInsideToo)
{
    EXPECT_EQ(nearestBorder(at(1, 0.5), kSquare)->distance, 0.5);
    EXPECT_EQ(nearestBorder(at(4, 1), kSquare)->distance, 0);
}

TEST(ZoneBorder, IsNowhereWithoutPointsOrWithoutNumbers)
{
    EXPECT_FALSE(nearestBorder(at(1, 1), {}));
    EXPECT_FALSE(nearestBorder(at(std::numeric_limits<double>::quiet_NaN(), 1), kSquare));
}

TEST(ZoneBorder, HalfSizeIsThatOfTheGreaterSide)
{
    EXPECT_EQ(halfSize(kSquare), 2);
    EXPECT_EQ(halfSize({{3, 3, 0}}), 0);
    EXPECT_EQ(halfSize({}), 0);
}

} // namespace scenariomatch
