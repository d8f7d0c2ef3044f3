#include "operators/logic/Logic.h"

#include "Samples.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

void expectFact(const Value& result, bool value, double confidence)
{
    const CSPlainValue found(result.get());
    ASSERT_TRUE(isTruth(found));
    EXPECT_EQ(found.m_truth, value);
    EXPECT_DOUBLE_EQ(found.m_number, confidence);
}

} // namespace

TEST(Logic, AndMultipliesConfidences)
{
    expectFact(answer(conjunction, {fact(true, 0.8), fact(true, 0.5)}), true, 0.4);
    expectFact(answer(conjunction, {fact(true, 0.8), fact(false, 0.5)}), false, 0.4);
    expectFact(answer(conjunction, {fact(false, 0.8), fact(true, 0.5)}), false, 0.4);
    expectFact(answer(conjunction, {fact(false), fact(false)}), false, 1.0);
}

TEST(Logic, OrTakesTheGreatestConfidenceOfTheTrueOnes)
{
    expectFact(answer(disjunction, {fact(true, 0.3), fact(true, 0.7)}), true, 0.7);
    expectFact(answer(disjunction, {fact(true, 0.3), fact(false, 0.7)}), true, 0.3);
    expectFact(answer(disjunction, {fact(false, 0.9), fact(true, 0.2)}), true, 0.2);
}

TEST(Logic, OrOfNoneTrueMultipliesConfidences)
{
    expectFact(answer(disjunction, {fact(false, 0.5), fact(false, 0.5)}), false, 0.25);
}

TEST(Logic, NotKeepsTheConfidence)
{
    expectFact(answer(negation, {fact(true, 0.6)}), false, 0.6);
    expectFact(answer(negation, {fact(false, 0.6)}), true, 0.6);
}

TEST(Logic, IsFalseForMissingOrOtherArguments)
{
    for (const Value& wrong : Values{nullptr, whole(1), word("true"), disguised("BOOL")}) {
        expectFact(answer(conjunction, {fact(true), wrong}), false, 1.0);
        expectFact(answer(conjunction, {wrong, fact(true)}), false, 1.0);
        expectFact(answer(disjunction, {fact(true), wrong}), false, 1.0);
        expectFact(answer(disjunction, {wrong, fact(true)}), false, 1.0);
        expectFact(answer(negation, {wrong}), false, 1.0);
    }
}

TEST(Logic, IsFalseForAConfidenceThatIsNoNumber)
{
    expectFact(answer(conjunction, {fact(true, kNaN), fact(true)}), false, 1.0);
    expectFact(answer(disjunction, {fact(true), fact(true, kNaN)}), false, 1.0);
    expectFact(answer(negation, {fact(false, kNaN)}), false, 1.0);
}

TEST(Logic, IsFalseForWrongCounts)
{
    expectFact(answer(conjunction, {}), false, 1.0);
    expectFact(answer(conjunction, {fact(true)}), false, 1.0);
    expectFact(answer(conjunction, {fact(true), fact(true), fact(true)}), false, 1.0);
    expectFact(answer(disjunction, {}), false, 1.0);
    expectFact(answer(disjunction, {fact(true)}), false, 1.0);
    expectFact(answer(disjunction, {fact(true), fact(true), fact(true)}), false, 1.0);
    expectFact(answer(negation, {}), false, 1.0);
    expectFact(answer(negation, {fact(false), fact(false)}), false, 1.0);
}

} // namespace scenariomatch
