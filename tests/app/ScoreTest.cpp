#include "app/Score.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

EventRecord record(std::set<int> ids, std::int64_t begin, std::int64_t end)
{
    EventRecord record;
    record.models = {"Meeting"};
    record.ids = std::move(ids);
    record.begin = begin;
    record.end = end;
    return record;
}

EventRecord group(std::set<int> ids, std::int64_t begin, std::int64_t end)
{
    EventRecord label = record(std::move(ids), begin, end);
    label.isGroup = true;
    return label;
}

ScoreRule framesRule()
{
    return {0.3, 1.0, 25.0};
}

struct Figures
{
    std::size_t hits = 0;
    std::size_t misses = 0;
    std::size_t falseAlarms = 0;

    bool operator==(const Figures&) const = default;
};

Figures figures(const std::vector<EventRecord>& labels, const std::vector<EventRecord>& events)
{
    const Score result = score(labels, events, {}, framesRule());
    EXPECT_EQ(result.problem, std::nullopt);
    const ScoreRow& row = result.rows.at(0);
    return {row.hits, row.misses(), row.falseAlarms};
}

const EventRecord kPair = record({1, 2}, 100, 199);

} // namespace

TEST(Score, AsksForAnOverlapOfThreeTenths)
{
    EXPECT_EQ(figures({kPair}, {record({1, 2}, 170, 199)}), (Figures{1, 0, 0}));
    EXPECT_EQ(figures({kPair}, {record({1, 2}, 171, 199)}), (Figures{0, 1, 1}));
}

TEST(Score, TakesLittleOverlapWithABeginWithinASecond)
{
    EXPECT_EQ(figures({kPair}, {record({1, 2}, 125, 130)}), (Figures{1, 0, 0}));
    EXPECT_EQ(figures({kPair}, {record({1, 2}, 126, 131)}), (Figures{0, 1, 1}));
    EXPECT_EQ(figures({kPair}, {record({1, 2}, 80, 99)}), (Figures{0, 1, 1}));
}

TEST(Score, AsksForTheRightParticipantsAndRecording)
{
    EXPECT_EQ(figures({kPair}, {record({1, 3}, 100, 199)}), (Figures{0, 1, 1}));
    EXPECT_EQ(figures({kPair}, {record({1}, 100, 199)}), (Figures{0, 1, 1}));
    EventRecord elsewhere = kPair;
    elsewhere.recording = "b";
    EXPECT_EQ(figures({kPair}, {elsewhere}), (Figures{0, 1, 1}));
}

TEST(Score, ComparesPlacesOnlyWhereTheLabelNamesOne)
{
    EventRecord event = kPair;
    event.places = {"Door"};
    EXPECT_EQ(figures({kPair}, {event}), (Figures{1, 0, 0}));
    EventRecord label = kPair;
    label.places = {"Gate"};
    EXPECT_EQ(figures({label}, {event}), (Figures{0, 1, 1}));
    EXPECT_EQ(figures({record({}, 100, 199)}, {event}), (Figures{1, 0, 0}));
}

TEST(Score, CountsASecondEventForALabelAsFalseAlarm)
{
    EXPECT_EQ(
        figures({kPair}, {record({1, 2}, 100, 150), record({1, 2}, 151, 199)}), (Figures{1, 0, 1}));
}

TEST(Score, PairsAsManyAsCanBe)
{
    const std::vector<EventRecord> labels{record({1}, 100, 199), record({1}, 210, 219)};
    EXPECT_EQ(figures(labels, {record({1}, 190, 219), record({1}, 120, 199)}), (Figures{2, 0, 0}));
    // The first event fits both labels and the first one better; the second one fits that alone.
    EXPECT_EQ(
        figures(
            {record({1}, 100, 199), record({1}, 160, 250)},
            {record({1}, 110, 220), record({1}, 100, 135)}),
        (Figures{2, 0, 0}));
}

TEST(Score, PrefersTheGreatestOverlap)
{
    const std::vector<EventRecord> labels{kPair};
    const std::vector<EventRecord> events{record({1, 2}, 100, 150), record({1, 2}, 105, 199)};
    const Score result = score(labels, events, {}, framesRule());
    ASSERT_EQ(result.rows.at(0).delays.size(), 1U);
    EXPECT_DOUBLE_EQ(result.rows[0].delays[0], 0.2);
}

TEST(Score, LetsAPartOfAGroupStandForItsLabels)
{
    const std::vector<EventRecord> labels{
        group({0, 1, 2}, 100, 199), group({0, 1, 2, 3}, 200, 299)};
    const std::vector<EventRecord> events{record({0, 1}, 100, 299), record({1, 2}, 100, 199)};
    const Score result = score(labels, {events[0], events[1]}, {}, framesRule());
    EXPECT_EQ(result.rows.at(0).hits, 2U);
    EXPECT_EQ(result.rows[0].falseAlarms, 0U);
    // One event may stand for several labels of a group.
    EXPECT_EQ(figures(labels, {record({0, 1}, 100, 299)}), (Figures{2, 0, 0}));
    EXPECT_EQ(figures({labels[0]}, {record({0, 9}, 100, 199)}), (Figures{0, 1, 1}));
}

TEST(Score, CountsOthersOfAGroupApart)
{
    const std::vector<EventRecord> labels{group({0, 1, 2}, 100, 199)};
    const std::vector<EventRecord> events{
        record({0, 1}, 100, 199), record({0, 2}, 150, 249), record({1, 2}, 151, 252)};
    const Score result = score(labels, events, {}, framesRule());
    EXPECT_EQ(result.rows.at(0).ofGroup, 1U);
    EXPECT_EQ(result.rows[0].falseAlarms, 1U);
}

TEST(Score, CountsFiguresPerModel)
{
    EventRecord bag = record({3}, 100, 199);
    bag.models = {"Back", "Other"};
    EventRecord back = record({3}, 150, 199);
    back.models = {"Back"};
    EventRecord zone = record({3}, 150, 199);
    zone.models = {"Zone"};
    EventRecord fall = record({3}, 150, 199);
    fall.models = {"Fall"};
    const std::vector<EventRecord> labels{kPair, kPair, bag};
    const std::vector<EventRecord> events{kPair, back, zone, fall};
    const Score result = score(labels, events, {"Fall", "Meeting"}, framesRule());
    ASSERT_EQ(result.rows.size(), 3U);
    EXPECT_EQ(result.rows[0].models, std::vector<std::string>{"Meeting"});
    EXPECT_EQ(result.rows[0].precision(), 1.0);
    EXPECT_EQ(result.rows[0].recall(), 0.5);
    EXPECT_DOUBLE_EQ(result.rows[0].f1().value(), 2.0 / 3);
    EXPECT_EQ(result.rows[1].hits, 1U);
    EXPECT_EQ(result.rows[1].medianDelay(), 2.0);
    EXPECT_EQ(result.rows[2].models, std::vector<std::string>{"Fall"});
    EXPECT_EQ(result.rows[2].precision(), 0.0);
    EXPECT_EQ(result.rows[2].recall(), std::nullopt);
    EXPECT_EQ(result.rows[2].medianDelay(), std::nullopt);
    EXPECT_EQ(result.unscored, 1U);
}

TEST(Score, TakesTheMiddleOfTwoDelays)
{
    const std::vector<EventRecord> labels{record({1}, 0, 99), record({1}, 200, 299)};
    const std::vector<EventRecord> events{record({1}, 25, 99), record({1}, 210, 299)};
    EXPECT_DOUBLE_EQ(score(labels, events, {}, framesRule()).rows.at(0).medianDelay().value(), 0.7);
}

TEST(Score, RefusesModelsThatBelongToTwoRows)
{
    EventRecord both = kPair;
    both.models = {"Meeting", "Talk"};
    EXPECT_EQ(
        score({kPair, both}, {}, {}, framesRule()).problem,
        "one of the models Meeting|Talk is named by other labels without the rest of them");
    EXPECT_NE(score({both, kPair}, {}, {}, framesRule()).problem, std::nullopt);
}

TEST(Score, RefusesMoreThanItMayHold)
{
    const std::vector<EventRecord> many(10, kPair);
    EXPECT_EQ(
        score(many, many, {}, framesRule(), {.pairings = 99}).problem,
        "more than 99 labels and events fit each other");
    EXPECT_EQ(score(many, many, {}, framesRule(), {.pairings = 100}).problem, std::nullopt);
}

} // namespace scenariomatch
