#include "app/report/KeyPoints.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace scenariomatch
{

namespace
{

constexpr double kQuantum = 0.01;
constexpr double kDeparture = 0.05;

std::vector<KeyPoint> keyPointsOf(const std::vector<TrackSample>& samples)
{
    KeyPoints points(kQuantum, kDeparture);
    for (const TrackSample& sample : samples) {
        points.add(sample);
    }
    return points.take();
}

// How far the place that a page shows at the sample's time is from the sample.
double departureOf(const TrackSample& sample, const std::vector<KeyPoint>& points)
{
    const auto next = std::lower_bound(
        points.begin(), points.end(), sample.time, [](const KeyPoint& point, std::int64_t time) {
            return point.time < time;
        });
    EXPECT_NE(next, points.end());
    auto x = static_cast<double>(next->x);
    auto y = static_cast<double>(next->y);
    if (next->time != sample.time) {
        EXPECT_FALSE(next->isAfterGap);
        const KeyPoint& last = *(next - 1);
        const double share = static_cast<double>(sample.time - last.time) /
                             static_cast<double>(next->time - last.time);
        x = static_cast<double>(last.x) + share * (x - static_cast<double>(last.x));
        y = static_cast<double>(last.y) + share * (y - static_cast<double>(last.y));
    }
    return std::hypot(x * kQuantum - sample.x, y * kQuantum - sample.y);
}

// A walk with turns, stops, jumps and a noisy tracker.
std::vector<TrackSample> randomWalk(unsigned seed)
{
    // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): the same walks every time
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> part(-1.0, 1.0);
    std::uniform_int_distribution<int> step(1, 200);
    const double noise = seed % 3 == 0 ? 0.0 : 0.02;
    std::vector<TrackSample> samples;
    TrackSample now{0, 100 * part(random), 100 * part(random)};
    double speedX = 0.0;
    double speedY = 0.0;
    for (int i = 0; i < 500; ++i) {
        if (part(random) > 0.9) {
            speedX = 0.1 * part(random);
            speedY = 0.1 * part(random);
        }
        now.time += step(random);
        now.x += speedX + (part(random) > 0.99 ? 50 * part(random) : 0.0);
        now.y += speedY;
        samples.push_back({now.time, now.x + noise * part(random), now.y + noise * part(random)});
    }
    return samples;
}

} // namespace

TEST(KeyPoints, ShowEverySampleWithinTheDeparture)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        const std::vector<TrackSample> samples = randomWalk(seed);
        const std::vector<KeyPoint> points = keyPointsOf(samples);
        EXPECT_LT(points.size(), samples.size());
        for (const TrackSample& sample : samples) {
            ASSERT_LE(departureOf(sample, points), kDeparture + 1e-9) << "seed " << seed;
        }
    }
}

TEST(KeyPoints, KeepTheEndsOfAStraightWay)
{
    std::vector<TrackSample> samples;
    for (std::int64_t i = 0; i <= 1000; ++i) {
        samples.push_back({i * 40, static_cast<double>(i) * 0.06, 3.0});
    }
    const std::vector<KeyPoint> points = keyPointsOf(samples);
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].x, 0);
    EXPECT_EQ(points[1].time, 40'000);
    EXPECT_EQ(points[1].x, 6000);
    EXPECT_EQ(points[1].y, 300);
}

TEST(KeyPoints, KeepTheEndsOfAGap)
{
    KeyPoints points(kQuantum, kDeparture);
    points.interrupt();
    points.add({0, 0, 0});
    points.add({40, 1, 0});
    points.interrupt();
    points.add({400, 1, 0});
    points.add({440, 1, 0});
    const std::vector<KeyPoint> kept = points.take();
    ASSERT_EQ(kept.size(), 4U);
    EXPECT_FALSE(kept[0].isAfterGap);
    EXPECT_FALSE(kept[1].isAfterGap);
    EXPECT_TRUE(kept[2].isAfterGap);
    EXPECT_EQ(kept[2].time, 400);
    EXPECT_FALSE(kept[3].isAfterGap);
}

TEST(KeyPoints, TakeTheFirstSampleOfATime)
{
    const std::vector<KeyPoint> points = keyPointsOf({{5, 1, 1}, {5, 9, 9}, {4, 9, 9}, {6, 1, 1}});
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].x, 100);
    EXPECT_EQ(points[1].time, 6);
}

TEST(KeyPoints, AreNoneOfNoSample)
{
    EXPECT_TRUE(keyPointsOf({}).empty());
    EXPECT_EQ(keyPointsOf({{7, 1, 2}}).size(), 1U);
}

TEST(KeyPoints, StayWholeNumbersOutOfThisWorld)
{
    const std::vector<KeyPoint> points = keyPointsOf({{0, 1e300, -1e300}, {1, std::nan(""), 0}});
    EXPECT_EQ(points.front().x, 1'000'000'000'000'000);
    EXPECT_EQ(points.front().y, -1'000'000'000'000'000);
    EXPECT_EQ(points.back().x, 0);
}

} // namespace scenariomatch
