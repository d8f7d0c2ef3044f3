#include "TroubleRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace scenariomatch
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;

const std::string kExamples = SCENARIOMATCH_TEST_DATA "/../../examples/";
const std::string kAnew = "; the engine starts anew with the next frame\n";

struct Output
{
    Outcome outcome;
    std::string xml;
    std::string trace;
};

Output runExample(const std::string& parameters, const std::string& tracks, const std::string& mode)
{
    const std::string xml = temporary("events.xml");
    const std::string trace = temporary("trace");
    const Outcome outcome = runProgram(
        "run --params " + kExamples + parameters + " --tracks " + tracks + " --trace " + trace +
        " --set saveXML3File=true --set XML3FileName=" + xml + " " + mode);
    return {outcome, contentOf(xml), contentOf(trace)};
}

void expectSameOutput(const std::string& scene, const std::string& parameters)
{
    const std::string tracks = temporary("tracks.jsonl");
    ASSERT_EQ(runProgram("synth " + kExamples + scene + " --output " + tracks).status, 0);
    for (const std::string options : {"", "--every-frame --events-format csv "}) {
        const Output plain = runExample(parameters, tracks, options);
        const Output isolated = runExample(parameters, tracks, options + "--isolate");
        ASSERT_EQ(plain.outcome.status, 0);
        EXPECT_EQ(isolated.outcome.status, 0);
        EXPECT_NE(plain.outcome.out, "");
        EXPECT_EQ(isolated.outcome.out, plain.outcome.out);
        EXPECT_EQ(isolated.outcome.talk, plain.outcome.talk);
        EXPECT_EQ(isolated.xml, plain.xml);
        EXPECT_EQ(isolated.trace, plain.trace);
    }
}

// What ends the engine in frame 5 costs that frame, and what was going on begins anew.
void expectStartedAnew(const std::string& trouble, const std::string& reason)
{
    const std::string xml = temporary("events.xml");
    const TroubleRun run(trouble, 5, 5);
    const Outcome outcome =
        run.run("--isolate --stats --set saveXML3File=true --set XML3FileName=" + xml);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(
        outcome.talk,
        testing::StartsWith(
            "scenariomatch run: frame 5 (2026-05-04T10:00:04.000): " + reason + kAnew));
    // Both processes have counted.
    EXPECT_THAT(outcome.talk, HasSubstr("\nunknown-type         9  note: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nengine-restart       1  error: Mend the operator "));
    EXPECT_THAT(outcome.out, HasSubstr(R"({"id":0,"name":"Seen")"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("begin_frame":1,)"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("end_frame":4,)"));
    EXPECT_THAT(outcome.out, HasSubstr(R"({"id":1,"name":"Seen")"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("begin_frame":6,)"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("end_frame":10,)"));
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 2);
    EXPECT_EQ(runProgram("repair " + xml).talk, xml + ": whole already; frames: 9\n");
    EXPECT_THAT(contentOf(xml), testing::Not(HasSubstr("<RHVideoFrame frameID=\"5\"")));
    EXPECT_THAT(contentOf(xml), HasSubstr("<Activity ID=\"1\""));
}

} // namespace

TEST(IsolatedRun, WritesTheSameOnTheLobby)
{
    expectSameOutput("lobby/scenes/bag.yaml", "lobby/lobby.yaml");
}

TEST(IsolatedRun, WritesTheSameOnTheGate)
{
    expectSameOutput("gate/scenes/flow.yaml", "gate/gate.yaml");
}

TEST(IsolatedRun, StartsAnewAfterACrash)
{
    expectStartedAnew("crash", "operator trouble ended the engine with SIGSEGV");
}

TEST(IsolatedRun, StartsAnewAfterAnAbort)
{
    expectStartedAnew("abort", "operator trouble ended the engine with SIGABRT");
}

TEST(IsolatedRun, StartsAnewAfterAnExit)
{
    expectStartedAnew("exit", "operator trouble ended the engine with exit status 3");
}

TEST(IsolatedRun, EndsAFrameThatTakesTooLong)
{
    const Outcome outcome = TroubleRun("hang", 5, 5).run("--isolate --frame-timeout 1.5");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.talk,
        "scenariomatch run: frame 5 (2026-05-04T10:00:04.000): operator trouble took longer than "
        "1.5 s" +
            kAnew);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 2);
}

TEST(IsolatedRun, GivesUpAfterFiveDeathsInARow)
{
    const std::string xml = temporary("events.xml");
    const Outcome outcome = TroubleRun("crash", 5, 10)
                                .run("--isolate --set saveXML3File=true --set XML3FileName=" + xml);
    EXPECT_EQ(outcome.status, 5);
    EXPECT_THAT(
        outcome.talk,
        EndsWith("scenariomatch run: frame 9 (2026-05-04T10:00:08.000): operator trouble ended the "
                 "engine with SIGSEGV; given up after 5 in a row\n"));
    EXPECT_EQ(std::count(outcome.talk.begin(), outcome.talk.end(), '\n'), 5);
    // What had been recognised is there.
    EXPECT_THAT(outcome.out, HasSubstr(R"("end_frame":4,)"));
    EXPECT_EQ(runProgram("repair " + xml).talk, xml + ": whole already; frames: 4\n");
}

TEST(IsolatedRun, EndsWithStatusFiveWhereTheEngineCannotStart)
{
    const TroubleRun run("nothing", 0, 0);
    const Outcome outcome = run.run("--isolate", "TROUBLE_WHILE_LOADING=1 ");
    EXPECT_EQ(outcome.status, 5);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(
        outcome.talk, "scenariomatch run: the engine ended with SIGABRT before its first frame\n");
}

TEST(IsolatedRun, SaysWhyTheProcessIsNotReadyAsOtherRunsDo)
{
    const std::string options = "--set nonsense=1 ";
    const Outcome plain = TroubleRun("nothing", 0, 0).run(options);
    const Outcome isolated = TroubleRun("nothing", 0, 0).run(options + "--isolate");
    EXPECT_EQ(plain.status, 2);
    EXPECT_EQ(isolated.status, 2);
    EXPECT_EQ(isolated.talk, plain.talk);
    EXPECT_EQ(TroubleRun("nothing", 0, 0).run("--frame-timeout 2").status, 2);
    EXPECT_EQ(TroubleRun("nothing", 0, 0).run("--isolate --print-plan").status, 2);
}

TEST(IsolatedRun, EndsAtCtrlCWhileAnOperatorHangs)
{
    const std::string xml = temporary("events.xml");
    std::array<int, 2> events{};
    ASSERT_EQ(::pipe(events.data()), 0);
    const std::string command =
        "exec " + kProgram + " " + TroubleRun("hang", 5, 5).arguments() +
        "--isolate --every-frame --set saveXML3File=true --set XML3FileName=" + xml;
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(events[1], STDOUT_FILENO);
        ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(events[1]);
    // Four frames are through, the fifth hangs or is about to.
    int lines = 0;
    char character = 0;
    while (lines < 4) {
        ASSERT_EQ(::read(events[0], &character, 1), 1);
        lines += character == '\n' ? 1 : 0;
    }
    ::kill(child, SIGINT);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ::close(events[0]);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(runProgram("repair " + xml).talk, xml + ": whole already; frames: 4\n");
}

} // namespace scenariomatch
