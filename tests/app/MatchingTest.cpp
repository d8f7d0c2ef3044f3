#include "app/Matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <set>

namespace scenariomatch
{

namespace
{

using Partners = std::vector<std::optional<std::size_t>>;

std::size_t sizeOf(const Partners& partners)
{
    return static_cast<std::size_t>(std::count_if(
        partners.begin(), partners.end(), [](const auto& partner) { return partner.has_value(); }));
}

// Tries everything.
std::size_t largestSize(const std::vector<Pairing>& pairings, std::size_t left, std::uint32_t taken)
{
    std::size_t most = 0;
    bool hasMore = false;
    for (const Pairing& pairing : pairings) {
        hasMore = hasMore || pairing.left > left;
        if (pairing.left == left && (taken >> pairing.right & 1U) == 0) {
            most = std::max(most, 1 + largestSize(pairings, left + 1, taken | 1U << pairing.right));
        }
    }
    return hasMore ? std::max(most, largestSize(pairings, left + 1, taken)) : most;
}

constexpr std::size_t kSide = 5;

std::vector<Pairing> somePairings(std::mt19937& random)
{
    std::vector<Pairing> pairings;
    for (std::size_t left = 0; left < kSide; ++left) {
        for (std::size_t right = 0; right < kSide; ++right) {
            if (random() % 3 == 0) {
                pairings.push_back({left, right, static_cast<double>(random() % 4)});
            }
        }
    }
    return pairings;
}

// Whether all partners are pairings, and nobody stands in two.
bool isMadeOf(const std::vector<Pairing>& pairings, const Partners& partners)
{
    std::set<std::size_t> taken;
    std::size_t left = 0;
    for (const auto& partner : partners) {
        const auto isIt = [&partner, left](const Pairing& pairing) {
            return pairing.left == left && pairing.right == *partner;
        };
        if (partner && (!taken.insert(*partner).second ||
                        std::none_of(pairings.begin(), pairings.end(), isIt))) {
            return false;
        }
        ++left;
    }
    return true;
}

} // namespace

TEST(Matching, TakesTheBestFirst)
{
    EXPECT_EQ(largestMatching({{0, 0, 0.4}, {0, 1, 0.9}}, 1, 2), Partners{1});
    EXPECT_EQ(largestMatching({{1, 0, 0.9}, {0, 0, 0.4}}, 2, 1), (Partners{std::nullopt, 0}));
}

TEST(Matching, ExchangesWhereThatMakesOneMore)
{
    EXPECT_EQ(largestMatching({{0, 0, 0.9}, {0, 1, 0.5}, {1, 0, 0.1}}, 2, 2), (Partners{1, 0}));
}

TEST(Matching, PrefersEarlierPositionsBetweenEquals)
{
    EXPECT_EQ(
        largestMatching({{1, 1, 1}, {1, 0, 1}, {0, 1, 1}, {0, 0, 1}}, 2, 2), (Partners{0, 1}));
}

TEST(Matching, IsEmptyWithoutPairings)
{
    EXPECT_EQ(largestMatching({}, 2, 0), (Partners{std::nullopt, std::nullopt}));
}

TEST(Matching, IsAsLargeAsCanBeAndPairsNobodyTwice)
{
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp,cert-msc32-c): the same pairings every time
    for (int round = 0; round < 500; ++round) {
        const std::vector<Pairing> pairings = somePairings(random);
        const Partners partners = largestMatching(pairings, kSide, kSide);
        EXPECT_EQ(sizeOf(partners), largestSize(pairings, 0, 0));
        EXPECT_TRUE(isMadeOf(pairings, partners));
    }
}

TEST(Matching, EndsWithLongChainsOfExchanges)
{
    constexpr std::size_t kSize = 100'000;
    std::vector<Pairing> pairings;
    // Everybody prefers the next one's place; the last one has only its own.
    for (std::size_t i = 0; i < kSize; ++i) {
        pairings.push_back({i, i, 1});
        if (i + 1 < kSize) {
            pairings.push_back({i, i + 1, 2});
        }
    }
    EXPECT_EQ(sizeOf(largestMatching(pairings, kSize, kSize)), kSize);
}

} // namespace scenariomatch
