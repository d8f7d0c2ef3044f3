#include "app/IdSet.h"

#include <gtest/gtest.h>

namespace scenariomatch
{

TEST(IdSet, TakesEveryIdentifierOnceUntilItIsCleared)
{
    IdSet set;
    for (int round = 0; round < 3; ++round) {
        for (int id = -1000; id < 1000; ++id) {
            EXPECT_TRUE(set.insert(id * 4096)) << id;
        }
        for (int id = -1000; id < 1000; ++id) {
            EXPECT_FALSE(set.insert(id * 4096)) << id;
        }
        set.clear();
    }
}

} // namespace scenariomatch
