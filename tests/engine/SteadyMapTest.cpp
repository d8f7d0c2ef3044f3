#include "engine/SteadyMap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <vector>

namespace scenariomatch
{

TEST(SteadyMap, HoldsWhatAnOrdinaryMapHolds)
{
    SteadyMap<int, int> map;
    std::map<int, int> plain;
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): reproducible
    for (int step = 0; step < 100'000; ++step) {
        const int key = static_cast<int>(random() % 4000U) - 2000;
        if (random() % 3U == 0U) {
            map.erase(key);
            plain.erase(key);
        } else {
            map[key] += step;
            plain[key] += step;
        }
    }
    for (int key = -2000; key < 2000; ++key) {
        const int* const value = map.find(key);
        ASSERT_EQ(value != nullptr, plain.contains(key)) << key;
        ASSERT_TRUE(value == nullptr || *value == plain[key]) << key;
    }
    std::vector<int> values;
    map.forEach([&values](int value) { values.push_back(value); });
    std::vector<int> expected;
    expected.reserve(plain.size());
    for (const auto& [key, value] : plain) {
        expected.push_back(value);
    }
    EXPECT_THAT(values, testing::UnorderedElementsAreArray(expected));
}

TEST(SteadyMap, KeepsValuesWhereTheyAreWhileItGrows)
{
    SteadyMap<std::uint64_t, int> map;
    const int* const first = &map[0];
    for (std::uint64_t key = 1; key < 10'000; ++key) {
        map[key] = 1;
    }
    EXPECT_EQ(map.find(0), first);
    EXPECT_EQ(*first, 0);
}

TEST(SteadyMap, TakesAddressesForKeys)
{
    std::vector<int> objects(1000);
    SteadyMap<const int*, std::unique_ptr<int>> map;
    for (const int& object : objects) {
        map[&object] = std::make_unique<int>(static_cast<int>(&object - objects.data()));
    }
    map.erase(&objects[500]);
    EXPECT_EQ(map.find(&objects[500]), nullptr);
    EXPECT_EQ(**map.find(&objects[999]), 999);
    EXPECT_EQ(**map.find(objects.data()), 0);
}

} // namespace scenariomatch
