#include "app/RuleTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>
#include <string>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

const std::string kTracks =
    "    tracks: {objects: [{id: 1, path: [{time: 0, position: [0, 0]}]}]}\n";
const std::string kCase = "  - name: a\n" + kTracks;

RuleTestReading read(const std::string& text, const RuleTestLimits& limits = {})
{
    return readRuleTest(text, "rules/door.yaml", limits);
}

// A file with one case of these further lines.
RuleTestReading readCase(const std::string& lines)
{
    return read("params: p.yaml\ncases:\n" + kCase + lines);
}

std::string problemOf(const std::string& text, const RuleTestLimits& limits = {})
{
    const std::string problem = read(text, limits).problem;
    return problem.substr(0, problem.find('\n'));
}

std::string caseProblem(const std::string& lines)
{
    return problemOf("params: p.yaml\ncases:\n" + kCase + lines);
}

} // namespace

TEST(RuleTestReader, ReadsAllThatACaseMaySay)
{
    const RuleTestReading reading = read("params: ../gate.yaml\n"
                                         "set: {RHMContext: hall.xml, historySize: 5}\n"
                                         "models: [A, B]\n"
                                         "tolerance: 0.5\n"
                                         "cases:\n"
                                         "  - name: one\n"
                                         "    tracks: hall.jsonl\n"
                                         "    fps: 12.5\n"
                                         "    scale: 0.01\n"
                                         "    tolerance: 0\n"
                                         "    set: {historySize: 7}\n"
                                         "    events:\n"
                                         "      - {model: A, objects: {p: 3, z: Door}, begin: 1,"
                                         " end: 2.5, tolerance: 1, alarm: URGENT}\n"
                                         "      - B\n"
                                         "    absent: [C]\n");
    ASSERT_TRUE(reading.file) << reading.problem;
    ASSERT_EQ(reading.file->cases.size(), 1U);
    const RuleCase& ruleCase = reading.file->cases[0];
    EXPECT_EQ(ruleCase.name, "one");
    EXPECT_EQ(ruleCase.line(), 6);
    EXPECT_EQ(ruleCase.parameterFile, "gate.yaml");
    EXPECT_EQ(
        ruleCase.settings,
        (std::vector<NamedText>{
            {"RHMContext", "rules/hall.xml"}, {"historySize", "5"}, {"historySize", "7"}}));
    EXPECT_EQ(ruleCase.tracks.file, "rules/hall.jsonl");
    EXPECT_EQ(ruleCase.tracks.framesPerSecond, 12.5);
    EXPECT_EQ(ruleCase.tracks.scale, 0.01);
    EXPECT_EQ(ruleCase.models, (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(ruleCase.tolerance, 0);
    ASSERT_TRUE(ruleCase.events);
    ASSERT_EQ(ruleCase.events->size(), 2U);
    const ExpectedEvent& event = ruleCase.events->front();
    EXPECT_EQ(event.objects, (std::map<std::string, std::string>{{"p", "3"}, {"z", "Door"}}));
    EXPECT_EQ(event.begin, 1000);
    EXPECT_EQ(event.end, 2500);
    EXPECT_EQ(event.tolerance, 1000);
    EXPECT_EQ(event.alarm, "URGENT");
    EXPECT_EQ(event.line, 13);
    EXPECT_EQ(ruleCase.events->back().model, "B");
    EXPECT_EQ(ruleCase.absent.front().model, "C");
}

TEST(RuleTestReader, ReadsPathsWrittenInPlace)
{
    const RuleTestReading reading = readCase("    events: []\n");
    ASSERT_TRUE(reading.file) << reading.problem;
    const RuleCase& ruleCase = reading.file->cases[0];
    ASSERT_TRUE(ruleCase.tracks.scene);
    EXPECT_EQ(ruleCase.tracks.scene->objects.at(0).id, 1);
    EXPECT_EQ(ruleCase.tolerance, 100);
}

TEST(RuleTestReader, ReadsJson)
{
    const RuleTestReading reading = read(R"({"params": "p.yaml", "cases": [
        {"name": "a", "tracks": "t.jsonl", "events": [{"model": "A", "begin": 1}]}]})");
    ASSERT_TRUE(reading.file) << reading.problem;
    EXPECT_EQ(reading.file->cases[0].events->at(0).begin, 1000);
}

TEST(RuleTestReader, NamesFileLineAndColumnOfWhatIsWrong)
{
    EXPECT_EQ(
        readCase("    events:\n      - {modell: A}\n").problem,
        "rules/door.yaml:6:10: an event has no key 'modell'; it has model, objects, begin, end, "
        "tolerance, alarm\n"
        "      - {modell: A}\n"
        "         ^\n");
    EXPECT_THAT(problemOf(""), HasSubstr("a test file is a mapping of keys to values"));
    EXPECT_THAT(problemOf("params: p\n"), HasSubstr("a test file needs the key 'cases'"));
    EXPECT_THAT(
        problemOf("cases: []\n"),
        StartsWith("rules/door.yaml:1:8: 'cases' has 1 to 1000 elements, not 0"));
    EXPECT_THAT(
        problemOf("cases:\n" + kCase + "    events: []\n"), HasSubstr("the case needs 'params'"));
    EXPECT_EQ(caseProblem(""), "rules/door.yaml:3:5: the case needs 'events' or 'absent'");
    EXPECT_THAT(
        caseProblem("    scene: s.yaml\n    events: []\n"),
        HasSubstr("the case needs either 'tracks' or 'scene'"));
    EXPECT_THAT(
        caseProblem("    fps: 25\n    events: []\n"), HasSubstr("'fps' is for tracks from a file"));
    EXPECT_THAT(
        caseProblem("    events: [{model: A, begin: 2, end: 1}]\n"),
        HasSubstr("the event ends before it begins"));
    EXPECT_THAT(
        caseProblem("    events: [{model: A, objects: {p: 1, p: 2}}]\n"),
        HasSubstr("the variable 'p' stands here twice"));
    EXPECT_THAT(
        caseProblem("    events: [{model: A, objects: [p]}]\n"),
        HasSubstr("'objects' must be a mapping of variables"));
    EXPECT_THAT(caseProblem("    set: 1\n    events: []\n"), HasSubstr("'set' must be a mapping"));
    EXPECT_THAT(
        caseProblem("    models: [B]\n    events: [A]\n"),
        StartsWith("rules/door.yaml:6:1: the model 'A' is not one of the case's 'models'"));
    EXPECT_THAT(problemOf("params: p\ncases: [\n"), StartsWith("rules/door.yaml:"))
        << "broken YAML";
    EXPECT_THAT(problemOf("a: 1\n---\nb: 2\n"), HasSubstr("a test file holds one document"));
    EXPECT_THAT(
        problemOf("params: p\ncases: [{name: a, scene: nowhere.yaml, events: []}]\n"),
        HasSubstr("cannot read rules/nowhere.yaml: No such file or directory"));
}

TEST(RuleTestReader, RefusesMoreThanItMayHold)
{
    const std::string start = "params: p.yaml\ncases:\n";
    const std::string two = start + kCase + "    events: &e [A, A]\n" + kCase + "    events: *e\n";
    RuleTestLimits limits;
    EXPECT_EQ(problemOf(two, limits), "");
    limits.events = 3;
    EXPECT_THAT(problemOf(two, limits), HasSubstr("the file has more than 3 events"));
    limits = {};
    limits.cases = 1;
    EXPECT_THAT(problemOf(two, limits), HasSubstr("'cases' has 1 elements, not 2"));
    limits = {};
    limits.fileBytes = 10;
    EXPECT_EQ(problemOf(two, limits), "rules/door.yaml:1:1: the file has more than 10 bytes");
    limits = {};
    limits.entries = 1;
    EXPECT_THAT(
        problemOf(start + kCase + "    events: [{model: A, objects: {a: 1, b: 2}}]\n", limits),
        HasSubstr("with at most 1 entries"));
}

TEST(RuleTestReader, RefusesDeepNesting)
{
    EXPECT_NE(problemOf(std::string(100'000, '[')), "");
    EXPECT_NE(problemOf(", a: b"), "");
    EXPECT_NE(problemOf("cases: " + std::string(100'000, '{')), "");
    std::string deep;
    for (int i = 0; i < 3000; ++i) {
        deep += std::string(static_cast<std::size_t>(i), ' ') + "a:\n";
    }
    EXPECT_NE(problemOf(deep), "");
}

TEST(RuleTestReader, RefusesAliasesThatGrow)
{
    std::string text = "a0: &a0 [x, x, x, x, x, x, x, x, x]\n";
    for (int i = 1; i < 30; ++i) {
        text += fmt::format("a{0}: &a{0} [*a{1}, *a{1}, *a{1}]\n", i, i - 1);
    }
    EXPECT_THAT(problemOf(text + "cases: *a29\n"), HasSubstr("a test file has no key 'a0'"));
}

TEST(RuleTestReader, SurvivesEveryCut)
{
    const std::string text = "params: p.yaml\ncases:\n" + kCase +
                             "    events:\n      - {model: A, objects: {p: 1}, begin: 1}\n";
    for (std::size_t length = 0; length < text.size(); ++length) {
        const RuleTestReading reading = read(text.substr(0, length));
        EXPECT_NE(reading.file.has_value(), !reading.problem.empty()) << length;
    }
}

} // namespace scenariomatch
