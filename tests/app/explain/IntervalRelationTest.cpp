#include "app/explain/IntervalRelation.h"

#include "scenario/OperatorCall.h"
#include "tests/app/explain/ExplainWorld.h"
#include "tests/reference/Random.h"

#include <gtest/gtest.h>

#include <array>

namespace scenariomatch
{

namespace
{

constexpr std::array kNames{
    "before",
    "after",
    "meets",
    "metBy",
    "overlaps",
    "overlappedBy",
    "starts",
    "startedBy",
    "during",
    "contains",
    "finishes",
    "finishedBy",
    "equals"};

// Two times, in tenths of a second.
struct Times
{
    Times(int aStart, int aEnd, int bStart, int bEnd)
        : stamps{CSTimeStamp(0, 0, 100.0 * aStart), CSTimeStamp(0, 0, 100.0 * aEnd), CSTimeStamp(0, 0, 100.0 * bStart), CSTimeStamp(0, 0, 100.0 * bEnd)}
        , arguments{
              CSPlainValue::interval(stamps.data(), &stamps[1]),
              CSPlainValue::interval(&stamps[2], &stamps[3])}
    {
    }

    std::array<CSTimeStamp, 4> stamps;
    std::vector<CSPlainValue> arguments;
};

std::string missText(const char* name, const Times& times)
{
    const auto misses = IntervalRelation::named(name)->misses(times.arguments);
    std::string text;
    for (const auto& miss : misses.value()) {
        text += (text.empty() ? "" : "; ") + IntervalRelation::textOf(miss, "c1", "c2");
    }
    return text;
}

} // namespace

TEST(IntervalRelation, AgreesWithTheOperatorOnRandomTimes)
{
    Random random(5);
    for (int i = 0; i < 20'000; ++i) {
        const char* const name = kNames.at(static_cast<std::size_t>(random.pick(13)));
        const int a = random.pick(8);
        const int b = random.pick(8);
        Times times(a, a + random.pick(5), b, b + random.pick(5));
        const auto relation = IntervalRelation::named(name);
        CSOperatorInterfaceAbstract& op = *standardOperators().at(name);
        if (op.describe().m_arguments.size() == 3 && random.oneIn(2)) {
            times.arguments.push_back(CSPlainValue::number(0.1 * random.pick(3)));
        }
        const bool holds = callOperatorPlain(op, times.arguments).m_truth;
        ASSERT_EQ(relation->misses(times.arguments)->empty(), holds) << name;
    }
}

TEST(IntervalRelation, KnowsNoOtherNames)
{
    EXPECT_FALSE(IntervalRelation::named("beside"));
    EXPECT_FALSE(IntervalRelation::named(""));
}

TEST(IntervalRelation, SaysWhichEndsLieHow)
{
    EXPECT_EQ(missText("before", Times(0, 14, 10, 20)), "c1 ended 0.4 s after c2 began");
    EXPECT_EQ(missText("before", Times(0, 10, 10, 20)), "c1 ended when c2 began");
    EXPECT_EQ(missText("after", Times(5, 14, 0, 8)), "c1 began 0.3 s before c2 ended");
    EXPECT_EQ(
        missText("meets", Times(5, 14, 0, 8)),
        "c1 ended 1.4 s after c2 began; c1 began 0.5 s after c2 began; "
        "c1 ended 0.6 s after c2 ended");
    EXPECT_EQ(missText("overlaps", Times(0, 5, 8, 9)), "c1 ended 0.3 s before c2 began");
}

TEST(IntervalRelation, TellsWhatIsToSpare)
{
    const auto before = IntervalRelation::named("before");
    EXPECT_DOUBLE_EQ(before->reserve(Times(0, 5, 8, 9).arguments).value(), 0.3);
    const auto during = IntervalRelation::named("during");
    EXPECT_DOUBLE_EQ(during->reserve(Times(2, 5, 0, 9).arguments).value(), 0.2);
}

TEST(IntervalRelation, SaysWhatIsNeeded)
{
    const Times times(0, 1, 2, 3);
    EXPECT_EQ(
        IntervalRelation::named("before")->requirement("c1", "c2", times.arguments),
        "c1 ends before c2 begins");
    std::vector<CSPlainValue> tolerant = times.arguments;
    tolerant.push_back(CSPlainValue::number(0.5));
    EXPECT_EQ(
        IntervalRelation::named("finishes")->requirement("c1", "c2", tolerant),
        "c1 begins after c2 begins and c1 ends within 0.5 s of when c2 ends");
}

TEST(IntervalRelation, SaysNothingOfWhatIsNoTime)
{
    const auto before = IntervalRelation::named("before");
    std::vector<CSPlainValue> arguments{CSPlainValue::number(1), CSPlainValue::number(2)};
    EXPECT_FALSE(before->misses(arguments));
    EXPECT_FALSE(before->reserve(arguments));
    CSTimeStamp start(0, 0, 0);
    arguments = {CSPlainValue::interval(&start, nullptr), CSPlainValue::interval(&start, &start)};
    EXPECT_FALSE(before->misses(arguments));
}

} // namespace scenariomatch
