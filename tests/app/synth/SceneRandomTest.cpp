#include "app/SceneRandom.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace scenariomatch
{

TEST(SceneRandom, GivesTheSameNumbersForTheSameSeedAndStream)
{
    SceneRandom a(7, 3);
    SceneRandom b(7, 3);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(a.next(), b.next());
    }
}

TEST(SceneRandom, GivesOtherNumbersForAnotherSeedOrStream)
{
    const std::uint64_t first = SceneRandom(7, 3).next();
    EXPECT_NE(first, SceneRandom(8, 3).next());
    EXPECT_NE(first, SceneRandom(7, 4).next());
    EXPECT_NE(first, SceneRandom(3, 7).next());
}

TEST(SceneRandom, StaysWithinTheBoundsAndReachesThem)
{
    SceneRandom random(1, 1);
    std::array<int, 5> counts{};
    for (int i = 0; i < 10'000; ++i) {
        const std::int64_t number = random.between(-2, 2);
        ASSERT_GE(number, -2);
        ASSERT_LE(number, 2);
        ++counts.at(static_cast<std::size_t>(number + 2));
    }
    for (const int count : counts) {
        EXPECT_NEAR(count, 2000, 200);
    }
}

TEST(SceneRandom, GivesTheOnlyNumberOfARangeOfOne)
{
    SceneRandom random(1, 1);
    EXPECT_EQ(random.between(5, 5), 5);
}

TEST(SceneRandom, BearsTheWidestRangeThatCanBeCounted)
{
    SceneRandom random(1, 1);
    constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();
    for (int i = 0; i < 100; ++i) {
        EXPECT_GE(random.between(0, kGreatest), 0);
    }
}

TEST(SceneRandom, ChoosesNeverAndAlwaysAndInBetween)
{
    SceneRandom random(1, 1);
    int chosen = 0;
    for (int i = 0; i < 10'000; ++i) {
        EXPECT_FALSE(random.isChosen(0));
        EXPECT_TRUE(random.isChosen(1000));
        chosen += random.isChosen(250) ? 1 : 0;
    }
    EXPECT_NEAR(chosen, 2500, 200);
}

} // namespace scenariomatch
