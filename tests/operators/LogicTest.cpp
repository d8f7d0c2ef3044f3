#include "operators/logic/Logic.h"

#include "Samples.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

using namespace samples;

namespace
{

void expectFact(const Value& result, bool value, double confidence)
{
    const CSBool* found = truth(result);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->m_value, value);
    EXPECT_DOUBLE_EQ(found->m_confidence, confidence);
}

} // namespace

TEST(Logic, AndMultipliesConfidences)
{
    expectFact(conjunction({fact(true, 0.8), fact(true, 0.5)}), true, 0.4);
    expectFact(conjunction({fact(true, 0.8), fact(false, 0.5)}), false, 0.4);
    expectFact(conjunction({fact(false, 0.8), fact(true, 0.5)}), false, 0.4);
    expectFact(conjunction({fact(false), fact(false)}), false, 1.0);
}

TEST(Logic, OrTakesTheGreatestConfidenceOfTheTrueOnes)
{
    expectFact(disjunction({fact(true, 0.3), fact(true, 0.7)}), true, 0.7);
    expectFact(disjunction({fact(true, 0.3), fact(false, 0.7)}), true, 0.3);
    expectFact(disjunction({fact(false, 0.9), fact(true, 0.2)}), true, 0.2);
}

TEST(Logic, OrOfNoneTrueMultipliesConfidences)
{
    expectFact(disjunction({fact(false, 0.5), fact(false, 0.5)}), false, 0.25);
}

TEST(Logic, NotKeepsTheConfidence)
{
    expectFact(negation({fact(true, 0.6)}), false, 0.6);
    expectFact(negation({fact(false, 0.6)}), true, 0.6);
}

TEST(Logic, IsFalseForMissingOrOtherArguments)
{
    for (const Value& wrong : Arguments{nullptr, whole(1), word("true"), disguised("BOOL")}) {
        expectFact(conjunction({fact(true), wrong}), false, 1.0);
        expectFact(conjunction({wrong, fact(true)}), false, 1.0);
        expectFact(disjunction({fact(true), wrong}), false, 1.0);
        expectFact(disjunction({wrong, fact(true)}), false, 1.0);
        expectFact(negation({wrong}), false, 1.0);
    }
}

TEST(Logic, IsFalseForAConfidenceThatIsNoNumber)
{
    expectFact(conjunction({fact(true, kNaN), fact(true)}), false, 1.0);
    expectFact(disjunction({fact(true), fact(true, kNaN)}), false, 1.0);
    expectFact(negation({fact(false, kNaN)}), false, 1.0);
}

TEST(Logic, IsFalseForWrongCounts)
{
    expectFact(conjunction({}), false, 1.0);
    expectFact(conjunction({fact(true)}), false, 1.0);
    expectFact(conjunction({fact(true), fact(true), fact(true)}), false, 1.0);
    expectFact(disjunction({}), false, 1.0);
    expectFact(disjunction({fact(true)}), false, 1.0);
    expectFact(disjunction({fact(true), fact(true), fact(true)}), false, 1.0);
    expectFact(negation({}), false, 1.0);
    expectFact(negation({fact(false), fact(false)}), false, 1.0);
}

} // namespace scenariomatch
