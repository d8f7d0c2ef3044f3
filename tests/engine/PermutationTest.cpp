#include "engine/CSEngine.h"

#include <gtest/gtest.h>

#include <numeric>

namespace
{

using Lists = std::vector<std::vector<int>>;

} // namespace

TEST(Permutation, CountsOrderedSelections)
{
    EXPECT_EQ(permutation(3, 2), 6U);
    EXPECT_EQ(permutation(5, 5), 120U);
    EXPECT_EQ(permutation(7, 1), 7U);
}

TEST(Permutation, IsOneForNoneToSelect)
{
    EXPECT_EQ(permutation(4, 0), 1U);
    EXPECT_EQ(permutation(0, 0), 1U);
}

TEST(Permutation, IsZeroUnlessThereAreEnough)
{
    EXPECT_EQ(permutation(2, 3), 0U);
    EXPECT_EQ(permutation(3, -1), 0U);
    EXPECT_EQ(permutation(-1, 0), 0U);
    EXPECT_EQ(permutation(-2, -3), 0U);
}

TEST(Permutation, WrapsInThirtyTwoBits)
{
    // 13! is 6227020800.
    EXPECT_EQ(permutation(13, 13), 1932053504U);
    EXPECT_EQ(permutation(65537, 2), 65536U);
    // 34! holds 2 to the power of 32 as a factor.
    EXPECT_EQ(permutation(34, 34), 0U);
}

TEST(CreatePermutationList, SelectsPositionByPosition)
{
    EXPECT_EQ(
        createPermutationList({10, 20, 30}, 2),
        (Lists{{10, 20}, {10, 30}, {20, 10}, {20, 30}, {30, 10}, {30, 20}}));
}

TEST(CreatePermutationList, SelectsAllInOrder)
{
    EXPECT_EQ(
        createPermutationList({1, 2, 3}, 3),
        (Lists{{1, 2, 3}, {1, 3, 2}, {2, 1, 3}, {2, 3, 1}, {3, 1, 2}, {3, 2, 1}}));
}

TEST(CreatePermutationList, GivesOneListPerItemForOne)
{
    EXPECT_EQ(createPermutationList({7, 5, 7}, 1), (Lists{{7}, {5}, {7}}));
}

TEST(CreatePermutationList, TakesPositionsNotValues)
{
    EXPECT_EQ(createPermutationList({4, 4}, 2), (Lists{{4, 4}, {4, 4}}));
}

TEST(CreatePermutationList, IsEmptyWhenNothingCanBeSelected)
{
    EXPECT_EQ(createPermutationList({1, 2}, 3), Lists());
    EXPECT_EQ(createPermutationList({1, 2}, -1), Lists());
    EXPECT_EQ(createPermutationList({}, 1), Lists());
    EXPECT_EQ(createPermutationList({}, 0), Lists());
}

TEST(CreatePermutationList, HasAsManyListsAsThePermutationCounts)
{
    std::vector<int> values(6);
    std::iota(values.begin(), values.end(), 0);
    for (int k = 1; k <= 6; ++k) {
        EXPECT_EQ(createPermutationList(values, k).size(), permutation(6, k));
    }
}

TEST(CreatePermutationList, MakesTuplesWithTheFirstPositionSlowest)
{
    EXPECT_EQ(
        createPermutationList({2, 3}), (Lists{{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1}, {1, 2}}));
    EXPECT_EQ(
        createPermutationList({2, 1, 2}), (Lists{{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {1, 0, 1}}));
}

TEST(CreatePermutationList, CountsUpForASingleSize)
{
    EXPECT_EQ(createPermutationList({3}), (Lists{{0}, {1}, {2}}));
}

TEST(CreatePermutationList, HasNoTuplesWhenASizeIsZero)
{
    EXPECT_EQ(createPermutationList({0}), Lists());
    EXPECT_EQ(createPermutationList({2, 0}), Lists());
    EXPECT_EQ(createPermutationList({0, 2}), Lists());
    EXPECT_EQ(createPermutationList(std::vector<int>()), Lists());
}
