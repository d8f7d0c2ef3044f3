#include "operators/arithmetic/Arithmetic.h"

#include "Samples.h"

#include <gtest/gtest.h>

#include <array>

namespace scenariomatch
{

namespace
{

using Operator = CSPlainValue (*)(Arguments);

constexpr std::array<Operator, 4> kOfTwo{sum, difference, product, quotient};

double of(const Value& result)
{
    return number(result).value_or(kNaN);
}

} // namespace

TEST(Arithmetic, ComputesWithNumbersOfBothKinds)
{
    EXPECT_EQ(of(answer(sum, {whole(2), decimal(0.5)})), 2.5);
    EXPECT_EQ(of(answer(difference, {whole(2), decimal(0.5)})), 1.5);
    EXPECT_EQ(of(answer(product, {decimal(0.5), whole(3)})), 1.5);
    EXPECT_EQ(of(answer(quotient, {whole(1), whole(4)})), 0.25);
    EXPECT_EQ(of(answer(absolute, {whole(-7)})), 7.0);
    EXPECT_EQ(of(answer(absolute, {decimal(2.5)})), 2.5);
}

TEST(Arithmetic, GivesDoubles)
{
    EXPECT_EQ(answer(sum, {whole(1), whole(2)})->m_type, "DOUBLE");
    EXPECT_EQ(answer(absolute, {whole(1)})->m_type, "DOUBLE");
    EXPECT_EQ(answer(least, {whole(1), whole(2)})->m_type, "DOUBLE");
}

TEST(Arithmetic, DoesNotOverflowOnWholeNumbers)
{
    EXPECT_EQ(of(answer(absolute, {whole(std::numeric_limits<int>::min())})), 2147483648.0);
    EXPECT_EQ(of(answer(sum, {whole(std::numeric_limits<int>::max()), whole(1)})), 2147483648.0);
}

TEST(Arithmetic, ChoosesAmongTwoToEight)
{
    EXPECT_EQ(of(answer(least, {whole(3), decimal(1.5)})), 1.5);
    EXPECT_EQ(of(answer(greatest, {whole(3), decimal(1.5), whole(2)})), 3.0);
    Values eight;
    for (int i = 1; i <= 8; ++i) {
        eight.push_back(whole(i));
    }
    EXPECT_EQ(of(answer(least, eight)), 1.0);
    EXPECT_EQ(of(answer(greatest, eight)), 8.0);
    eight.push_back(whole(9));
    EXPECT_EQ(answer(greatest, eight), nullptr);
    EXPECT_EQ(answer(least, eight), nullptr);
}

TEST(Arithmetic, HasNoValueForADivisionByZero)
{
    EXPECT_EQ(answer(quotient, {whole(1), whole(0)}), nullptr);
    EXPECT_EQ(answer(quotient, {whole(0), decimal(-0.0)}), nullptr);
}

TEST(Arithmetic, HasNoValueThatIsNotFinite)
{
    const double large = std::numeric_limits<double>::max();
    EXPECT_EQ(answer(sum, {decimal(large), decimal(large)}), nullptr);
    EXPECT_EQ(answer(product, {decimal(large), whole(2)}), nullptr);
    EXPECT_EQ(answer(difference, {decimal(kInfinity), decimal(kInfinity)}), nullptr);
    EXPECT_EQ(answer(absolute, {decimal(-kInfinity)}), nullptr);
    EXPECT_EQ(answer(greatest, {whole(1), decimal(kInfinity)}), nullptr);
}

TEST(Arithmetic, HasNoValueForWhatIsNoNumber)
{
    for (const Value& wrong :
         Values{nullptr, word("1"), fact(true), decimal(kNaN), disguised("DOUBLE")}) {
        for (const Operator compute : kOfTwo) {
            EXPECT_EQ(answer(compute, {whole(1), wrong}), nullptr);
            EXPECT_EQ(answer(compute, {wrong, whole(1)}), nullptr);
        }
        for (const Operator choose : {least, greatest}) {
            EXPECT_EQ(answer(choose, {wrong, whole(1)}), nullptr);
            EXPECT_EQ(answer(choose, {whole(1), wrong}), nullptr);
            EXPECT_EQ(answer(choose, {whole(1), wrong, whole(2)}), nullptr);
        }
        EXPECT_EQ(answer(absolute, {wrong}), nullptr);
    }
}

TEST(Arithmetic, HasNoValueForWrongCounts)
{
    for (const Operator compute : kOfTwo) {
        EXPECT_EQ(answer(compute, {}), nullptr);
        EXPECT_EQ(answer(compute, {whole(1)}), nullptr);
        EXPECT_EQ(answer(compute, {whole(1), whole(1), whole(1)}), nullptr);
    }
    for (const Operator choose : {least, greatest}) {
        EXPECT_EQ(answer(choose, {}), nullptr);
        EXPECT_EQ(answer(choose, {whole(1)}), nullptr);
    }
    for (const Operator one : {absolute, handOn}) {
        EXPECT_EQ(answer(one, {}), nullptr);
        EXPECT_EQ(answer(one, {whole(1), whole(1)}), nullptr);
    }
}

TEST(Arithmetic, ValueHandsItsArgumentOn)
{
    for (const Value& argument : Values{word("Desk"), square(), decimal(kNaN), nullptr}) {
        EXPECT_EQ(answer(handOn, {argument}), argument);
    }
}

} // namespace scenariomatch
