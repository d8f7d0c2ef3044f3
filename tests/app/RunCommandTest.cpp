#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

const std::string kFiles = SCENARIOMATCH_TEST_DATA "/app/run/";
const std::string kRun =
    "run --params " + kFiles + "params.yaml --tracks " + kFiles + "tracks.txt ";

const std::string kFirstEvent =
    R"({"id":0,"name":"InZone","kind":"PrimitiveState","alarm_level":"URGENT","alarm":1,)"
    R"("text":"Person in the zone","confidence":1,"begin":"2000-01-01T00:00:01.000","begin_frame":2,)"
    R"("end":"2000-01-01T00:00:03.000","end_frame":4,"duration":2,"objects":[)"
    R"({"variable":"p","type":"Person","id":1,"name":""},{"variable":"z","type":"Zone","id":0,"name":"Door"}],)"
    R"("sub_events":[]})"
    "\n";
const std::string kSecondEvent =
    R"({"id":1,"name":"InZone","kind":"PrimitiveState","alarm_level":"URGENT","alarm":1,)"
    R"("text":"Person in the zone","confidence":1,"begin":"2000-01-01T00:00:08.000","begin_frame":9,)"
    R"("end":"2000-01-01T00:00:08.000","end_frame":9,"duration":0,"objects":[)"
    R"({"variable":"p","type":"Person","id":1,"name":""},{"variable":"z","type":"Zone","id":0,"name":"Door"}],)"
    R"("sub_events":[]})"
    "\n";

std::string write(const std::string& name, const std::string& text)
{
    std::ofstream(temporary(name), std::ios::binary) << text;
    return temporary(name);
}

std::size_t countOf(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

std::string joined(const std::string& start, const std::string& option, const std::string& value)
{
    return start + option + value;
}

} // namespace

TEST(RunCommand, WritesEachEventOnceItIsOverAndNothingElse)
{
    const Outcome outcome = runProgram(kRun);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
    EXPECT_EQ(outcome.talk, "");
}

TEST(RunCommand, WritesAnEventInEveryFrameWhenAsked)
{
    const Outcome outcome = runProgram(kRun + "--every-frame");
    EXPECT_EQ(countOf(outcome.out, "\n"), 4U);
    EXPECT_EQ(countOf(outcome.out, "\"id\":0,\"name\":\"InZone\""), 3U);
}

TEST(RunCommand, WritesTheOtherFormatsAndToAFile)
{
    const std::string file = temporary("events");
    const Outcome outcome = runProgram(kRun + "--events " + file + " --events-format csv");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(contentOf(file), StartsWith("id,name,kind,"));
    EXPECT_EQ(countOf(contentOf(file), "\n"), 3U);
    EXPECT_THAT(runProgram(kRun + "--events-format text").out, StartsWith("who "));
}

TEST(RunCommand, ReadsTracksFromStandardInput)
{
    const Outcome outcome = runProgram(
        "run --params " + kFiles + "params.yaml --tracks -", "cat " + kFiles + "tracks.txt | ");
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
}

TEST(RunCommand, WorksFromAnyFolder)
{
    const Outcome outcome = runProgram(kRun, "cd / && ");
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
    const Outcome beside =
        runProgram("run --params params.yaml --tracks tracks.txt", "cd " + kFiles + " && ");
    EXPECT_EQ(beside.out, kFirstEvent + kSecondEvent);
}

TEST(RunCommand, KeepsThePluginsTracesApart)
{
    const std::string file = temporary("trace");
    const Outcome outcome = runProgram(kRun + "--trace " + file + " --set debug=true");
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
    EXPECT_THAT(contentOf(file), StartsWith("\nScenarioMatchProcess::init()"));
    EXPECT_THAT(contentOf(file), HasSubstr("Starting Actor handling2\n"));
    EXPECT_THAT(contentOf(file), HasSubstr("End Apply()"));
    EXPECT_THAT(
        contentOf(file),
        HasSubstr("The parameter, XML3FileName, is missing, default value is used: "));
    // What was given, and yet counts as missing, is told.
    EXPECT_EQ(
        runProgram(kRun + "--set XML3FileName=").talk,
        "The parameter, XML3FileName, is missing, default value is used: NOTURGENT\n");
}

TEST(RunCommand, WritesAndClosesTheEventFile)
{
    const std::string file = temporary("events.xml");
    EXPECT_EQ(runProgram(kRun + "--set saveXML3File=true --set XML3FileName=" + file).status, 0);
    EXPECT_THAT(contentOf(file), StartsWith("<?xml"));
    EXPECT_THAT(contentOf(file), testing::EndsWith("</Tarvos>\n"));
}

TEST(RunCommand, SetsParametersToZero)
{
    // Without prolongation every frame's recognition is an event of its own.
    EXPECT_EQ(countOf(runProgram(kRun + "--set constProlongation=0").out, "\n"), 4U);
    EXPECT_EQ(countOf(runProgram(kRun + "--set constProlongation=5").out, "\n"), 1U);
}

TEST(RunCommand, TakesFilesBehindACommonPath)
{
    std::filesystem::create_directories(temporary("site"));
    const std::string parameters = write("params.yaml", contentOf(kFiles + "params.yaml"));
    const std::string arguments =
        "run --params " + parameters + " --tracks " + kFiles + "tracks.txt";
    EXPECT_EQ(runProgram(arguments).status, 3);
    EXPECT_EQ(runProgram(arguments + " --common-path " + kFiles).out, kFirstEvent + kSecondEvent);
}

TEST(RunCommand, TakesTheInstalledVocabularyWhereNoneIsNamed)
{
    const std::string parameters = write(
        "params.yaml",
        "%YAML:1.0\n---\nscenarioRecognitionModelFileName: \"" + kFiles +
            "engine.txt\"\nscenarioRecognitionObjectDescription: \"" + kFiles +
            "objects.txt\"\nRHMContext: \"" + kFiles + "context.xml\"\nconstProlongation: 1\n");
    const Outcome outcome =
        runProgram("run --params " + parameters + " --tracks " + kFiles + "tracks.txt");
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
}

TEST(RunCommand, StartsAtTheTimeAndRateGiven)
{
    const Outcome outcome = runProgram(kRun + "--fps 2 --start 2026-05-04T10:00:00Z");
    EXPECT_THAT(outcome.out, HasSubstr(R"("begin":"2026-05-04T10:00:00.500","begin_frame":2)"));
}

TEST(RunCommand, ScalesPositions)
{
    // At a tenth of the size person 1 comes and stays, person 2 is there twice.
    EXPECT_EQ(countOf(runProgram(kRun + "--scale 0.1").out, "\n"), 3U);
    EXPECT_THAT(runProgram(kRun + "--scale 0.1").out, HasSubstr(R"("begin_frame":2)"));
    EXPECT_EQ(runProgram(kRun + "--scale 10").out, "");
}

TEST(RunCommand, MapsPositionsToTheGround)
{
    const std::string matrix =
        "%YAML:1.0\n---\nH: !!opencv-matrix\n   rows: 3\n   cols: 3\n   dt: d\n   data: ";
    const std::string away = write("away.yaml", matrix + "[1,0,1000,0,1,0,0,0,1]\n");
    EXPECT_EQ(runProgram(kRun + "--homography " + away).out, "");
    const std::string same = write("same.yaml", matrix + "[2,0,0,0,2,0,0,0,2]\n");
    EXPECT_EQ(runProgram(kRun + "--homography " + same).out, kFirstEvent + kSecondEvent);
    const Outcome flat =
        runProgram(kRun + "--homography " + write("flat.yaml", matrix + "[0,0,0,0,0,0,0,0,1]\n"));
    EXPECT_EQ(flat.status, 3);
    EXPECT_THAT(flat.talk, HasSubstr("the matrix \"H\" does not map the image to the ground\n"));
}

TEST(RunCommand, GivesObjectsTheTypeAskedFor)
{
    EXPECT_EQ(runProgram(kRun + "--type BAG").out, "");
}

TEST(RunCommand, PrintsFiguresOfTheRun)
{
    const Outcome outcome = runProgram(kRun + "--stats");
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
    EXPECT_THAT(
        outcome.talk,
        StartsWith("frames               9\n"
                   "actors read          11\n"
                   "actors used          11\n"
                   "actors dropped       0\n"
                   "candidates tested    11\n"
                   "candidates accepted  4\n"
                   "completions          0\n"
                   "live instances       2 (at most 2)\n"
                   "reported instances   2\n"
                   "frames per second    "));
    EXPECT_THAT(outcome.talk, HasSubstr("peak memory          "));
}

TEST(RunCommand, ListsWhatWasOddAndHowManyActorsItDropped)
{
    const Outcome outcome = runProgram(
        "run --stats --params " + kFiles + "params.yaml --tracks " + kFiles + "odd.jsonl");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(
        outcome.talk,
        HasSubstr("frames               6\nactors read          15\nactors used          6\n"
                  "actors dropped       9\n"));
    EXPECT_THAT(outcome.talk, HasSubstr("\nmalformed            2  warning: Correct the lines "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nframe-goes-back      1  warning: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nclock-goes-back      1  warning: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nclock-jumps          1  note: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nduplicate-id         1  warning: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nnot-finite           1  warning: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nout-of-range         1  warning: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nnegative-box         2  warning: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nuntracked            1  warning: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nunknown-type         1  note: "));
    EXPECT_THAT(outcome.talk, HasSubstr("\nmissing-size         2  note: "));
    EXPECT_EQ(countOf(outcome.talk, "  warning: ") + countOf(outcome.talk, "  note: "), 11U);
}

// A person is one try, the zone another.
TEST(RunCommand, LimitsTheCandidatesOfAModelInAFrame)
{
    const Outcome cut = runProgram(kRun + "--max-candidates 1 --stats");
    EXPECT_EQ(cut.status, 0);
    EXPECT_EQ(cut.out, "");
    EXPECT_THAT(
        cut.talk,
        StartsWith("Model InZone has too many candidates in frame 1 (2): those after 1 tries are "
                   "left out\nframes "));
    EXPECT_THAT(cut.talk, HasSubstr("\ncandidate-cut        9  error: Raise --max-candidates"));
    for (const char* const enough : {"2000", "0"}) {
        const Outcome outcome = runProgram(joined(kRun, "--max-candidates ", enough));
        EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent) << enough;
        EXPECT_EQ(outcome.talk, "") << enough;
    }
}

TEST(RunCommand, PrintsThePlanWithoutTracks)
{
    const Outcome outcome = runProgram("run --print-plan --params " + kFiles + "params.yaml");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.out,
        "PrimitiveState InZone\n"
        "    bind p to each Person\n"
        "    bind z to each Zone\n"
        "        test in(p->Position, z->Vertices)\n");
    EXPECT_EQ(outcome.talk, "");
}

TEST(RunCommand, LeavesFilesAloneWhereItPrintsThePlan)
{
    const std::string events = write("events", "events of yesterday\n");
    const std::string eventFile = write("events.xml", "<Yesterday/>\n");
    const Outcome outcome = runProgram(
        "run --print-plan --params " + kFiles + "params.yaml --tracks nowhere.jsonl --events " +
        events + " --set saveXML3File=true --set XML3FileName=" + eventFile);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("PrimitiveState InZone\n"));
    EXPECT_EQ(outcome.talk, "");
    EXPECT_EQ(contentOf(events), "events of yesterday\n");
    EXPECT_EQ(contentOf(eventFile), "<Yesterday/>\n");
}

TEST(RunCommand, SaysThatThePlanCannotBeWritten)
{
    const Outcome outcome = runProgram(
        "run --print-plan --params " + kFiles + "params.yaml",
        "full() { \"$@\" >/dev/full; }; full ");
    EXPECT_EQ(outcome.status, 6);
    EXPECT_EQ(outcome.talk, "scenariomatch run: standard output: the plan cannot be written\n");
}

TEST(RunCommand, ReportsMalformedLinesAndGoesOn)
{
    const std::string tracks = write("tracks", "1 x 5 5\n" + contentOf(kFiles + "tracks.txt"));
    const Outcome outcome = runProgram("run --params " + kFiles + "params.yaml --tracks " + tracks);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
    EXPECT_EQ(
        outcome.talk,
        tracks + ":1:3: a number is expected\n1 x 5 5\n  ^\n" + tracks +
            ": 1 malformed line left out\n");
}

TEST(RunCommand, StopsAtTheFirstMalformedLineWhenStrict)
{
    const std::string frame = R"({"frame":1,"time":"2026-05-04T10:00:00","actors":[)";
    const std::string tracks =
        write("tracks", frame + R"({"id":1,"position":[5,5,0]}]})" + "\n" + frame + "\n{\n");
    const Outcome outcome =
        runProgram("run --strict --params " + kFiles + "params.yaml --tracks " + tracks);
    EXPECT_EQ(outcome.status, 4);
    EXPECT_EQ(countOf(outcome.out, "\n"), 1U);
    EXPECT_THAT(
        outcome.talk,
        HasSubstr("scenariomatch run: " + tracks + ": stopped at the first problem\n"));
    EXPECT_EQ(countOf(outcome.talk, tracks + ":"), 3U) << outcome.talk;
}

TEST(RunCommand, EndsWithStatusFourWhereThereAreNoTracks)
{
    const std::string parameters = "run --params " + kFiles + "params.yaml --tracks ";
    EXPECT_EQ(
        runProgram(parameters + temporary("none")).talk,
        "scenariomatch run: " + temporary("none") + ": No such file or directory\n");
    EXPECT_EQ(runProgram(parameters + temporary("none")).status, 4);
    EXPECT_EQ(runProgram(parameters + write("empty", "")).status, 4);
    EXPECT_EQ(runProgram(parameters + write("bad", "{}\n")).status, 4);
    const Outcome detections =
        runProgram(parameters + write("det.txt", "1,-1,1,2,3,4,0.5,-1,-1,-1\n") + " --fps 25");
    EXPECT_EQ(detections.status, 4);
    EXPECT_EQ(
        detections.talk,
        temporary("det.txt") + ":1:3: the identifier is negative: the object is not tracked\n" +
            "1,-1,1,2,3,4,0.5,-1,-1,-1\n  ^\n" + temporary("det.txt") +
            ": 1 untracked object left out\n" + "scenariomatch run: " + temporary("det.txt") +
            ": these are detections, not tracks\n");
}

TEST(RunCommand, EndsWithStatusTwoForWrongUse)
{
    const std::string parameters = "run --params " + kFiles + "params.yaml ";
    EXPECT_EQ(runProgram("").status, 2);
    EXPECT_EQ(runProgram("walk").status, 2);
    EXPECT_EQ(runProgram(parameters).status, 2);
    EXPECT_EQ(
        runProgram(parameters).talk,
        "scenariomatch run: --tracks is required\nRun with --help for more information.\n");
    EXPECT_EQ(runProgram(kRun + "--fps 0").status, 2);
    EXPECT_EQ(runProgram(kRun + "--scale -1").status, 2);
    EXPECT_EQ(runProgram(kRun + "--format tea").status, 2);
    EXPECT_EQ(
        runProgram(kRun + "--start noon").talk,
        "scenariomatch run: --start needs a time such as 2026-05-04T10:00:00, not \"noon\"\n");
    EXPECT_EQ(runProgram(kRun + "--start noon").status, 2);
    EXPECT_EQ(
        runProgram(kRun + "--set x").talk, "scenariomatch run: --set needs KEY=VALUE, not \"x\"\n");
    EXPECT_EQ(runProgram(kRun + "--set x").status, 2);
    EXPECT_EQ(
        runProgram(kRun + "--set x=1").talk,
        "scenariomatch run: --set: there is no parameter \"x\"\n");
    EXPECT_EQ(
        runProgram(kRun + "--set BayesianRatio=x").talk,
        "scenariomatch run: --set: BayesianRatio cannot be \"x\"\n");
    const Outcome unclear = runProgram(parameters + "--tracks " + write("tracks", "hello\n"));
    EXPECT_EQ(unclear.status, 2);
    const Outcome noRate = runProgram(parameters + "--tracks " + write("tracks", "1 1 1 1\n"));
    EXPECT_EQ(noRate.status, 2);
    EXPECT_THAT(
        noRate.talk, HasSubstr("the tracks have no clock; give the frame rate with --fps\n"));
}

TEST(RunCommand, EndsWithStatusThreeForParametersThatCannotBeUsed)
{
    const std::string tracks = " --tracks " + kFiles + "tracks.txt";
    const Outcome none = runProgram("run --params " + temporary("none") + tracks);
    EXPECT_EQ(none.status, 3);
    EXPECT_EQ(
        none.talk, "scenariomatch run: " + temporary("none") + ": No such file or directory\n");
    const Outcome noModels =
        runProgram("run --params " + write("a.yaml", "debug: \"true\"\n") + tracks);
    EXPECT_EQ(noModels.status, 3);
    EXPECT_THAT(noModels.talk, HasSubstr(": scenarioRecognitionModelFileName is missing\n"));
    const Outcome noContext = runProgram(kRun + "--set RHMContext=nothing.xml");
    EXPECT_EQ(noContext.status, 3);
    EXPECT_EQ(
        noContext.talk, "scenariomatch run: nothing.xml (RHMContext): No such file or directory\n");
    const Outcome unused = runProgram(
        kRun + "--set scenarioRecognitionModelFileName=" + write("engine.txt", "List {\nx,\n}\n"));
    EXPECT_EQ(unused.status, 3);
    EXPECT_THAT(unused.talk, HasSubstr("params.yaml: no model takes part in recognition\n"));
}

TEST(RunCommand, TellsOfUnknownParametersInTheFileAsCheckDoes)
{
    const std::string parameters =
        write("params.yaml", contentOf(kFiles + "params.yaml") + "historySise: 12\n");
    const Outcome outcome = runProgram(
        "run --params " + parameters + " --common-path " + kFiles + " --tracks " + kFiles +
        "tracks.txt");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
    EXPECT_EQ(
        outcome.talk,
        parameters + ":9:1: error: there is no parameter 'historySise' [unknown-keyword]\n"
                     "    9 | historySise: 12\n"
                     "      | ^~~~~~~~~~~ did you mean 'historySize'?\n");
}

TEST(RunCommand, EndsWithStatusFiveWithoutPlugins)
{
    std::filesystem::create_directories(temporary("folder"));
    const Outcome noPlugin =
        runProgram(kRun, "SCENARIOMATCH_PLUGIN_PATH=" + temporary("folder") + " ");
    EXPECT_EQ(noPlugin.status, 5);
    EXPECT_EQ(
        noPlugin.talk,
        "scenariomatch run: " + temporary("folder") +
            ": there is no recognition plug-in in this folder\n");
    EXPECT_EQ(runProgram(kRun, "SCENARIOMATCH_PLUGIN_PATH=" + kFiles + "params.yaml ").status, 5);
    const Outcome emptyFolder =
        runProgram(kRun + "--set OperatorPluginPath=" + temporary("folder"));
    EXPECT_EQ(emptyFolder.status, 5);
    EXPECT_EQ(
        emptyFolder.talk,
        "scenariomatch run: no operators in " + temporary("folder") + " (OperatorPluginPath)\n");
    const Outcome noOperators = runProgram(kRun + "--set OperatorPluginPath=nowhere");
    EXPECT_EQ(noOperators.status, 5);
    EXPECT_EQ(
        noOperators.talk,
        "scenariomatch run: nowhere (OperatorPluginPath): there is no such folder\n");
}

TEST(RunCommand, SaysWhyOperatorsAreMissing)
{
    const std::string folder = temporary("operators");
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/readme.txt") << "no operator\n";
    const std::string hint = "`scenariomatch operators --path " + folder + "` says why\n";
    const Outcome none = runProgram(kRun + "--set OperatorPluginPath=" + folder);
    EXPECT_EQ(none.status, 5);
    EXPECT_EQ(
        none.talk,
        "scenariomatch run: no operators in " + folder +
            " (OperatorPluginPath); readme.txt: it is no plug-in; " + hint);
    std::filesystem::copy_file(
        SCENARIOMATCH_BUILD_BIN "/../lib/scenariomatch/operators/in.so", folder + "/in.so");
    EXPECT_THAT(
        runProgram(kRun + "--set OperatorPluginPath=" + folder).talk,
        HasSubstr(folder + " (OperatorPluginPath): warning: files skipped: 1; " + hint));
}

TEST(RunCommand, EndsWithStatusSixWhereOutputCannotBeWritten)
{
    EXPECT_EQ(runProgram(kRun + "--events /nowhere/events").status, 6);
    EXPECT_EQ(runProgram(kRun + "--trace /nowhere/trace").status, 6);
    const Outcome full = runProgram(kRun + "--events /dev/full");
    EXPECT_EQ(full.status, 6);
    EXPECT_EQ(full.talk, "scenariomatch run: /dev/full: the events cannot be written\n");
}

TEST(RunCommand, KeepsItsInputsFromBeingOverwritten)
{
    const std::string content = contentOf(kFiles + "tracks.txt");
    const std::string tracks = write("tracks", content);
    const std::string start = "run --params " + kFiles + "params.yaml --tracks ";
    for (const std::string role : {"--events ", "--trace ", "--set XML3FileName="}) {
        const Outcome outcome = runProgram(joined(start + tracks + " ", role, tracks));
        EXPECT_EQ(outcome.status, 2) << role;
        EXPECT_THAT(
            outcome.talk,
            HasSubstr(" would overwrite " + tracks + ", which is read as --tracks\n"));
        EXPECT_EQ(contentOf(tracks), content) << role;
    }
    EXPECT_EQ(runProgram(start + "- --events " + tracks + " <" + tracks).status, 2);
    EXPECT_EQ(contentOf(tracks), content);
    const std::string context = write("context.xml", contentOf(kFiles + "context.xml"));
    const Outcome scene = runProgram(kRun + "--events " + context + " --set RHMContext=" + context);
    EXPECT_EQ(
        scene.talk,
        "scenariomatch run: --events would overwrite " + context +
            ", which is read as RHMContext\n");
}

TEST(RunCommand, GivesEveryOutputAFileOfItsOwn)
{
    const std::string file = temporary("file");
    const Outcome outcome = runProgram(kRun + "--events " + file + " --trace " + file);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(
        outcome.talk, "scenariomatch run: --events and --trace would both write " + file + "\n");
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(runProgram(kRun + "--events /dev/null --trace /dev/null").status, 0);
}

TEST(RunCommand, SaysThatTheEventFileCannotBeWritten)
{
    const std::string start = kRun + "--set saveXML3File=true";
    const Outcome unnamed = runProgram(start);
    EXPECT_EQ(unnamed.status, 2);
    EXPECT_EQ(
        unnamed.talk,
        "scenariomatch run: saveXML3File needs a file name: XML3FileName is missing\n");
    const Outcome nowhere = runProgram(start + " --set XML3FileName=/nowhere/a.xml");
    EXPECT_EQ(nowhere.status, 6);
    EXPECT_EQ(
        nowhere.talk,
        "scenariomatch run: /nowhere/a.xml (XML3FileName): No such file or directory\n");
    const Outcome full = runProgram(start + " --set XML3FileName=/dev/full");
    EXPECT_EQ(full.status, 6);
    EXPECT_EQ(full.out, kFirstEvent + kSecondEvent);
    EXPECT_EQ(
        full.talk,
        "scenariomatch run: /dev/full (XML3FileName): "
        "9 of 9 frames could not be written, the first is frame 1\n");
    EXPECT_THAT(
        runProgram(start + " --set XML3FileName=/dev/full --stats").talk,
        HasSubstr("\nframe-not-in-file    9  error: Make room on the disk, or "));
}

TEST(RunCommand, GoesOnWhenTheEventFileMayNotGrowAndSaysWhatIsLost)
{
    const std::string whole = temporary("whole.xml");
    const std::string file = temporary("events.xml");
    const std::string start = kRun + "--set saveXML3File=true --set XML3FileName=";
    EXPECT_EQ(runProgram(start + whole).status, 0);
    // No file may have more than 3072 bytes.
    const Outcome limited = runProgram(start + file, "ulimit -f 6; ");
    EXPECT_EQ(limited.status, 6);
    EXPECT_EQ(limited.out, kFirstEvent + kSecondEvent);
    EXPECT_THAT(
        limited.talk,
        testing::MatchesRegex("scenariomatch run: .*/.*events.xml \\(XML3FileName\\): [1-8] of 9 "
                              "frames could not be "
                              "written, the first is frame [2-9].*\n"));
    // What is there is the beginning of the file, whole frames and perhaps small ones behind it.
    EXPECT_LE(contentOf(file).size(), 3072U);
    EXPECT_EQ(runProgram("repair " + file).status, 0);
    EXPECT_THAT(contentOf(file), StartsWith(contentOf(whole).substr(0, 1000)));
}

TEST(RunCommand, EndsWithStatusSixWhenNobodyReadsItsOutput)
{
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ::close(pipe[0]);
    const std::string talk = temporary("talk");
    // NOLINTNEXTLINE(cert-env33-c): the redirection is the shell's
    const int status = std::system(
        (kProgram + " " + kRun + " >&" + std::to_string(pipe[1]) + " 2>" + talk).c_str());
    ::close(pipe[1]);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 6);
    EXPECT_EQ(
        contentOf(talk), "scenariomatch run: standard output: the events cannot be written\n");
}

TEST(RunCommand, RefusesNumbersThatAreNone)
{
    for (const std::string number : {"nan", "inf", "0", "-1", "1e-300", "two"}) {
        const Outcome rate = runProgram(joined(kRun, "--fps ", number));
        EXPECT_EQ(rate.status, 2) << number;
        EXPECT_EQ(
            rate.talk,
            "scenariomatch run: --fps: needs a number from 0.000001 to 1000000, not \"" + number +
                "\"\nRun with --help for more information.\n");
    }
    for (const std::string number : {"nan", "inf", "0", "-1", "two"}) {
        const Outcome scale = runProgram(joined(kRun, "--scale ", number));
        EXPECT_EQ(scale.status, 2) << number;
        EXPECT_EQ(
            scale.talk,
            "scenariomatch run: --scale: needs a finite number greater than 0, not \"" + number +
                "\"\nRun with --help for more information.\n");
    }
}

TEST(RunCommand, NamesTheChoices)
{
    const std::string help = "\nRun with --help for more information.\n";
    const Outcome format = runProgram(kRun + "--format 2");
    EXPECT_EQ(format.status, 2);
    EXPECT_EQ(
        format.talk,
        "scenariomatch run: --format: \"2\" is none of auto, jsonl, mot, cvml, trajectory" + help);
    EXPECT_EQ(
        runProgram(kRun + "--events-format xml").talk,
        "scenariomatch run: --events-format: \"xml\" is none of jsonl, csv, text" + help);
    EXPECT_EQ(
        runProgram(kRun + "--progress maybe").talk,
        "scenariomatch run: --progress: \"maybe\" is none of auto, on, off" + help);
    EXPECT_EQ(
        runProgram("synth x --format auto").talk,
        "scenariomatch synth: --format: \"auto\" is none of jsonl, mot, cvml, trajectory" + help);
    EXPECT_EQ(runProgram(kRun + "--format trajectory").out, kFirstEvent + kSecondEvent);
}

TEST(RunCommand, RefusesAContextThatCannotBeRead)
{
    const std::string context = write("context.xml", "no context\n");
    const Outcome outcome = runProgram(kRun + "--set RHMContext=" + context);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.talk, "scenariomatch run: " + context + ":1:2: Start tag expected.\n");
    EXPECT_EQ(outcome.out, "");
}

TEST(RunCommand, PrintsTheErrorsThatCheckFindsAndGoesOn)
{
    const std::string types = write(
        "types.txt",
        contentOf(kFiles + "objects.txt") +
            "class Guard:Nobody {\nconstant false;\n}\nclass Group:Group {\nconstant false;\n}\n");
    const std::string key = "--set scenarioRecognitionObjectDescription=";
    const Outcome outcome = runProgram(kRun + key + types);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, kFirstEvent + kSecondEvent);
    EXPECT_EQ(
        outcome.talk,
        types + ":10:13: error: 'Nobody', the parent of Guard, is not declared [unknown-parent]\n" +
            "   10 | class Guard:Nobody {\n"
            "      |             ^~~~~~\n" +
            types +
            ":13:13: error: Group derives from itself [parent-circle]\n"
            "   13 | class Group:Group {\n"
            "      |             ^~~~~\n");
    const std::string empty = write("empty.txt", "");
    const Outcome none = runProgram(kRun + key + empty);
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.talk, empty + ":1:1: error: no type is declared [no-block]\n");
}

TEST(RunCommand, TellsOfAnAlarmLevelThatThereIsNot)
{
    const Outcome setting = runProgram(kRun + "--set XML3AlarmLevel=FOO");
    EXPECT_EQ(setting.status, 0);
    const std::string warning =
        "scenariomatch run: --set: warning: XML3AlarmLevel: there is no level ";
    EXPECT_EQ(setting.talk, warning + "FOO; taken as NOTURGENT\n");
    EXPECT_EQ(runProgram(kRun + "--set XML3AlarmLevel=URGENT").talk, "");
    const std::string parameters =
        write("params.yaml", contentOf(kFiles + "params.yaml") + "XML3AlarmLevel: \"FOO\"\n");
    const Outcome file = runProgram(
        "run --params " + parameters + " --common-path " + kFiles + " --tracks " + kFiles +
        "tracks.txt");
    EXPECT_EQ(
        file.talk,
        parameters + ":9:18: error: 'FOO' is no alarm level, and counts as NOTURGENT "
                     "[unknown-alarm-level]\n"
                     "    9 | XML3AlarmLevel: \"FOO\"\n"
                     "      |                  ^~~\n");
    // What a setting replaces is no fault of the file.
    const std::string command = "run --params " + parameters + " --common-path " + kFiles +
                                " --tracks " + kFiles + "tracks.txt --set XML3AlarmLevel=";
    EXPECT_EQ(runProgram(command + "URGENT").talk, "");
    EXPECT_EQ(runProgram(command + "BAR").talk, warning + "BAR; taken as NOTURGENT\n");
}

TEST(RunCommand, TellsOnceOfElementsOfTheContextThatCannotBeUsed)
{
    const std::string context = write(
        "context.xml",
        "<Context name=\"run\">\n"
        "<Element kind=\"wall\" name=\"W\" shape=\"polygon\"><Vertex x=\"1\" y=\"2\" z=\"0\"/>"
        "</Element>\n"
        "</Context>\n");
    const Outcome outcome = runProgram(kRun + "--set RHMContext=" + context);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(countOf(outcome.talk, context), 1U) << outcome.talk;
    EXPECT_THAT(outcome.talk, HasSubstr(context + ":2:"));
    EXPECT_THAT(outcome.talk, HasSubstr("[malformed]\n"));
}

TEST(RunCommand, RefusesPipesForWhatConfiguresIt)
{
    // Nobody writes into it: a program that opens it waits for ever.
    const std::string pipe = temporary("pipe");
    ::unlink(pipe.c_str());
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const Outcome parameters =
        runProgram("run --params " + pipe + " --tracks " + kFiles + "tracks.txt");
    EXPECT_EQ(parameters.status, 3);
    EXPECT_EQ(parameters.talk, "scenariomatch run: " + pipe + ": it is no ordinary file\n");
    for (const std::string key :
         {"scenarioRecognitionModelFileName",
          "scenarioRecognitionObjectDescription",
          "scenarioRecognitionOperatorDescription",
          "RHMContext"}) {
        const Outcome outcome = runProgram(kRun + fmt::format("--set {}={}", key, pipe));
        EXPECT_EQ(outcome.status, 3);
        EXPECT_EQ(
            outcome.talk,
            fmt::format("scenariomatch run: {} ({}): it is no ordinary file\n", pipe, key));
    }
    const Outcome models = runProgram("check " + pipe);
    EXPECT_EQ(models.status, 3);
    EXPECT_THAT(models.out, HasSubstr(pipe + " cannot be read: it is no ordinary file"));
    const Outcome context = runProgram("check " + kFiles + "models/zone.txt --context " + pipe);
    EXPECT_EQ(context.status, 3);
    EXPECT_THAT(context.out, HasSubstr(pipe + " cannot be read: it is no ordinary file"));
}

TEST(RunCommand, ShowsProgressOnlyWhenAskedWithoutATerminal)
{
    EXPECT_EQ(runProgram(kRun + "--progress auto").talk, "");
    EXPECT_EQ(runProgram(kRun + "--progress on").status, 0);
}

TEST(RunCommand, EndsCleanlyWhenInterrupted)
{
    const std::string pipe = temporary("pipe");
    const std::string xml = temporary("events.xml");
    ::unlink(pipe.c_str());
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int tracks = ::open(pipe.c_str(), O_RDWR | O_CLOEXEC);
    std::array<int, 2> events{};
    ASSERT_EQ(::pipe2(events.data(), O_CLOEXEC), 0);
    const std::string parameters = kFiles + "params.yaml";
    const std::string setting = "XML3FileName=" + xml;
    const std::array<const char*, 11> arguments{
        kProgram.c_str(),
        "run",
        "--params",
        parameters.c_str(),
        "--tracks",
        pipe.c_str(),
        "--every-frame",
        "--set=saveXML3File=true",
        "--set",
        setting.c_str(),
        nullptr};
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(events[1], STDOUT_FILENO);
        ::execv(kProgram.c_str(), const_cast<char* const*>(arguments.data()));
        ::_exit(127);
    }
    ::close(events[1]);
    const std::string line =
        R"({"frame":1,"time":"2026-05-04T10:00:00","actors":[{"id":1,"position":[5,5,0]}]})"
        "\n";
    ASSERT_EQ(::write(tracks, line.data(), line.size()), static_cast<ssize_t>(line.size()));
    // The event comes although the tracks go on: the program now waits for the next frame.
    char character = 0;
    while (character != '\n') {
        ASSERT_EQ(::read(events[0], &character, 1), 1);
    }
    ::kill(child, SIGINT);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_THAT(contentOf(xml), testing::EndsWith("</Tarvos>\n"));
    ::close(tracks);
    ::close(events[0]);
}

TEST(RunCommand, HelpsWithTwoExamples)
{
    const Outcome outcome = runProgram("run --help");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.talk, "");
    const std::string examples = outcome.out.substr(outcome.out.rfind("Examples:\n"));
    EXPECT_EQ(countOf(examples, "\n  scenariomatch "), 2U) << examples;
    EXPECT_EQ(runProgram("--version").out, "scenariomatch 0.1.0\n");
}

TEST(RunCommand, ItsExamplesWorkAsPrinted)
{
    const std::string folder = temporary("checkout");
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::filesystem::copy(
        SCENARIOMATCH_TEST_DATA "/../../examples",
        folder + "/examples",
        std::filesystem::copy_options::recursive);
    const std::string help = runProgram("run --help").out;
    std::istringstream examples(help.substr(help.rfind("Examples:\n") + 10));
    std::string output;
    for (std::string line; std::getline(examples, line);) {
        if (line.starts_with("  scenariomatch ")) {
            const Outcome outcome = runProgram(line.substr(16), "cd " + folder + " && ");
            EXPECT_EQ(outcome.status, 0) << line;
            EXPECT_EQ(outcome.talk, "") << line;
            output = outcome.out;
        }
    }
    EXPECT_THAT(output, HasSubstr("BagLeft"));
}

} // namespace scenariomatch
