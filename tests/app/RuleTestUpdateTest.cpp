#include "app/RuleTestUpdate.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

FoundEvent found(const std::string& model, int person, std::int64_t begin)
{
    FoundEvent event;
    event.report.name = model;
    event.report.alarmLevel = "URGENT";
    event.report.objects = {{"p", "Person", person, ""}, {"z", "Zone", 0, "North door"}};
    event.begin = begin;
    event.end = begin + 500;
    return event;
}

// The text with these events in place of those of the cases; empty where it is refused.
std::string
updated(const std::string& text, const std::map<std::size_t, std::vector<FoundEvent>>& events)
{
    const RuleTestReading reading = readRuleTest(text, "door.yaml");
    EXPECT_TRUE(reading.file) << reading.problem;
    std::map<std::size_t, RuleVerdict> verdicts;
    for (const auto& [number, list] : events) {
        RuleRun run;
        run.events = list;
        verdicts[number] = judge(reading.file->cases.at(number), std::move(run));
    }
    return updatedRuleTest(*reading.file, verdicts).value_or("");
}

const std::string kHead = "# Doors.\n"
                          "params: p.yaml # which\n"
                          "cases:\n"
                          "  # The first one.\n"
                          "  - name: one\n"
                          "    tracks: t.jsonl\n";
const std::string kTail = "\n"
                          "  # The second one.\n"
                          "  - tracks: t.jsonl\n"
                          "    events: [B] # stays\n"
                          "    name: two\n";
const std::string kFirst = "{model: A, objects: {p: 3, z: \"North door\"}, begin: 1.5, end: 2, ";

} // namespace

TEST(RuleTestUpdate, ReplacesAListOfLines)
{
    const std::string old = "    events:\n"
                            "      - {model: A, begin: 1,\n"
                            "         end: 2, tolerance: 0.75}\n"
                            "      # between\n"
                            "      - C\n"
                            "    # behind\n";
    EXPECT_EQ(
        updated(kHead + old + kTail, {{0, {found("A", 3, 1500), found("A", 4, 7000)}}}),
        kHead + "    events:\n      - " + kFirst + "tolerance: 0.75, alarm: URGENT}\n" +
            "      - {model: A, objects: {p: 4, z: \"North door\"}, begin: 7, end: 7.5, alarm: "
            "URGENT}\n    # behind\n" +
            kTail);
}

TEST(RuleTestUpdate, ReplacesAListOnItsKeysColumn)
{
    EXPECT_EQ(
        updated(kHead + "    events:\n    - C\n    - C\n" + kTail, {{0, {found("A", 3, 1500)}}}),
        kHead + "    events:\n    - " + kFirst + "alarm: URGENT}\n" + kTail);
}

TEST(RuleTestUpdate, WritesLinesForAListInBrackets)
{
    const std::string expected =
        kHead + "    events:\n      - " + kFirst + "alarm: URGENT}\n" + kTail;
    EXPECT_EQ(updated(kHead + "    events: []\n" + kTail, {{0, {found("A", 3, 1500)}}}), expected);
    EXPECT_EQ(
        updated(
            kHead + "    events: [\"]\", ']', # ]\n      {model: D}]\n" + kTail,
            {{0, {found("A", 3, 1500)}}}),
        expected);
}

TEST(RuleTestUpdate, WritesThatThereIsNothing)
{
    EXPECT_EQ(
        updated(kHead + "    events: [C]\n" + kTail, {{0, {}}}),
        kHead + "    events: []\n" + kTail);
    EXPECT_EQ(
        updated(kHead + "    events:\n      - C\n" + kTail, {{0, {}}}),
        kHead + "    events:\n      []\n" + kTail);
}

TEST(RuleTestUpdate, ReplacesSeveralCases)
{
    EXPECT_EQ(
        updated(kHead + "    events: [C]\n" + kTail, {{0, {found("A", 3, 1500)}}, {1, {}}}),
        kHead + "    events:\n      - " + kFirst + "alarm: URGENT}\n" +
            "\n  # The second one.\n  - tracks: t.jsonl\n    events: [] # stays\n    name: two\n");
}

TEST(RuleTestUpdate, WritesJsonIntoJson)
{
    EXPECT_EQ(
        updated(
            R"({"params": "p", "cases": [{"name": "a", "events": [ "]" ], "tracks": "t"}]})",
            {{0, {found("A", 3, 1500)}}}),
        R"({"params": "p", "cases": [{"name": "a", "events": [{"model": "A", )"
        R"("objects": {"p": 3, "z": "North door"}, "begin": 1.5, "end": 2, "alarm": "URGENT"}], )"
        R"("tracks": "t"}]})");
}

TEST(RuleTestUpdate, QuotesNamesThatYamlWouldTakeForSomethingElse)
{
    FoundEvent event = found("A", 3, 1500);
    event.report.objects[1].name = "No";
    EXPECT_NE(
        updated(kHead + "    events: []\n", {{0, {event}}}).find("z: \"No\""), std::string::npos);
}

TEST(RuleTestUpdate, RefusesWhatOthersShare)
{
    const std::string text = kHead + "    events: &e [C]\n"
                                     "  - name: two\n"
                                     "    tracks: t.jsonl\n"
                                     "    events: *e\n";
    EXPECT_EQ(updated(text, {{0, {found("A", 3, 1500)}}}), "");
    EXPECT_EQ(updated(text, {{1, {found("A", 3, 1500)}}}), "");
}

TEST(RuleTestUpdate, KeepsCarriageReturnsOfOtherLines)
{
    const std::string text = "params: p\r\ncases:\r\n- name: a\r\n  tracks: t\r\n"
                             "  events:\r\n  - C\r\n- name: b\r\n  tracks: t\r\n  events: []\r\n";
    EXPECT_EQ(
        updated(text, {{0, {found("A", 3, 1500)}}}),
        "params: p\r\ncases:\r\n- name: a\r\n  tracks: t\r\n  events:\r\n  - " + kFirst +
            "alarm: URGENT}\n- name: b\r\n  tracks: t\r\n  events: []\r\n");
}

} // namespace scenariomatch
