#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;

// Under a name of its own, because recordings are named after their files.
std::string fileWith(const std::string& name, const std::string& text)
{
    std::ofstream(temporary(name)) << text;
    return temporary(name);
}

std::string event(const std::string& name, int id, int begin, int end)
{
    return R"({"name":")" + name + R"(","objects":[{"id":)" + std::to_string(id) +
           R"(,"name":""}],"begin_frame":)" + std::to_string(begin) + R"(,"end_frame":)" +
           std::to_string(end) + "}\n";
}

const std::string kLabels = "model,objects,begin_frame,end_frame\n"
                            "Fall,1,100,199\n"
                            "Fall,2,100,199\n";

std::string twoEvents()
{
    return event("Fall", 1, 110, 199) + event("Fall", 3, 10, 20) + event("Walk", 1, 1, 2);
}

std::string scoreOf(const std::string& truth, const std::string& events)
{
    return "score --fps 25 --truth " + truth + " --events " + events;
}

} // namespace

TEST(ScoreCommand, PrintsARowPerModel)
{
    const std::string truth = fileWith("truth.csv", kLabels);
    const std::string events = fileWith("hall.jsonl", twoEvents());
    const Outcome outcome = runProgram(scoreOf(truth, events));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.out,
        "model  labels  hits  misses  false alarms  precision  recall     F1  median delay\n"
        "Fall        2     1       1             1       0.50    0.50   0.50        0.40 s\n");
    EXPECT_EQ(outcome.talk, "not scored: 1 events of models that no label names\n");
}

TEST(ScoreCommand, ListsWhatBecameOfLabelsAndEvents)
{
    const std::string truth = fileWith("truth.csv", kLabels);
    const std::string events = fileWith("hall.jsonl", twoEvents());
    const Outcome outcome = runProgram(scoreOf(truth, events) + " --list --models Walk");
    EXPECT_THAT(
        outcome.out,
        testing::EndsWith(
            "hit          Fall 1, frame 100 to frame 199, found frame 110 to frame 199\n"
            "miss         Fall 2, frame 100 to frame 199\n"
            "false alarm  Fall 3, frame 10 to frame 20\n"
            "false alarm  Walk 1, frame 1 to frame 2\n"));
    EXPECT_EQ(outcome.talk, "");
}

TEST(ScoreCommand, PrintsTheSameAsJson)
{
    const std::string truth = fileWith("truth.csv", kLabels);
    const std::string events = fileWith("hall.jsonl", twoEvents());
    const Outcome outcome =
        runProgram(scoreOf(truth, events) + " --list --models Walk,Run --format json");
    EXPECT_EQ(outcome.status, 0);
    const auto json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json.at("unscored_events"), 0);
    const auto& row = json.at("rows").at(0);
    EXPECT_EQ(row.at("models"), nlohmann::json({"Fall"}));
    EXPECT_EQ(row.at("false_alarms"), 1);
    EXPECT_EQ(row.at("f1"), 0.5);
    EXPECT_EQ(row.at("median_delay"), 0.4);
    EXPECT_EQ(row.at("list").at(0).at("label").at("begin_frame"), 100);
    EXPECT_EQ(row.at("list").at(0).at("event").at("ids"), nlohmann::json({1}));
    EXPECT_EQ(row.at("list").at(2).at("verdict"), "false alarm");
    EXPECT_TRUE(json.at("rows").at(2).at("precision").is_null());
}

TEST(ScoreCommand, TakesAFileForEachRecording)
{
    const std::string hall = fileWith("hall.jsonl", event("Fall", 1, 110, 199));
    const std::string yard = fileWith("yard.jsonl", "");
    const std::string stem = hall.substr(hall.rfind('/') + 1, hall.size() - hall.rfind('/') - 7);
    const std::string truth = fileWith(
        "truth.csv",
        "recording,model,objects,begin_frame,end_frame\n" + stem + ",Fall,1,100,199\n");
    EXPECT_EQ(runProgram(scoreOf(truth, yard + " " + hall)).status, 0);
    const Outcome missing = runProgram(scoreOf(truth, yard));
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(
        missing.talk, "scenariomatch score: no file of --events is named after " + stem + "\n");
    EXPECT_THAT(
        runProgram(scoreOf(truth, hall + " " + hall)).talk, HasSubstr("named after one recording"));
    const std::string plain = fileWith("plain.csv", kLabels);
    EXPECT_EQ(
        runProgram(scoreOf(plain, hall + " " + yard)).talk,
        "scenariomatch score: the labels name no recordings: --events takes one file\n");
}

TEST(ScoreCommand, NeedsARateForLabelsInFrames)
{
    const std::string truth = fileWith("truth.csv", kLabels);
    const std::string events = fileWith("hall.jsonl", twoEvents());
    const Outcome outcome = runProgram("score --truth " + truth + " --events " + events);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.talk, "scenariomatch score: labels in frames need --fps\n");
}

TEST(ScoreCommand, TakesOtherLimits)
{
    const std::string truth = fileWith("truth.csv", kLabels);
    const std::string events = fileWith("hall.jsonl", twoEvents());
    const Outcome outcome =
        runProgram(scoreOf(truth, events) + " --overlap 0.95 --start-within 0.1");
    EXPECT_THAT(outcome.out, HasSubstr("Fall        2     0       2             2"));
    EXPECT_EQ(runProgram(scoreOf(truth, events) + " --overlap 1.1").status, 2);
}

TEST(ScoreCommand, SaysWhatCannotBeRead)
{
    const std::string truth = fileWith("truth.csv", kLabels + "Fall,1,x,2\n");
    const std::string events = fileWith("hall.jsonl", "no\n");
    const Outcome labels = runProgram(scoreOf(truth, events));
    EXPECT_EQ(labels.status, 3);
    EXPECT_EQ(labels.talk, truth + ":4: 'begin_frame' must be the number of a frame\n");
    const Outcome faulty = runProgram(scoreOf(fileWith("good.csv", kLabels), events));
    EXPECT_EQ(faulty.status, 3);
    EXPECT_EQ(faulty.talk, events + ":1: the line is no JSON object\n");
    const Outcome missing = runProgram(scoreOf("nowhere.csv", events));
    EXPECT_EQ(missing.status, 3);
    EXPECT_EQ(
        missing.talk, "scenariomatch score: cannot read nowhere.csv: No such file or directory\n");
}

TEST(ScoreCommand, SaysThatTheFiguresCannotBeWritten)
{
    const std::string truth = fileWith("truth.csv", kLabels);
    const std::string events = fileWith("hall.jsonl", twoEvents());
    const Outcome outcome =
        runProgram(scoreOf(truth, events) + " >/dev/full 2>" + temporary("full") + "; exit $? #");
    EXPECT_EQ(outcome.status, 6);
    EXPECT_THAT(
        contentOf(temporary("full")), HasSubstr("scenariomatch score: cannot write the figures\n"));
}

} // namespace scenariomatch
