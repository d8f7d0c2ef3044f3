#include "tests/reference/ReferenceMatcher.h"

#include "engine/CSEngine.h"

#include <gtest/gtest.h>

#include <numeric>

namespace scenariomatch
{

namespace
{

std::vector<std::vector<int>> selectionsOf(int values, int k)
{
    std::vector<int> all(static_cast<std::size_t>(values));
    std::iota(all.begin(), all.end(), 10);
    EXPECT_EQ(createPermutationList(all, k), referenceSelections(all, k));
    return referenceSelections(all, k);
}

} // namespace

TEST(ReferenceMatcher, EnumeratesAsTheEngineDoes)
{
    for (int values = 0; values <= 5; ++values) {
        for (int k = 0; k <= 6; ++k) {
            EXPECT_EQ(permutation(values, k), referencePermutations(values, k));
            const std::size_t expected = k == 0 ? 0 : permutation(values, k);
            EXPECT_EQ(selectionsOf(values, k).size(), expected);
        }
    }
    for (const std::vector<int>& sizes :
         std::vector<std::vector<int>>{{}, {0}, {3}, {2, 3}, {3, 0, 2}, {2, 2, 2, 2}}) {
        EXPECT_EQ(createPermutationList(sizes), referenceTuples(sizes));
    }
}

} // namespace scenariomatch
