#include "LoadedOperators.h"
#include "Walk.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

// Whoever skips candidates trusts in what operators say that they mean.
std::vector<CSOperatorInterfaceAbstract*> thatMean(CSOperatorMeaning meaning)
{
    std::vector<CSOperatorInterfaceAbstract*> found;
    for (const LoadedOperator& loaded : loadedOperators()) {
        if (loaded.object->describe().m_meaning == meaning) {
            found.push_back(loaded.object);
        }
    }
    EXPECT_FALSE(found.empty());
    return found;
}

bool holds(CSOperatorInterfaceAbstract& op, const Values& arguments)
{
    return isTrue(evaluate(op, arguments));
}

Values numbers()
{
    return {
        whole(-1),
        whole(0),
        whole(2),
        decimal(-0.0),
        decimal(1.5),
        decimal(kInfinity),
        decimal(-kInfinity)};
}

// Nothing that has an order among numbers.
Values noNumbers()
{
    return {
        nullptr,
        decimal(kNaN),
        word("1"),
        fact(true),
        stamp(1),
        span(0, 1),
        at(1, 1),
        at(1, 1, 1),
        square(),
        disguised("DOUBLE")};
}

double value(const Value& numeric)
{
    return number(numeric).value_or(kNaN);
}

// Coordinates that meet, that lie anywhere, and that are too small or too large to be squared.
class Places
{
public:
    explicit Places(unsigned seed)
        : m_random(seed)
    {
    }

    Value any()
    {
        switch (m_random() % 4) {
        case 0:
            return at(coordinate(), coordinate());
        case 1:
            return wholeAt(small(), small());
        case 2:
            return wholeAt(small(), small(), small());
        default:
            return at(coordinate(), coordinate(), coordinate());
        }
    }

private:
    int small() { return static_cast<int>(m_random() % 5); }

    double coordinate()
    {
        constexpr std::array<double, 6> kScales{1.0, 1.0, 0.01, 1e-170, 3e-162, 1e200};
        return small() * kScales.at(m_random() % kScales.size());
    }

    std::mt19937 m_random;
};

Values placesNowhere()
{
    return {nullptr, at(kNaN, 0), at(0, kInfinity), at(0, 0, kNaN), at(0, 0, -kInfinity)};
}

// As far as rounding lets the computed distance be trusted.
bool isAtLeast(double distance, const Value& a, const Value& b)
{
    const CSPlainValue from(a.get());
    const CSPlainValue to(b.get());
    const double ground = std::hypot(to.m_point.x - from.m_point.x, to.m_point.y - from.m_point.y);
    return distance >= ground * (1.0 - std::ldexp(1.0, -50)) - std::ldexp(1.0, -500);
}

} // namespace

TEST(OperatorPromises, AConjunctionHoldsOnlyWhereBothDo)
{
    for (CSOperatorInterfaceAbstract* op : thatMean(CSOperatorMeaning::Conjunction)) {
        EXPECT_TRUE(holds(*op, {fact(true), fact(true, 0.0)}));
        for (const Value& other : noNumbers()) {
            if (!isTrue(other)) {
                EXPECT_FALSE(holds(*op, {fact(true), other}));
                EXPECT_FALSE(holds(*op, {other, fact(true)}));
            }
        }
        EXPECT_FALSE(holds(*op, {fact(true), fact(false)}));
        EXPECT_FALSE(holds(*op, {fact(false), fact(true)}));
        EXPECT_FALSE(holds(*op, {fact(true), fact(true, kNaN)}));
    }
}

TEST(OperatorPromises, AtMostAndAtLeastAreTrueOfNumbers)
{
    for (const Value& left : numbers()) {
        for (const Value& right : numbers()) {
            for (CSOperatorInterfaceAbstract* op : thatMean(CSOperatorMeaning::AtMost)) {
                EXPECT_TRUE(!holds(*op, {left, right}) || value(left) <= value(right));
            }
            for (CSOperatorInterfaceAbstract* op : thatMean(CSOperatorMeaning::AtLeast)) {
                EXPECT_TRUE(!holds(*op, {left, right}) || value(left) >= value(right));
            }
        }
    }
}

TEST(OperatorPromises, AtMostAndAtLeastAreFalseOfANumberAndSomethingElse)
{
    for (const CSOperatorMeaning meaning :
         {CSOperatorMeaning::AtMost, CSOperatorMeaning::AtLeast}) {
        for (CSOperatorInterfaceAbstract* op : thatMean(meaning)) {
            for (const Value& other : noNumbers()) {
                EXPECT_FALSE(holds(*op, {whole(1), other}));
                EXPECT_FALSE(holds(*op, {other, whole(1)}));
            }
        }
    }
}

TEST(OperatorPromises, ADistanceIsNeverLessThanOnTheGround)
{
    Places places(17);
    int measured = 0;
    for (CSOperatorInterfaceAbstract* op : thatMean(CSOperatorMeaning::Distance)) {
        for (int i = 0; i < 20000; ++i) {
            const Value a = places.any();
            const Value b = places.any();
            const Value there = evaluate(*op, {a, b});
            const Value back = evaluate(*op, {b, a});
            ASSERT_EQ(number(there), number(back));
            if (there) {
                ++measured;
                ASSERT_TRUE(isAtLeast(value(there), a, b));
            }
        }
    }
    EXPECT_GT(measured, 10000);
}

TEST(OperatorPromises, ADistanceFromNowhereHasNoValue)
{
    for (CSOperatorInterfaceAbstract* op : thatMean(CSOperatorMeaning::Distance)) {
        for (const Value& nowhere : placesNowhere()) {
            for (const Value& place : {at(0, 0), at(0, 0, 0), square()}) {
                EXPECT_EQ(evaluate(*op, {nowhere, place}), nullptr);
                EXPECT_EQ(evaluate(*op, {place, nowhere}), nullptr);
            }
        }
    }
}

TEST(OperatorPromises, WhatIsNearIsNotFartherOnTheGround)
{
    Places places(17);
    int near = 0;
    for (CSOperatorInterfaceAbstract* op : thatMean(CSOperatorMeaning::Nearness)) {
        for (int i = 0; i < 20000; ++i) {
            const Value a = places.any();
            const Value b = places.any();
            for (const Value& limit : numbers()) {
                const bool isNear = holds(*op, {a, b, limit});
                ASSERT_EQ(isNear, holds(*op, {b, a, limit}));
                near += static_cast<int>(isNear);
                ASSERT_TRUE(!isNear || isAtLeast(value(limit), a, b));
            }
        }
    }
    EXPECT_GT(near, 10000);
}

TEST(OperatorPromises, NothingIsNearNowhere)
{
    for (CSOperatorInterfaceAbstract* op : thatMean(CSOperatorMeaning::Nearness)) {
        for (const Value& nowhere : placesNowhere()) {
            for (const Value& place : {at(0, 0), at(0, 0, 0), square()}) {
                EXPECT_FALSE(holds(*op, {nowhere, place, decimal(kInfinity)}));
                EXPECT_FALSE(holds(*op, {place, nowhere, decimal(kInfinity)}));
            }
        }
    }
}

TEST(OperatorPromises, ComputedArgumentsNeedNoObject)
{
    const auto start = stamp(0);
    const auto end = stamp(2000);
    const auto later = stamp(5000);
    const std::array<CSPlainValue, 2> spans{
        CSPlainValue::interval(start.get(), end.get()),
        CSPlainValue::interval(end.get(), later.get())};
    EXPECT_TRUE(findOperator("meets")->evaluatePlain(spans).m_truth);
    EXPECT_FALSE(findOperator("equals")->evaluatePlain(spans).m_truth);
    EXPECT_TRUE(findOperator("!=")->evaluatePlain(spans).m_truth);
    EXPECT_EQ(findOperator("duration")->evaluatePlain({spans.data(), 1}).m_number, 2.0);
    EXPECT_EQ(findOperator("gap")->evaluatePlain(spans).m_number, 0.0);
    const std::array<CSPlainValue, 2> numbers{CSPlainValue::number(2), CSPlainValue::number(3)};
    EXPECT_TRUE(findOperator("<")->evaluatePlain(numbers).m_truth);
    EXPECT_EQ(findOperator("value")->evaluatePlain({numbers.data(), 1}).m_number, 2.0);
}

TEST(OperatorPromises, APointWithoutAnObjectHasNotMoved)
{
    const Value step = walked({at(1, 0), at(-1, 0)});
    const Value line = ring({{0, -5, 0}, {0, 5, 0}});
    std::array<CSPlainValue, 2> arguments{CSPlainValue(step.get()), CSPlainValue(line.get())};
    EXPECT_TRUE(findOperator("crossed")->evaluatePlain(arguments).m_truth);
    arguments[0].m_object = nullptr;
    EXPECT_FALSE(findOperator("crossed")->evaluatePlain(arguments).m_truth);
    EXPECT_TRUE(findOperator("speed")->evaluatePlain({arguments.data(), 1}).isNone());
    EXPECT_TRUE(findOperator("heading")->evaluatePlain({arguments.data(), 1}).isNone());
}

} // namespace scenariomatch
