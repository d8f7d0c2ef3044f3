#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <unistd.h>
#include <vector>

namespace scenariomatch
{

namespace
{

using testing::EndsWith;

const std::string kExamples = SCENARIOMATCH_TEST_DATA "/../../examples/";
const std::string kRun = SCENARIOMATCH_TEST_DATA "/app/run/";
const std::string kRecording = " --params " + kRun + "params.yaml --tracks " + kRun + "tracks.txt ";

struct Command
{
    std::string name;
    std::string arguments;
    // What it says of an output that is gone.
    std::string message;
};

// Every command that writes to standard output, and what the program itself writes.
std::vector<Command> commands()
{
    const std::string gate = kExamples + "gate/";
    return {
        {"help", "--help", "scenariomatch: cannot write to standard output\n"},
        {"helpOfACommand", "run --help", "scenariomatch: cannot write to standard output\n"},
        {"version", "--version", "scenariomatch: cannot write to standard output\n"},
        {"run",
         "run" + kRecording,
         "scenariomatch run: standard output: the events cannot be written\n"},
        {"plan",
         "run --print-plan --params " + kRun + "params.yaml",
         "scenariomatch run: standard output: the plan cannot be written\n"},
        {"synth",
         "synth " + gate + "scenes/flow.yaml",
         "scenariomatch synth: cannot write to standard output\n"},
        {"check",
         "check --format json " + gate + "crossings.txt",
         "scenariomatch: cannot write to standard output\n"},
        {"explainAnEvent",
         "explain --event 0" + kRecording,
         "scenariomatch explain: the explanation cannot be written\n"},
        {"explainAModel",
         "explain --model InZone --format json" + kRecording,
         "scenariomatch explain: the explanation cannot be written\n"},
        {"test",
         "test " + gate + "tests/door.yaml",
         "scenariomatch test: cannot write the verdicts\n"},
        {"operators", "operators", "scenariomatch operators: cannot write the list\n"},
        {"score",
         "score --fps 25 --truth labels.csv --events events.jsonl",
         "scenariomatch score: cannot write the figures\n"},
    };
}

class BrokenOutput : public testing::TestWithParam<Command>
{
};

// The files that score reads.
void writeFiguresIn(const std::string& folder)
{
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/labels.csv") << "model,objects,begin_frame,end_frame\nFall,1,1,9\n";
    std::ofstream(folder + "/events.jsonl")
        << R"({"name":"Fall","objects":[{"id":1,"name":""}],"begin_frame":1,"end_frame":9})"
        << '\n';
}

// Runs the program with its standard output there.
Outcome runWithOutput(const std::string& arguments, const std::string& output)
{
    const std::string folder = temporary("folder");
    writeFiguresIn(folder);
    const std::string talk = temporary("said");
    const Outcome outcome =
        runProgram(arguments + " >" + output + " 2>" + talk + "; exit $? #", "cd " + folder + "; ");
    return {outcome.status, "", contentOf(talk)};
}

} // namespace

TEST_P(BrokenOutput, EndsWithStatusSixWhenNobodyReadsIt)
{
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ::close(pipe[0]);
    const Outcome outcome = runWithOutput(GetParam().arguments, "&" + std::to_string(pipe[1]));
    ::close(pipe[1]);
    EXPECT_EQ(outcome.status, 6);
    EXPECT_THAT(outcome.talk, EndsWith(GetParam().message));
}

TEST_P(BrokenOutput, EndsWithStatusSixWhenTheDiskIsFull)
{
    const Outcome outcome = runWithOutput(GetParam().arguments, "/dev/full");
    EXPECT_EQ(outcome.status, 6);
    EXPECT_THAT(outcome.talk, EndsWith(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(
    Commands,
    BrokenOutput,
    testing::ValuesIn(commands()),
    [](const testing::TestParamInfo<Command>& command) { return command.param.name; });

// A file that may not grow further ends the command, and no signal does.
TEST(BrokenOutputFile, EndsWithStatusSixWhereItMayNotGrow)
{
    const std::string tracks = temporary("tracks.jsonl");
    const Outcome synth = runProgram(
        "synth " + kExamples + "gate/scenes/flow.yaml --output " + tracks, "ulimit -f 1; ");
    EXPECT_EQ(synth.status, 6);
    EXPECT_EQ(synth.talk, "scenariomatch synth: cannot write " + tracks + ": File too large\n");
    const std::string page = temporary("page.html");
    const Outcome report = runProgram("report" + kRecording + "--output " + page, "ulimit -f 16; ");
    EXPECT_EQ(report.status, 6);
    EXPECT_EQ(report.talk, "scenariomatch report: " + page + ": File too large\n");
}

} // namespace scenariomatch
