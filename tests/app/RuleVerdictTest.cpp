#include "app/RuleVerdict.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

FoundEvent found(const std::string& model, std::int64_t begin, std::int64_t end)
{
    FoundEvent event;
    event.report.name = model;
    event.report.alarmLevel = "URGENT";
    event.report.objects = {{"p", "Person", 3, ""}, {"z", "Zone", 0, "Door"}};
    event.begin = begin;
    event.end = end;
    return event;
}

ExpectedEvent expected(const std::string& model, std::int64_t begin, std::int64_t end)
{
    ExpectedEvent event;
    event.model = model;
    event.begin = begin;
    event.end = end;
    event.line = 7;
    return event;
}

using Lines = std::vector<std::string>;

Lines differences(const RuleCase& ruleCase, std::vector<FoundEvent> events)
{
    RuleRun run;
    run.events = std::move(events);
    return judge(ruleCase, std::move(run)).differences;
}

// The differences from one expected event.
Lines differencesFrom(const ExpectedEvent& event, std::vector<FoundEvent> events)
{
    RuleCase ruleCase;
    ruleCase.tolerance = 100;
    ruleCase.events = {event};
    return differences(ruleCase, std::move(events));
}

} // namespace

TEST(RuleVerdict, TakesTimesWithinTheTolerance)
{
    const ExpectedEvent event = expected("A", 1000, 2000);
    EXPECT_EQ(differencesFrom(event, {found("A", 1100, 1900)}), Lines());
    EXPECT_EQ(
        differencesFrom(event, {found("A", 1101, 2000)}),
        (Lines{"- A  1 to 2 s  (line 7)", "+ A  p=3 z=Door  1.101 to 2 s  URGENT"}));
    EXPECT_EQ(differencesFrom(event, {found("A", 1000, 1899)}).size(), 2U);
    ExpectedEvent wide = event;
    wide.tolerance = 500;
    EXPECT_EQ(differencesFrom(wide, {found("A", 1500, 2500)}), Lines());
}

TEST(RuleVerdict, ComparesOnlyWhatIsSaid)
{
    ExpectedEvent event;
    event.model = "A";
    EXPECT_EQ(differencesFrom(event, {found("A", 1, 2)}), Lines());
    event.alarm = "NOTURGENT";
    EXPECT_EQ(differencesFrom(event, {found("A", 1, 2)}).size(), 2U);
    event.alarm = "URGENT";
    event.objects = {{"p", "3"}};
    EXPECT_EQ(differencesFrom(event, {found("A", 1, 2)}), Lines());
    event.objects = {{"z", "Door"}, {"p", "3"}};
    EXPECT_EQ(differencesFrom(event, {found("A", 1, 2)}), Lines());
    // A zone is known by its name, not by its number.
    event.objects = {{"z", "0"}};
    event.line = 9;
    EXPECT_EQ(differencesFrom(event, {}), Lines{"- A  z=0  URGENT  (line 9)"});
    EXPECT_EQ(differencesFrom(event, {found("A", 1, 2)}).size(), 2U);
    event.objects = {{"q", "3"}};
    EXPECT_EQ(differencesFrom(event, {found("A", 1, 2)}).size(), 2U);
}

TEST(RuleVerdict, TakesEveryEventOnce)
{
    EXPECT_EQ(
        differencesFrom(
            expected("A", 1000, 2000), {found("A", 1000, 2000), found("A", 1050, 2000)}),
        Lines{"+ A  p=3 z=Door  1.05 to 2 s  URGENT"});
}

TEST(RuleVerdict, PutsDifferencesInOrderOfTime)
{
    const Lines lines = differencesFrom(
        expected("B", 2000, 2000), {found("C", 3000, 3000), found("A", 1000, 1000)});
    EXPECT_EQ(
        lines,
        (Lines{
            "+ A  p=3 z=Door  1 to 1 s  URGENT",
            "- B  2 to 2 s  (line 7)",
            "+ C  p=3 z=Door  3 to 3 s  URGENT"}));
}

TEST(RuleVerdict, PassesOverOtherModelsWhereSomeAreNamed)
{
    RuleCase ruleCase;
    ruleCase.events.emplace();
    EXPECT_EQ(differences(ruleCase, {found("A", 1, 2)}).size(), 1U);
    ruleCase.models = {"B"};
    EXPECT_EQ(differences(ruleCase, {found("A", 1, 2)}), Lines());
}

TEST(RuleVerdict, FindsWhatMustBeAbsent)
{
    RuleCase ruleCase;
    ruleCase.absent = {expected("A", 1000, 2000)};
    EXPECT_EQ(differences(ruleCase, {found("A", 100, 999), found("A", 2001, 2002)}), Lines());
    EXPECT_EQ(differences(ruleCase, {found("B", 1000, 2000)}), Lines());
    EXPECT_EQ(
        differences(ruleCase, {found("A", 900, 1000)}),
        Lines{"+ A  p=3 z=Door  0.9 to 1 s  URGENT  (must be absent, line 7)"});
    ruleCase.absent.front().begin.reset();
    EXPECT_EQ(differences(ruleCase, {found("A", 100, 999)}).size(), 1U);
}

TEST(RuleVerdict, SaysThatAModelIsNotInUse)
{
    RuleCase ruleCase;
    ruleCase.absent = {expected("A", 1, 2)};
    RuleRun run;
    run.models = {"B"};
    EXPECT_EQ(judge(ruleCase, run).fault, "line 7: there is no model 'A' in use");
    run.models = {"A"};
    EXPECT_TRUE(judge(ruleCase, run).isPassed());
    ruleCase.models = {"C"};
    EXPECT_EQ(judge(ruleCase, run).fault, "line 1: there is no model 'C' in use");
}

} // namespace scenariomatch
