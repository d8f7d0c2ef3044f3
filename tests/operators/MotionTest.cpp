#include "operators/motion/Motion.h"

#include "Walk.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace scenariomatch
{

namespace
{

const FrameTimes& times()
{
    static const FrameTimes kTimes = framesUpTo(100);
    return kTimes;
}

// Along x, so many steps of the length.
Value steps(int count, double length)
{
    std::vector<Value> positions;
    for (int i = 0; i <= count; ++i) {
        positions.push_back(at(i * length, 0, 0));
    }
    return walked(positions);
}

// Everything that cannot be a position with an earlier one.
Values notMoving()
{
    return {
        nullptr,
        at(1, 2, 3),
        whole(1),
        word("here"),
        square(),
        disguised("3DDPOINT"),
        walked({at(0, 0), at(kNaN, 1)})};
}

} // namespace

TEST(Speed, IsThatOfTheLastStep)
{
    EXPECT_DOUBLE_EQ(
        number(answer(speed, {walked({at(0, 0, 0), at(3, 4, 0)})}, times())).value(), 125.0);
    EXPECT_DOUBLE_EQ(
        number(answer(speed, {walked({at(9, 9), at(0, 0), at(0, 1)})}, times())).value(), 25.0);
    EXPECT_EQ(number(answer(speed, {walked({at(1, 1), at(1, 1)})}, times())), 0.0);
}

TEST(Speed, IsInSpaceWhenPositionsHaveHeights)
{
    EXPECT_DOUBLE_EQ(
        number(answer(speed, {walked({at(0, 0, 0), at(0, 0, 2)})}, times())).value(), 50.0);
    EXPECT_DOUBLE_EQ(
        number(answer(speed, {walked({at(0, 0), at(3, 0, 2)})}, times())).value(), 75.0);
}

TEST(Speed, CountsTheTimeOfFramesThatWereMissed)
{
    const Value position = walked({{10, at(0, 0)}, {35, at(2, 0)}});
    EXPECT_DOUBLE_EQ(number(answer(speed, {position}, times())).value(), 2.0);
}

TEST(Speed, LooksBackAsFarAsAsked)
{
    std::vector<Value> positions(50, at(0, 0));
    positions.push_back(at(4, 0));
    const Value position = walked(positions);
    EXPECT_DOUBLE_EQ(number(answer(speed, {position}, times())).value(), 100.0);
    EXPECT_DOUBLE_EQ(number(answer(speed, {position, decimal(0.2)}, times())).value(), 20.0);
    EXPECT_DOUBLE_EQ(number(answer(speed, {position, whole(1)}, times())).value(), 4.0);
    // No farther than there is history.
    EXPECT_DOUBLE_EQ(number(answer(speed, {position, whole(60)}, times())).value(), 2.0);
}

TEST(Speed, HasNoValueWithoutAPositionWithinTheSeconds)
{
    const Value position = walked({{10, at(0, 0)}, {35, at(2, 0)}});
    EXPECT_EQ(answer(speed, {position, decimal(0.999)}, times()), nullptr);
    EXPECT_NE(answer(speed, {position, whole(1)}, times()), nullptr);
    EXPECT_EQ(answer(speed, {position, whole(0)}, times()), nullptr);
    EXPECT_EQ(answer(speed, {position, whole(-1)}, times()), nullptr);
}

TEST(Speed, HasNoValueForAPositionWhoseTimeIsForgotten)
{
    const Value position = walked({{10, at(0, 0)}, {11, at(2, 0)}});
    FrameTimes forgotten = times();
    forgotten.erase(10);
    EXPECT_EQ(answer(speed, {position}, forgotten), nullptr);
    forgotten[10] = nullptr;
    EXPECT_EQ(answer(speed, {position}, forgotten), nullptr);
    forgotten = times();
    forgotten.erase(11);
    EXPECT_EQ(answer(speed, {position}, forgotten), nullptr);
    EXPECT_EQ(answer(speed, {position}, {}), nullptr);
}

TEST(Speed, HasNoValueWhenTheClockDidNotAdvance)
{
    const Value position = walked({{10, at(0, 0)}, {11, at(2, 0)}});
    FrameTimes stopped = times();
    stopped[11] = stopped[10];
    EXPECT_EQ(answer(speed, {position}, stopped), nullptr);
    stopped[11] = stopped[9];
    EXPECT_EQ(answer(speed, {position}, stopped), nullptr);
    stopped[11] = std::make_shared<CSTimeStamp>(11, kNaN, 0.0);
    EXPECT_EQ(answer(speed, {position}, stopped), nullptr);
}

TEST(Speed, PassesOverEarlierEntriesThatAreNoPositions)
{
    for (const Value& entry :
         Values{nullptr, word("?"), at(kNaN, 0), at(0, kInfinity), disguised("2DDPOINT")}) {
        const Value position = walked({{10, at(0, 0)}, {34, entry}, {35, at(2, 0)}});
        EXPECT_DOUBLE_EQ(number(answer(speed, {position}, times())).value(), 2.0);
    }
}

TEST(Speed, PassesOverAPositionStoredTwiceInTheFrame)
{
    const Value position = walked({{10, at(0, 0)}, {35, at(9, 9)}, {35, at(2, 0)}});
    ASSERT_EQ(position->m_history.size(), 2U);
    EXPECT_DOUBLE_EQ(number(answer(speed, {position}, times())).value(), 2.0);
}

TEST(Speed, HasNoValueForWrongArguments)
{
    const Value position = steps(3, 1);
    EXPECT_EQ(answer(speed, {}, times()), nullptr);
    EXPECT_EQ(answer(speed, {position, whole(1), whole(1)}, times()), nullptr);
    for (const Value& wrong : notMoving()) {
        EXPECT_EQ(answer(speed, {wrong}, times()), nullptr);
        EXPECT_EQ(answer(speed, {wrong, whole(1)}, times()), nullptr);
    }
    for (const Value& wrong : Values{nullptr, decimal(kNaN), word("1"), disguised("DOUBLE")}) {
        EXPECT_EQ(answer(speed, {position, wrong}, times()), nullptr);
    }
}

TEST(Displacement, IsStraightFromTheOldestPositionOfTheSeconds)
{
    std::vector<Value> around{at(0, 0), at(3, 0), at(3, 4), at(0, 4), at(0, 1)};
    const Value position = walked(around);
    EXPECT_EQ(number(answer(displacement, {position, decimal(0.04)}, times())), 3.0);
    EXPECT_EQ(number(answer(displacement, {position, decimal(0.16)}, times())), 1.0);
    EXPECT_EQ(number(answer(displacement, {position, whole(9)}, times())), 1.0);
}

TEST(Displacement, HasNoValueWithoutAPositionWithinTheSeconds)
{
    const Value position = walked({{10, at(0, 0)}, {35, at(2, 0)}});
    EXPECT_EQ(answer(displacement, {position, decimal(0.5)}, times()), nullptr);
    EXPECT_EQ(answer(displacement, {position, whole(-1)}, times()), nullptr);
    EXPECT_EQ(answer(displacement, {position, whole(5)}, {}), nullptr);
}

TEST(Displacement, HasNoValueForWrongArguments)
{
    const Value position = steps(3, 1);
    EXPECT_EQ(answer(displacement, {}, times()), nullptr);
    EXPECT_EQ(answer(displacement, {position}, times()), nullptr);
    EXPECT_EQ(answer(displacement, {position, whole(1), whole(1)}, times()), nullptr);
    for (const Value& wrong : notMoving()) {
        EXPECT_EQ(answer(displacement, {wrong, whole(1)}, times()), nullptr);
    }
    for (const Value& wrong : Values{nullptr, decimal(kNaN), at(1, 1)}) {
        EXPECT_EQ(answer(displacement, {position, wrong}, times()), nullptr);
    }
}

TEST(Heading, IsTheDirectionOfTheLastStepInDegrees)
{
    const auto towards = [](double x, double y) {
        return number(answer(heading, {walked({at(7, 7), at(0, 0, 0), at(x, y, 5)})}, times()))
            .value();
    };
    EXPECT_EQ(towards(1, 0), 0.0);
    EXPECT_DOUBLE_EQ(towards(1, 1), 45.0);
    EXPECT_DOUBLE_EQ(towards(0, 1), 90.0);
    EXPECT_DOUBLE_EQ(towards(-1, 0), 180.0);
    EXPECT_DOUBLE_EQ(towards(0, -1), 270.0);
    EXPECT_DOUBLE_EQ(towards(1, -1), 315.0);
}

TEST(Heading, IsAlwaysBelowAFullTurn)
{
    const Value position = walked({at(0, 0), at(1, -1e-20)});
    EXPECT_EQ(number(answer(heading, {position}, times())), 0.0);
}

TEST(Heading, LooksBackAsFarAsAsked)
{
    const Value position = walked({at(0, 0), at(5, 3), at(5, 5)});
    EXPECT_DOUBLE_EQ(number(answer(heading, {position}, times())).value(), 90.0);
    EXPECT_DOUBLE_EQ(number(answer(heading, {position, whole(1)}, times())).value(), 45.0);
}

TEST(Heading, HasNoValueForWhatHasNotMoved)
{
    EXPECT_EQ(answer(heading, {walked({at(1, 1), at(1, 1)})}, times()), nullptr);
    EXPECT_EQ(answer(heading, {walked({at(1, 1, 1), at(1, 1, 2)})}, times()), nullptr);
}

TEST(Heading, HasNoValueForWrongArguments)
{
    const Value position = steps(3, 1);
    EXPECT_EQ(answer(heading, {}, times()), nullptr);
    EXPECT_EQ(answer(heading, {position, whole(1), whole(1)}, times()), nullptr);
    EXPECT_EQ(answer(heading, {position, nullptr}, times()), nullptr);
    EXPECT_EQ(answer(heading, {position}, {}), nullptr);
    for (const Value& wrong : notMoving()) {
        EXPECT_EQ(answer(heading, {wrong}, times()), nullptr);
    }
}

TEST(Stationary, HoldsWhenAllPositionsOfTheSecondsAreNear)
{
    const Value position = walked({at(0, 0), at(0.5, 0), at(0, 0.5), at(0, 0)});
    EXPECT_TRUE(isTrue(answer(isStationary, {position, decimal(0.12), decimal(0.5)}, times())));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, decimal(0.12), decimal(0.49)}, times())));
}

TEST(Stationary, IsFalseUntilTheHistoryCoversTheSeconds)
{
    const Value position = steps(25, 0);
    EXPECT_TRUE(isTrue(answer(isStationary, {position, whole(1), whole(1)}, times())));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, decimal(1.001), whole(1)}, times())));
}

TEST(Stationary, AsksWhereItWasWhenTheSecondsBegan)
{
    // Last seen elsewhere, two seconds ago; the second between is not known.
    const Value position = walked({{0, at(9, 9)}, {49, at(0, 0)}, {50, at(0, 0)}});
    EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(1), whole(1)}, times())));
    const Value there = walked({{0, at(0, 0)}, {49, at(0, 0)}, {50, at(0, 0)}});
    EXPECT_TRUE(isTrue(answer(isStationary, {there, whole(1), whole(1)}, times())));
}

TEST(Stationary, DoesNotLookFartherBack)
{
    const Value position = walked({at(9, 9), at(0, 0), at(0, 0), at(0, 0)});
    EXPECT_TRUE(isTrue(answer(isStationary, {position, decimal(0.08), whole(1)}, times())));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, decimal(0.081), whole(1)}, times())));
}

TEST(Stationary, IsFalseWhenTimesAreForgotten)
{
    const Value position = steps(25, 0);
    FrameTimes forgotten = times();
    forgotten.erase(0);
    EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(1), whole(1)}, forgotten)));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(1), whole(1)}, {})));
}

TEST(Stationary, IsFalseForWrongArguments)
{
    const Value position = steps(25, 0);
    EXPECT_TRUE(isFalse(answer(isStationary, {}, times())));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(1)}, times())));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(1), whole(1), whole(1)}, times())));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(-1), whole(1)}, times())));
    EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(1), whole(-1)}, times())));
    for (const Value& wrong : Values{nullptr, decimal(kNaN), word("1"), disguised("INT")}) {
        EXPECT_TRUE(isFalse(answer(isStationary, {position, wrong, whole(1)}, times())));
        EXPECT_TRUE(isFalse(answer(isStationary, {position, whole(1), wrong}, times())));
    }
    for (const Value& wrong : notMoving()) {
        EXPECT_TRUE(isFalse(answer(isStationary, {wrong, whole(1), whole(1)}, times())));
    }
}

} // namespace scenariomatch
