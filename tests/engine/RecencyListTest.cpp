#include "engine/RecencyList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using scenariomatch::RecencyList;
using testing::ElementsAre;

namespace
{

struct Item
{
    int name;
    int end;
};

} // namespace

TEST(RecencyList, PutsWhatATurnTouchesInFrontInTheOrderOfTouching)
{
    RecencyList<int> list;
    const auto a = list.append(1);
    const auto b = list.append(2);
    const auto c = list.append(3);
    list.touch(a, 1);
    list.touch(b, 1);
    list.touch(c, 2);
    list.touch(a, 2);
    EXPECT_THAT(list.items(), ElementsAre(3, 1, 2));
}

TEST(RecencyList, KeepsTheBlockOfATurnWhenItsLastIsErased)
{
    RecencyList<int> list;
    const auto a = list.append(1);
    const auto b = list.append(2);
    const auto c = list.append(3);
    list.touch(b, 1);
    list.touch(c, 1);
    list.erase(a);
    list.touch(list.append(4), 1);
    EXPECT_THAT(list.items(), ElementsAre(2, 3, 4));
}

TEST(RecencyList, StartsOverAtTheEndOfTheList)
{
    RecencyList<int> list;
    const auto a = list.append(1);
    list.append(2);
    list.touch(a, 1);
    list.restart(a);
    EXPECT_THAT(list.items(), ElementsAre(2, 1));
    list.touch(a, 2);
    EXPECT_THAT(list.items(), ElementsAre(1, 2));
}

TEST(RecencyList, EqualsAStableSortByFallingEnd)
{
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same cases every time
    RecencyList<Item> list;
    std::vector<RecencyList<Item>::Place> places;
    std::list<Item> sorted;
    for (int turn = 1; turn <= 200; ++turn) {
        std::vector<int> chosen;
        for (auto& item : sorted) {
            if (random() % 3 == 0) {
                item.end = turn;
                chosen.push_back(item.name);
            }
        }
        const int name = turn;
        sorted.push_back({name, turn});
        places.push_back(list.append({name, turn}));
        chosen.push_back(name);
        for (const int touched : chosen) {
            list.touch(
                places[static_cast<std::size_t>(touched) - 1], static_cast<std::uint64_t>(turn));
        }
        sorted.sort([](const Item& x, const Item& y) { return x.end > y.end; });
        ASSERT_TRUE(std::equal(
            sorted.begin(),
            sorted.end(),
            list.items().begin(),
            list.items().end(),
            [](const Item& x, const Item& y) { return x.name == y.name; }));
    }
}
