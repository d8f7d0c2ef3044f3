#include "operators/Values.h"

#include "Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

CSPlainValue view(const Value& value)
{
    return CSPlainValue(value.get());
}

// The point of a view that is gone.
std::optional<Point> pointOf(const Value& value)
{
    const CSPlainValue plain = view(value);
    const Point* found = point(plain);
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

void expectNothing(const Value& value)
{
    SCOPED_TRACE(value ? value->m_type : "missing");
    EXPECT_EQ(number(value), std::nullopt);
    EXPECT_FALSE(isTruth(view(value)));
    EXPECT_FALSE(hasBothEnds(view(value)));
    EXPECT_FALSE(pointOf(value));
    EXPECT_EQ(points(view(value)), nullptr);
}

} // namespace

TEST(Values, ReadNothingFromAnEmptyPointer)
{
    expectNothing(nullptr);
}

TEST(Values, ReadNothingFromAValueWhoseTagIsNotItsClass)
{
    for (const std::string& tag : anyTypes()) {
        const Value value = disguised(tag);
        ASSERT_EQ(value->m_type, tag);
        expectNothing(value);
    }
}

TEST(Values, ReadNothingFromOtherKinds)
{
    expectNothing(word("3"));
    expectNothing(stamp(3));
    expectNothing(std::make_shared<CSAccessorAgent>("p", "Position"));
}

TEST(Values, ReadBothKindsOfNumbers)
{
    EXPECT_EQ(number(whole(-3)), -3.0);
    EXPECT_EQ(number(decimal(2.5)), 2.5);
    EXPECT_EQ(number(decimal(kInfinity)), kInfinity);
    EXPECT_EQ(number(decimal(kNaN)), std::nullopt);
}

TEST(Values, ReadIntervalsWithBothEnds)
{
    const auto start = stamp(0);
    EXPECT_TRUE(hasBothEnds(view(span(0, 1))));
    EXPECT_FALSE(hasBothEnds(CSPlainValue::interval(start.get(), nullptr)));
    EXPECT_FALSE(hasBothEnds(CSPlainValue::interval(nullptr, start.get())));
    EXPECT_TRUE(hasBothEnds(CSPlainValue::interval(start.get(), start.get())));
}

TEST(Values, ReadAllKindsOfPoints)
{
    const auto space = pointOf(at(1, 2, 3));
    ASSERT_TRUE(space);
    EXPECT_TRUE(space->hasHeight);
    EXPECT_EQ(space->z, 3.0);
    const auto wholeSpace = pointOf(wholeAt(1, 2, 3));
    ASSERT_TRUE(wholeSpace);
    EXPECT_TRUE(wholeSpace->hasHeight);
    EXPECT_EQ(wholeSpace->y, 2.0);
    const auto plane = pointOf(at(1, 2));
    ASSERT_TRUE(plane);
    EXPECT_FALSE(plane->hasHeight);
    const auto wholePlane = pointOf(wholeAt(1, 2));
    ASSERT_TRUE(wholePlane);
    EXPECT_FALSE(wholePlane->hasHeight);
    EXPECT_EQ(wholePlane->x, 1.0);
}

TEST(Values, ReadNoPointWithoutFiniteCoordinates)
{
    EXPECT_FALSE(pointOf(at(kNaN, 0)));
    EXPECT_FALSE(pointOf(at(0, kInfinity)));
    EXPECT_FALSE(pointOf(at(0, 0, kNaN)));
    const Value noNumber = ring({{0, 0, 0}, {0, kNaN, 0}});
    const Value endless = ring({{0, 0, -kInfinity}});
    const Value empty = ring({});
    EXPECT_EQ(points(view(noNumber)), nullptr);
    EXPECT_EQ(points(view(endless)), nullptr);
    EXPECT_NE(points(view(empty)), nullptr);
}

TEST(Values, ReadNoTruthWithoutConfidence)
{
    EXPECT_FALSE(isTruth(view(fact(true, kNaN))));
    EXPECT_TRUE(isTruth(view(fact(true, 0.0))));
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
    EXPECT_TRUE(measure(std::nullopt).isNone());
    EXPECT_TRUE(measure(kNaN).isNone());
    EXPECT_TRUE(measure(-kInfinity).isNone());
    EXPECT_EQ(number(measure(4.0)), 4.0);
}

TEST(Values, AreBoxedByTheirKind)
{
    const Value truth = boxed(CSPlainValue::boolean(true, 0.25), {});
    ASSERT_EQ(truth->m_type, "BOOL");
    EXPECT_TRUE(isTrue(truth));
    EXPECT_EQ(truth->m_confidence, 0.25);
    const Value measured = boxed(CSPlainValue::number(2.5), {});
    EXPECT_EQ(measured->m_type, "DOUBLE");
    EXPECT_EQ(number(measured), 2.5);
    EXPECT_EQ(boxed(CSPlainValue(), {whole(1)}), nullptr);
}

TEST(Values, AreBoxedAsTheArgumentTheyAre)
{
    const Values arguments{whole(1), nullptr, word("Desk"), whole(1)};
    for (const Value& argument : arguments) {
        EXPECT_EQ(boxed(view(argument), arguments), argument);
    }
    EXPECT_EQ(boxed(view(whole(1)), arguments), nullptr);
}

} // namespace scenariomatch
