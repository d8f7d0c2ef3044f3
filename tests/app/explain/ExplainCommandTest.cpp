#include "tests/app/ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;
using testing::IsEmpty;

// Person 1 is in the zone Door from 1 s to 3 s and at 8 s.
const std::string kFiles = SCENARIOMATCH_TEST_DATA "/app/run/";
const std::string kExplain =
    "explain --params " + kFiles + "params.yaml --tracks " + kFiles + "tracks.txt ";

nlohmann::json jsonOf(const std::string& arguments)
{
    const Outcome outcome = runProgram(kExplain + arguments + " --format json");
    EXPECT_EQ(outcome.status, 0) << outcome.talk;
    return nlohmann::json::parse(outcome.out);
}

void expectUsage(const std::string& arguments, const std::string& reason)
{
    const Outcome outcome = runProgram(arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.talk, HasSubstr(reason));
}

} // namespace

TEST(ExplainCommand, TellsWhyAnEventWasRecognised)
{
    const Outcome outcome = runProgram(kExplain + "--event 0");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(
        outcome.out,
        HasSubstr("InZone (event 0) was recognised with p=1 z=Door from 1 s to 3 s, for the first "
                  "time at 1 s.\n"));
    const nlohmann::json why = jsonOf("--event 0");
    EXPECT_EQ(why["model"], "InZone");
    EXPECT_EQ(why["recognised"]["frame"], 2);
    ASSERT_FALSE(why["constraints"].empty());
    EXPECT_EQ(why["constraints"][0]["holds"], true);
}

TEST(ExplainCommand, TellsThatThereIsNoSuchEvent)
{
    const Outcome outcome = runProgram(kExplain + "--event 77");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.talk, HasSubstr("scenariomatch explain: there is no event 77\n"));
}

TEST(ExplainCommand, TellsWhyAModelDidNotMatchInATime)
{
    const nlohmann::json why = jsonOf("--model InZone --from 4 --to 7");
    EXPECT_EQ(why["frames"], 4);
    EXPECT_EQ(why["from"]["seconds"], 4.0);
    EXPECT_EQ(why["to"]["seconds"], 7.0);
    EXPECT_TRUE(why["events"].empty());
    EXPECT_EQ(why["nearest"]["false"].size(), 1U);
    const nlohmann::json sameTime =
        jsonOf("--model InZone --from 2000-01-01T00:00:04 --to 2000-01-01T00:00:07");
    EXPECT_EQ(sameTime, why);
}

TEST(ExplainCommand, TellsTheEventsThatDidAppear)
{
    const nlohmann::json why = jsonOf("--model InZone --objects 1,Door");
    ASSERT_EQ(why["events"].size(), 2U);
    EXPECT_EQ(why["events"][1]["id"], 1);
    EXPECT_EQ(why["events"][1]["begin"]["seconds"], 8.0);
}

TEST(ExplainCommand, TellsThatObjectsWereNotSeen)
{
    const nlohmann::json why = jsonOf("--model InZone --objects 9");
    EXPECT_EQ(why["unseen_objects"], nlohmann::json({"9"}));
    EXPECT_EQ(why["reason"], "Object 9 was not seen.");
}

TEST(ExplainCommand, TellsThatNoFrameLiesInTheTime)
{
    const Outcome outcome = runProgram(kExplain + "--model InZone --from 1000");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.find("InZone was not tried: no frame lies in the time asked for.\n"), 0U);
}

TEST(ExplainCommand, ReadsTracksFromStandardInput)
{
    const Outcome file = runProgram(kExplain + "--model InZone");
    const Outcome input = runProgram(
        "explain --params " + kFiles + "params.yaml --tracks - --model InZone",
        "cat " + kFiles + "tracks.txt | ");
    EXPECT_EQ(input.status, 0);
    EXPECT_EQ(input.out, file.out);
}

TEST(ExplainCommand, AsksForAnEventOrAModel)
{
    expectUsage(kExplain, "--event or --model is required");
    expectUsage(kExplain + "--event 0 --model InZone", "--event excludes --model");
    expectUsage(kExplain + "--event 0 --objects 1", "--objects, --from and --to requires --model");
    expectUsage(kExplain + "--event 0 --from 1", "--objects, --from and --to requires --model");
    expectUsage(kExplain + "--event two", "--event");
    expectUsage("explain --params " + kFiles + "params.yaml --model InZone", "--tracks");
}

TEST(ExplainCommand, RefusesTimesThatAreNone)
{
    for (const std::string time : {"soon", "1e99", "nan", "2000-13-01T00:00:00"}) {
        expectUsage(
            std::string(kExplain).append("--model InZone --to ").append(time),
            "--to needs seconds from the first frame or a time such as 2026-05-04T10:00:00, not "
            "\"" +
                time + "\"");
    }
}

TEST(ExplainCommand, ProposesTheModelThatIsMeant)
{
    expectUsage(
        kExplain + "--model InZnoe", "there is no model 'InZnoe' in use; did you mean 'InZone'?");
    expectUsage(kExplain + "--model Elsewhere", "there is no model 'Elsewhere' in use\n");
}

TEST(ExplainCommand, EndsWithTheStatusOfWhatCannotBeUsed)
{
    EXPECT_EQ(runProgram("explain --params nowhere.yaml --tracks x --model InZone").status, 3);
    EXPECT_EQ(
        runProgram("explain --params " + kFiles + "params.yaml --tracks nowhere --model InZone")
            .status,
        4);
    EXPECT_EQ(runProgram(kExplain + "--model InZone --set OperatorPluginPath=/nowhere").status, 5);
}

} // namespace scenariomatch
