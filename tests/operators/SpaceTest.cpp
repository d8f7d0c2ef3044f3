#include "operators/space/Space.h"

#include "Samples.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

void expectInside(const Value& place, const Value& polygon, bool inside)
{
    EXPECT_EQ(isTrue(answer(isIn, {place, polygon})), inside);
    EXPECT_EQ(isTrue(answer(isOut, {place, polygon})), !inside);
}

void expectNeither(const Values& arguments)
{
    EXPECT_TRUE(isFalse(answer(isIn, arguments)));
    EXPECT_TRUE(isFalse(answer(isOut, arguments)));
}

} // namespace

TEST(Space, DistanceIsInSpaceWhenBothHaveAHeight)
{
    EXPECT_EQ(number(answer(distance, {at(0, 0, 0), at(3, 4, 12)})), 13.0);
    EXPECT_EQ(number(answer(distance, {wholeAt(0, 0, 0), at(3, 4, 12)})), 13.0);
    EXPECT_EQ(number(answer(distance, {at(0, 0), at(3, 4, 12)})), 5.0);
    EXPECT_EQ(number(answer(distance, {wholeAt(3, 4), at(0, 0)})), 5.0);
}

TEST(Space, DistanceToAPolygonIsToItsBorderAndZeroInside)
{
    EXPECT_EQ(number(answer(distance, {at(5, 5), square()})), 0.0);
    EXPECT_EQ(number(answer(distance, {at(10, 5), square()})), 0.0);
    EXPECT_EQ(number(answer(distance, {at(12, 5), square()})), 2.0);
    EXPECT_EQ(number(answer(distance, {at(13, 14), square()})), 5.0);
    EXPECT_EQ(number(answer(distance, {square(), at(-2, 5)})), 2.0);
}

TEST(Space, DistanceToAPolygonIgnoresHeights)
{
    EXPECT_EQ(number(answer(distance, {at(12, 5, 100), square()})), 2.0);
    EXPECT_EQ(number(answer(distance, {at(5, 5, 100), square()})), 0.0);
}

TEST(Space, DistanceToFewerThanThreePointsIsToThePointOrLine)
{
    EXPECT_EQ(number(answer(distance, {at(3, 4), ring({{0, 0, 0}})})), 5.0);
    EXPECT_EQ(number(answer(distance, {at(5, 2), ring({{0, 0, 0}, {10, 0, 0}})})), 2.0);
    EXPECT_EQ(number(answer(distance, {at(13, 4), ring({{0, 0, 0}, {10, 0, 0}})})), 5.0);
    EXPECT_EQ(answer(distance, {at(0, 0), ring({})}), nullptr);
}

TEST(Space, TheBorderIsInside)
{
    expectInside(at(5, 5), square(), true);
    expectInside(at(0, 5), square(), true);
    expectInside(at(5, 0), square(), true);
    expectInside(at(0, 0), square(), true);
    expectInside(at(10, 10), square(), true);
    expectInside(at(10.001, 5), square(), false);
    expectInside(at(5, -0.001), square(), false);
    expectInside(at(-1, 10), square(), false);
    expectInside(at(11, 0), square(), false);
}

TEST(Space, TakesPointsOfEveryKind)
{
    expectInside(wholeAt(5, 5), square(), true);
    expectInside(wholeAt(5, 5, 5), square(), true);
    expectInside(at(5, 5, -9), square(), true);
    expectInside(wholeAt(11, 5), square(), false);
}

TEST(Space, ARayThroughCornersCountsOnce)
{
    // A diamond and a comb whose teeth end on one line.
    const Value diamond = ring({{0, -5, 0}, {5, 0, 0}, {0, 5, 0}, {-5, 0, 0}});
    expectInside(at(0, 0), diamond, true);
    expectInside(at(-6, 0), diamond, false);
    expectInside(at(-1, 5), diamond, false);
    expectInside(at(-1, -5), diamond, false);
    const Value comb =
        ring({{0, 0, 0}, {6, 0, 0}, {6, 4, 0}, {5, 2, 0}, {4, 4, 0}, {3, 2, 0}, {2, 4, 0}});
    expectInside(at(1, 1), comb, true);
    expectInside(at(0.5, 2), comb, false);
    expectInside(at(2.5, 2), comb, true);
    expectInside(at(4, 2), comb, true);
    expectInside(at(3, 3), comb, false);
}

TEST(Space, TheOrderOfCornersDoesNotMatter)
{
    const Value clockwise = ring({{0, 10, 0}, {10, 10, 0}, {10, 0, 0}, {0, 0, 0}});
    expectInside(at(5, 5), clockwise, true);
    expectInside(at(15, 5), clockwise, false);
    const Value closed = ring({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}});
    expectInside(at(5, 5), closed, true);
    expectInside(at(15, 0), closed, false);
}

TEST(Space, AFlatPolygonHoldsItsBorderOnly)
{
    const Value flat = ring({{0, 0, 0}, {10, 0, 0}, {5, 0, 0}});
    expectInside(at(7, 0), flat, true);
    expectInside(at(7, 1), flat, false);
    expectInside(at(11, 0), flat, false);
}

TEST(Space, NothingIsInsideOrOutsideFewerThanThreePoints)
{
    expectNeither({at(0, 0), ring({})});
    expectNeither({at(0, 0), ring({{0, 0, 0}})});
    expectNeither({at(0, 0), ring({{0, 0, 0}, {1, 0, 0}})});
}

TEST(Space, InAndOutAreFalseForWrongArguments)
{
    expectNeither({});
    expectNeither({at(5, 5)});
    expectNeither({at(5, 5), square(), square()});
    expectNeither({nullptr, square()});
    expectNeither({at(5, 5), nullptr});
    expectNeither({square(), at(5, 5)});
    expectNeither({at(5, 5), at(5, 5)});
    expectNeither({whole(5), square()});
    expectNeither({at(kNaN, 5), square()});
    expectNeither({at(5, 5), ring({{0, 0, 0}, {10, kNaN, 0}, {0, 10, 0}})});
    const Value noHeight = ring({{0, 0, 0}, {10, 0, kNaN}, {10, 10, 0}, {0, 10, 0}});
    expectNeither({at(5, 5), noHeight});
    expectNeither({at(15, 5), noHeight});
    expectNeither({disguised("3DDPOINT"), square()});
    expectNeither({at(5, 5), disguised("3DDPOINTS")});
}

TEST(Space, DistanceHasNoValueForWrongArguments)
{
    EXPECT_EQ(answer(distance, {}), nullptr);
    EXPECT_EQ(answer(distance, {at(0, 0)}), nullptr);
    EXPECT_EQ(answer(distance, {at(0, 0), at(0, 0), at(0, 0)}), nullptr);
    EXPECT_EQ(answer(distance, {square(), square()}), nullptr);
    for (const Value& wrong :
         Values{nullptr, whole(1), at(kNaN, 0), at(0, 0, kInfinity), disguised("2DDPOINT")}) {
        EXPECT_EQ(answer(distance, {wrong, at(0, 0)}), nullptr);
        EXPECT_EQ(answer(distance, {at(0, 0), wrong}), nullptr);
        EXPECT_EQ(answer(distance, {wrong, square()}), nullptr);
        EXPECT_EQ(answer(distance, {square(), wrong}), nullptr);
    }
}

TEST(Space, DistanceTooLargeForANumberHasNoValue)
{
    constexpr double kFar = 1e200;
    EXPECT_EQ(answer(distance, {at(-kFar, 0), at(kFar, 0)}), nullptr);
    EXPECT_TRUE(isFalse(answer(isNear, {at(-kFar, 0), at(kFar, 0), decimal(1)})));
}

TEST(Space, NearIsAtMostTheDistance)
{
    EXPECT_TRUE(isTrue(answer(isNear, {at(0, 0), at(3, 4), whole(5)})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(0, 0), at(3, 4), decimal(4.999)})));
    EXPECT_TRUE(isTrue(answer(isNear, {at(12, 5), square(), decimal(2)})));
    EXPECT_TRUE(isTrue(answer(isNear, {at(5, 5), square(), whole(0)})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(5, 5), square(), whole(-1)})));
}

TEST(Space, NearIsFalseForWrongArguments)
{
    EXPECT_TRUE(isFalse(answer(isNear, {})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(0, 0), at(0, 0)})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(0, 0), at(0, 0), whole(1), whole(1)})));
    EXPECT_TRUE(isFalse(answer(isNear, {nullptr, at(0, 0), whole(1)})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(0, 0), nullptr, whole(1)})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(0, 0), at(0, 0), nullptr})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(0, 0), at(0, 0), decimal(kNaN)})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(0, 0), at(0, 0), word("1")})));
    EXPECT_TRUE(isFalse(answer(isNear, {at(kNaN, 0), at(0, 0), whole(1)})));
    EXPECT_TRUE(isFalse(answer(isNear, {whole(0), at(0, 0), whole(1)})));
}

} // namespace scenariomatch
