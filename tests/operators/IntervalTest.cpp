#include "operators/interval/Interval.h"

#include "Samples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

using Relation = CSPlainValue (*)(Arguments);

const std::map<std::string, Relation>& relations()
{
    static const std::map<std::string, Relation> kRelations{
        {"before", isBefore},
        {"after", isAfter},
        {"meets", meets},
        {"metBy", isMetBy},
        {"overlaps", overlaps},
        {"overlappedBy", isOverlappedBy},
        {"starts", starts},
        {"startedBy", isStartedBy},
        {"during", isDuring},
        {"contains", contains},
        {"finishes", finishes},
        {"finishedBy", isFinishedBy},
        {"equals", equals}};
    return kRelations;
}

const std::map<std::string, std::string>& inverses()
{
    static const std::map<std::string, std::string> kInverses{
        {"before", "after"},
        {"after", "before"},
        {"meets", "metBy"},
        {"metBy", "meets"},
        {"overlaps", "overlappedBy"},
        {"overlappedBy", "overlaps"},
        {"starts", "startedBy"},
        {"startedBy", "starts"},
        {"during", "contains"},
        {"contains", "during"},
        {"finishes", "finishedBy"},
        {"finishedBy", "finishes"},
        {"equals", "equals"}};
    return kInverses;
}

std::vector<std::string> holding(const Values& arguments)
{
    std::vector<std::string> names;
    for (const auto& [name, relation] : relations()) {
        if (isTrue(answer(relation, arguments))) {
            names.push_back(name);
        }
    }
    return names;
}

std::vector<std::string> only(const std::string& name)
{
    return {name};
}

std::vector<Value> allSpansOnASmallClock()
{
    constexpr int kInstants = 5;
    constexpr int kFrame = 40;
    std::vector<Value> spans;
    for (int start = 0; start < kInstants; ++start) {
        for (int end = start; end < kInstants; ++end) {
            spans.push_back(span(start * kFrame + 960, end * kFrame + 960));
        }
    }
    return spans;
}

const CSTimeStamp& endOf(const Value& interval)
{
    return *CSPlainValue(interval.get()).m_interval.end;
}

} // namespace

TEST(Interval, HoldsInTheThirteenTextbookCases)
{
    const Value b = span(3000, 6000);
    EXPECT_EQ(holding({span(0, 1000), b}), only("before"));
    EXPECT_EQ(holding({span(7000, 9000), b}), only("after"));
    EXPECT_EQ(holding({span(0, 3000), b}), only("meets"));
    EXPECT_EQ(holding({span(6000, 9000), b}), only("metBy"));
    EXPECT_EQ(holding({span(0, 4000), b}), only("overlaps"));
    EXPECT_EQ(holding({span(4000, 9000), b}), only("overlappedBy"));
    EXPECT_EQ(holding({span(3000, 5000), b}), only("starts"));
    EXPECT_EQ(holding({span(3000, 9000), b}), only("startedBy"));
    EXPECT_EQ(holding({span(4000, 5000), b}), only("during"));
    EXPECT_EQ(holding({span(0, 9000), b}), only("contains"));
    EXPECT_EQ(holding({span(4000, 6000), b}), only("finishes"));
    EXPECT_EQ(holding({span(0, 6000), b}), only("finishedBy"));
    EXPECT_EQ(holding({span(3000, 6000), b}), only("equals"));
}

TEST(Interval, ExactlyOneRelationHoldsAndItsInverseTheOtherWayRound)
{
    const std::vector<Value> spans = allSpansOnASmallClock();
    for (const Value& a : spans) {
        for (const Value& b : spans) {
            const auto there = holding({a, b});
            const auto back = holding({b, a});
            ASSERT_EQ(there.size(), 1U);
            ASSERT_EQ(back.size(), 1U);
            EXPECT_EQ(back.front(), inverses().at(there.front()));
        }
    }
}

TEST(Interval, TellsTruthfullyWhichArgumentEndsFirst)
{
    const std::vector<Value> spans = allSpansOnASmallClock();
    const std::map<std::string, std::size_t> endsFirst{
        {"before", 0},
        {"after", 1},
        {"meets", 0},
        {"metBy", 1},
        {"overlaps", 0},
        {"overlappedBy", 1},
        {"starts", 0},
        {"startedBy", 1},
        {"during", 0},
        {"contains", 1}};
    for (const Value& a : spans) {
        for (const Value& b : spans) {
            const auto found = endsFirst.find(holding({a, b}).front());
            const double lead = secondsBetween(endOf(a), endOf(b));
            if (found == endsFirst.end()) {
                EXPECT_EQ(lead, 0.0);
            } else {
                EXPECT_EQ(found->second == 0, lead > 0.0);
            }
        }
    }
}

TEST(Interval, PlacesAnInstant)
{
    const Value b = span(3000, 6000);
    EXPECT_EQ(holding({span(3000, 3000), b}), only("starts"));
    EXPECT_EQ(holding({span(6000, 6000), b}), only("finishes"));
    EXPECT_EQ(holding({span(4000, 4000), b}), only("during"));
    EXPECT_EQ(holding({span(4000, 4000), span(4000, 4000)}), only("equals"));
}

TEST(Interval, ToleranceLetsTimesLieApart)
{
    const Value b = span(3000, 6000);
    const Value frame = decimal(0.04);
    EXPECT_TRUE(isTrue(answer(meets, {span(0, 2960), b, frame})));
    EXPECT_TRUE(isTrue(answer(meets, {span(0, 3040), b, frame})));
    EXPECT_TRUE(isFalse(answer(meets, {span(0, 2959), b, frame})));
    EXPECT_TRUE(isTrue(answer(isMetBy, {span(6040, 9000), b, frame})));
    EXPECT_TRUE(isFalse(answer(isMetBy, {span(6041, 9000), b, frame})));
    EXPECT_TRUE(isTrue(answer(starts, {span(2960, 5000), b, frame})));
    EXPECT_TRUE(isFalse(answer(starts, {span(2959, 5000), b, frame})));
    EXPECT_TRUE(isTrue(answer(isStartedBy, {span(3040, 7000), b, frame})));
    EXPECT_TRUE(isFalse(answer(isStartedBy, {span(3041, 7000), b, frame})));
    EXPECT_TRUE(isTrue(answer(finishes, {span(4000, 6040), b, frame})));
    EXPECT_TRUE(isFalse(answer(finishes, {span(4000, 6041), b, frame})));
    EXPECT_TRUE(isTrue(answer(isFinishedBy, {span(1000, 5960), b, frame})));
    EXPECT_TRUE(isFalse(answer(isFinishedBy, {span(1000, 5959), b, frame})));
    EXPECT_TRUE(isTrue(answer(equals, {span(3040, 5960), b, frame})));
    EXPECT_TRUE(isFalse(answer(equals, {span(3041, 6000), b, frame})));
    EXPECT_TRUE(isFalse(answer(equals, {span(3000, 6041), b, frame})));
}

TEST(Interval, ToleranceMayBeAWholeNumberOrZero)
{
    EXPECT_TRUE(isTrue(answer(meets, {span(0, 1000), span(2000, 3000), whole(1)})));
    EXPECT_TRUE(isTrue(answer(meets, {span(0, 1000), span(1000, 3000), whole(0)})));
    EXPECT_TRUE(isFalse(answer(meets, {span(0, 1000), span(1001, 3000), whole(0)})));
}

TEST(Interval, AToleranceThatIsNoneMakesItFalse)
{
    for (const Value& wrong :
         Values{nullptr, decimal(-1), decimal(kNaN), word("1"), disguised("DOUBLE")}) {
        EXPECT_TRUE(isFalse(answer(equals, {span(0, 1), span(0, 1), wrong})));
        EXPECT_TRUE(isFalse(answer(meets, {span(0, 1), span(1, 2), wrong})));
    }
}

TEST(Interval, RelationsWithoutToleranceTakeTwoArguments)
{
    const Value zero = whole(0);
    EXPECT_TRUE(isFalse(answer(isBefore, {span(0, 1), span(2, 3), zero})));
    EXPECT_TRUE(isFalse(answer(isAfter, {span(2, 3), span(0, 1), zero})));
    EXPECT_TRUE(isFalse(answer(overlaps, {span(0, 2), span(1, 3), zero})));
    EXPECT_TRUE(isFalse(answer(isOverlappedBy, {span(1, 3), span(0, 2), zero})));
    EXPECT_TRUE(isFalse(answer(isDuring, {span(1, 2), span(0, 3), zero})));
    EXPECT_TRUE(isFalse(answer(contains, {span(0, 3), span(1, 2), zero})));
}

TEST(Interval, NoRelationHoldsForABrokenInterval)
{
    const Value whole3 = whole(3);
    const Value noTime =
        std::make_shared<CSInterval>(std::make_shared<CSTimeStamp>(0, kNaN, 0.0), stamp(0));
    for (const Value& broken : Values{
             nullptr,
             std::make_shared<CSInterval>(),
             std::make_shared<CSInterval>(stamp(0), nullptr),
             std::make_shared<CSInterval>(nullptr, stamp(0)),
             noTime,
             span(2, 1),
             whole3,
             disguised("INTERVAL")}) {
        EXPECT_THAT(holding({broken, span(0, 1)}), testing::IsEmpty());
        EXPECT_THAT(holding({span(0, 1), broken}), testing::IsEmpty());
        EXPECT_THAT(holding({broken, broken}), testing::IsEmpty());
    }
}

TEST(Interval, NoRelationHoldsForWrongCounts)
{
    EXPECT_THAT(holding({}), testing::IsEmpty());
    EXPECT_THAT(holding({span(0, 1)}), testing::IsEmpty());
    EXPECT_THAT(holding({span(0, 1), span(0, 1), whole(0), whole(0)}), testing::IsEmpty());
}

} // namespace scenariomatch
