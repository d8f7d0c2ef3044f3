#include "engine/Truth.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

TEST(Truth, TakesValueAndConfidenceOfABool)
{
    const CSBool sure(true, 0.25);
    const CSBool wrong(false, 0.5);
    EXPECT_TRUE(Truth(&sure).holds);
    EXPECT_EQ(Truth(&sure).confidence, 0.25);
    EXPECT_FALSE(Truth(&wrong).holds);
    EXPECT_EQ(Truth(&wrong).confidence, 0.5);
}

TEST(Truth, IsFalseForNoValueAndForOtherValues)
{
    const CSInt one(1);
    EXPECT_FALSE(Truth(static_cast<const CSBasicType*>(nullptr)).holds);
    EXPECT_FALSE(Truth(&one).holds);
    EXPECT_EQ(Truth(&one).confidence, 1.0);
    EXPECT_FALSE(Truth(CSPlainValue()).holds);
    EXPECT_FALSE(Truth(CSPlainValue::number(1.0)).holds);
    EXPECT_EQ(Truth(CSPlainValue::number(0.5)).confidence, 1.0);
}

TEST(Truth, TakesValueAndConfidenceOfAPlainTruth)
{
    EXPECT_TRUE(Truth(CSPlainValue::boolean(true, 0.25)).holds);
    EXPECT_EQ(Truth(CSPlainValue::boolean(true, 0.25)).confidence, 0.25);
    EXPECT_FALSE(Truth(CSPlainValue::boolean(false, 0.75)).holds);
    EXPECT_EQ(Truth(CSPlainValue::boolean(false, 0.75)).confidence, 0.75);
}

TEST(Truth, IsTheSameForAnObjectAndItsView)
{
    const CSBool sure(true, 0.25);
    EXPECT_TRUE(Truth(CSPlainValue(&sure)).holds);
    EXPECT_EQ(Truth(CSPlainValue(&sure)).confidence, 0.25);
}

// A truth value whose tag says something else is one all the same.
TEST(Truth, AsksForTheClassNotForTheTag)
{
    CSBool odd(true, 0.25);
    odd.m_type = "DOUBLE";
    EXPECT_TRUE(Truth(&odd).holds);
    EXPECT_TRUE(Truth(CSPlainValue(&odd)).holds);
    EXPECT_EQ(Truth(CSPlainValue(&odd)).confidence, 0.25);
    CSDouble number(1.0);
    number.m_type = "BOOL";
    EXPECT_FALSE(Truth(&number).holds);
    EXPECT_FALSE(Truth(CSPlainValue(&number)).holds);
}

} // namespace scenariomatch
