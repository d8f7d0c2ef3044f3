#include "operators/comparison/Comparison.h"

#include "Samples.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

// Whether exactly the comparisons that go with the order hold: -1 less, 0 the same, 1 greater.
void expectOrder(const Value& left, const Value& right, int order)
{
    EXPECT_EQ(isTrue(answer(isEqual, {left, right})), order == 0);
    EXPECT_EQ(isTrue(answer(isDifferent, {left, right})), order != 0);
    EXPECT_EQ(isTrue(answer(isLess, {left, right})), order < 0);
    EXPECT_EQ(isTrue(answer(isLessOrEqual, {left, right})), order <= 0);
    EXPECT_EQ(isTrue(answer(isGreater, {left, right})), order > 0);
    EXPECT_EQ(isTrue(answer(isGreaterOrEqual, {left, right})), order >= 0);
}

void expectNone(const Values& arguments)
{
    EXPECT_TRUE(isFalse(answer(isEqual, arguments)));
    EXPECT_TRUE(isFalse(answer(isDifferent, arguments)));
    EXPECT_TRUE(isFalse(answer(isLess, arguments)));
    EXPECT_TRUE(isFalse(answer(isLessOrEqual, arguments)));
    EXPECT_TRUE(isFalse(answer(isGreater, arguments)));
    EXPECT_TRUE(isFalse(answer(isGreaterOrEqual, arguments)));
}

// For values that are the same or not, and have no order.
void expectSameness(const Value& left, const Value& right, bool same)
{
    EXPECT_EQ(isTrue(answer(isEqual, {left, right})), same);
    EXPECT_EQ(isTrue(answer(isDifferent, {left, right})), !same);
    EXPECT_TRUE(isFalse(answer(isLess, {left, right})));
    EXPECT_TRUE(isFalse(answer(isLessOrEqual, {left, right})));
    EXPECT_TRUE(isFalse(answer(isGreater, {left, right})));
    EXPECT_TRUE(isFalse(answer(isGreaterOrEqual, {left, right})));
}

} // namespace

TEST(Comparison, OrdersNumbersOfBothKinds)
{
    expectOrder(whole(3), whole(4), -1);
    expectOrder(whole(3), decimal(3.0), 0);
    expectOrder(decimal(3.5), whole(3), 1);
    expectOrder(decimal(-0.0), decimal(0.0), 0);
    expectOrder(decimal(1.0), decimal(kInfinity), -1);
}

TEST(Comparison, KnowsNoTolerance)
{
    expectOrder(decimal(0.1 + 0.2), decimal(0.3), 1);
}

TEST(Comparison, OrdersTextsByBytes)
{
    expectOrder(word("Desk"), word("Door"), -1);
    expectOrder(word("Desk"), word("Desk"), 0);
    expectOrder(word("Desk1"), word("Desk"), 1);
    expectOrder(word("\xC3\xA9"), word("z"), 1);
}

TEST(Comparison, OrdersTimeStampsByTheirInstants)
{
    expectOrder(stamp(10900), stamp(11100), -1);
    expectOrder(stamp(500), stamp(500), 0);
    expectOrder(
        std::make_shared<CSTimeStamp>(1, 5.0, 0.0), std::make_shared<CSTimeStamp>(2, 5.0, 0.0), 0);
}

TEST(Comparison, ComparesTruthWithoutConfidence)
{
    expectSameness(fact(true, 0.2), fact(true, 0.9), true);
    expectSameness(fact(true), fact(false), false);
}

TEST(Comparison, ComparesPointsOfOneDimension)
{
    expectSameness(at(1, 2, 3), at(1, 2, 3), true);
    expectSameness(at(1, 2, 3), at(1, 2, 4), false);
    expectSameness(at(1, 2), wholeAt(1, 2), true);
    expectSameness(wholeAt(1, 2, 3), at(1, 2, 3), true);
    expectSameness(wholeAt(2, 2), wholeAt(1, 2), false);
    expectNone({at(1, 2), at(1, 2, 0)});
}

TEST(Comparison, ComparesListsOfPoints)
{
    expectSameness(square(), square(), true);
    expectSameness(ring({}), ring({}), true);
    expectSameness(ring({{0, 0, 0}}), ring({{0, 0, 1}}), false);
    expectSameness(ring({{0, 0, 0}}), ring({{0, 0, 0}, {1, 0, 0}}), false);
    expectNone({square(), ring({{0, 0, 0}, {kNaN, 0, 0}})});
}

TEST(Comparison, ComparesIntervalsByTheirTimes)
{
    expectSameness(span(0, 500), span(0, 500), true);
    expectSameness(span(0, 500), span(0, 501), false);
    expectSameness(span(0, 500), span(1, 500), false);
    expectNone({span(0, 500), std::make_shared<CSInterval>()});
    expectNone({std::make_shared<CSInterval>(stamp(0), nullptr), span(0, 500)});
}

TEST(Comparison, IsFalseForUnlikeKinds)
{
    const Values kinds{
        whole(1),
        word("1"),
        stamp(1),
        fact(true),
        at(1, 1),
        at(1, 1, 1),
        square(),
        span(1, 1),
        std::make_shared<CSAccessorAgent>("p", "Position")};
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        for (std::size_t j = 0; j < kinds.size(); ++j) {
            if (i != j) {
                expectNone({kinds[i], kinds[j]});
            }
        }
    }
}

TEST(Comparison, IsFalseForNaN)
{
    expectNone({decimal(kNaN), decimal(kNaN)});
    expectNone({decimal(1), decimal(kNaN)});
    expectNone({at(kNaN, 0), at(kNaN, 0)});
    const Value noTime = std::make_shared<CSTimeStamp>(0, kNaN, 0.0);
    expectNone({noTime, noTime});
    const Value noSpan =
        std::make_shared<CSInterval>(std::make_shared<CSTimeStamp>(0, kNaN, 0.0), stamp(0));
    expectNone({noSpan, noSpan});
    const Value noEnd =
        std::make_shared<CSInterval>(stamp(0), std::make_shared<CSTimeStamp>(0, kNaN, 0.0));
    expectNone({noEnd, noEnd});
}

TEST(Comparison, IsFalseForAccessors)
{
    const Value accessor = std::make_shared<CSAccessorAgent>("p", "Position");
    expectNone({accessor, accessor});
}

TEST(Comparison, IsFalseForMissingArgumentsAndWrongCounts)
{
    expectNone({});
    expectNone({whole(1)});
    expectNone({whole(1), nullptr});
    expectNone({nullptr, whole(1)});
    expectNone({nullptr, nullptr});
    expectNone({whole(1), whole(1), whole(1)});
}

} // namespace scenariomatch
