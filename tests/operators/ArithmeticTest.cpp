#include "operators/arithmetic/Arithmetic.h"

#include "Samples.h"

#include <gtest/gtest.h>

#include <array>

namespace scenariomatch
{

using namespace samples;

namespace
{

using Operator = Value (*)(const Arguments&);

constexpr std::array<Operator, 4> kOfTwo{sum, difference, product, quotient};

double of(const Value& result)
{
    return number(result).value_or(kNaN);
}

} // namespace

TEST(Arithmetic, ComputesWithNumbersOfBothKinds)
{
    EXPECT_EQ(of(sum({whole(2), decimal(0.5)})), 2.5);
    EXPECT_EQ(of(difference({whole(2), decimal(0.5)})), 1.5);
    EXPECT_EQ(of(product({decimal(0.5), whole(3)})), 1.5);
    EXPECT_EQ(of(quotient({whole(1), whole(4)})), 0.25);
    EXPECT_EQ(of(absolute({whole(-7)})), 7.0);
    EXPECT_EQ(of(absolute({decimal(2.5)})), 2.5);
}

TEST(Arithmetic, GivesDoubles)
{
    EXPECT_EQ(sum({whole(1), whole(2)})->m_type, "DOUBLE");
    EXPECT_EQ(absolute({whole(1)})->m_type, "DOUBLE");
    EXPECT_EQ(least({whole(1), whole(2)})->m_type, "DOUBLE");
}

TEST(Arithmetic, DoesNotOverflowOnWholeNumbers)
{
    EXPECT_EQ(of(absolute({whole(std::numeric_limits<int>::min())})), 2147483648.0);
    EXPECT_EQ(of(sum({whole(std::numeric_limits<int>::max()), whole(1)})), 2147483648.0);
}

TEST(Arithmetic, ChoosesAmongTwoToEight)
{
    EXPECT_EQ(of(least({whole(3), decimal(1.5)})), 1.5);
    EXPECT_EQ(of(greatest({whole(3), decimal(1.5), whole(2)})), 3.0);
    Arguments eight;
    for (int i = 1; i <= 8; ++i) {
        eight.push_back(whole(i));
    }
    EXPECT_EQ(of(least(eight)), 1.0);
    EXPECT_EQ(of(greatest(eight)), 8.0);
    eight.push_back(whole(9));
    EXPECT_EQ(greatest(eight), nullptr);
    EXPECT_EQ(least(eight), nullptr);
}

TEST(Arithmetic, HasNoValueForADivisionByZero)
{
    EXPECT_EQ(quotient({whole(1), whole(0)}), nullptr);
    EXPECT_EQ(quotient({whole(0), decimal(-0.0)}), nullptr);
}

TEST(Arithmetic, HasNoValueThatIsNotFinite)
{
    const double large = std::numeric_limits<double>::max();
    EXPECT_EQ(sum({decimal(large), decimal(large)}), nullptr);
    EXPECT_EQ(product({decimal(large), whole(2)}), nullptr);
    EXPECT_EQ(difference({decimal(kInfinity), decimal(kInfinity)}), nullptr);
    EXPECT_EQ(absolute({decimal(-kInfinity)}), nullptr);
    EXPECT_EQ(greatest({whole(1), decimal(kInfinity)}), nullptr);
}

TEST(Arithmetic, HasNoValueForWhatIsNoNumber)
{
    for (const Value& wrong :
         Arguments{nullptr, word("1"), fact(true), decimal(kNaN), disguised("DOUBLE")}) {
        for (const Operator compute : kOfTwo) {
            EXPECT_EQ(compute({whole(1), wrong}), nullptr);
            EXPECT_EQ(compute({wrong, whole(1)}), nullptr);
        }
        for (const Operator choose : {least, greatest}) {
            EXPECT_EQ(choose({wrong, whole(1)}), nullptr);
            EXPECT_EQ(choose({whole(1), wrong}), nullptr);
            EXPECT_EQ(choose({whole(1), wrong, whole(2)}), nullptr);
        }
        EXPECT_EQ(absolute({wrong}), nullptr);
    }
}

TEST(Arithmetic, HasNoValueForWrongCounts)
{
    for (const Operator compute : kOfTwo) {
        EXPECT_EQ(compute({}), nullptr);
        EXPECT_EQ(compute({whole(1)}), nullptr);
        EXPECT_EQ(compute({whole(1), whole(1), whole(1)}), nullptr);
    }
    for (const Operator choose : {least, greatest}) {
        EXPECT_EQ(choose({}), nullptr);
        EXPECT_EQ(choose({whole(1)}), nullptr);
    }
    for (const Operator one : {absolute, handOn}) {
        EXPECT_EQ(one({}), nullptr);
        EXPECT_EQ(one({whole(1), whole(1)}), nullptr);
    }
}

TEST(Arithmetic, ValueHandsItsArgumentOn)
{
    for (const Value& argument : Arguments{word("Desk"), square(), decimal(kNaN), nullptr}) {
        EXPECT_EQ(handOn({argument}), argument);
    }
}

} // namespace scenariomatch
