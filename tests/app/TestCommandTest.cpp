#include "ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace scenariomatch
{

namespace
{

using testing::EndsWith;
using testing::HasSubstr;

const std::string kExamples = SCENARIOMATCH_TEST_DATA "/../../examples/";

std::string fileWith(const std::string& name, const std::string& text)
{
    std::ofstream(temporary(name)) << text;
    return temporary(name);
}

// Somebody walks through the door and sees another one turn before it.
std::string doorTest(const std::string& events)
{
    return "params: " + kExamples +
           "gate/gate.yaml\n"
           "cases:\n"
           "  - name: in & out\n"
           "    tracks:\n"
           "      objects:\n"
           "        - id: 3\n"
           "          path:\n"
           "            - {time: 0, position: [1, 2]}\n"
           "            - {time: 4, position: [1, -2]}\n"
           "    events: " +
           events + "\n";
}

const std::string kIn =
    "[{model: GoesIn, objects: {p: 3, g: Door}, begin: 2.04, end: 2.04, alarm: NOTURGENT}]";
const std::string kLate = "[{model: GoesIn, objects: {p: 3}, begin: 3, end: 3}]";

constexpr auto kRecursively = std::filesystem::copy_options::recursive;

} // namespace

TEST(TestCommand, PassesWhereEventsAreAsExpected)
{
    const std::string file = fileWith("door.yaml", doorTest(kIn));
    const Outcome outcome = runProgram("test " + file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, file + "\n  passed  in & out\n1 case, 0 failed\n");
}

TEST(TestCommand, ShowsWhatDiffers)
{
    const std::string file = fileWith("door.yaml", doorTest(kLate));
    const Outcome outcome = runProgram("test " + file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.out,
        file + "\n"
               "  FAILED  in & out (line 3)\n"
               "    + GoesIn  g=Door p=3  2.04 to 2.04 s  NOTURGENT\n"
               "    - GoesIn  p=3  3 to 3 s  (line 10)\n"
               "      crossedRight(p->Position, g->StartPoint, g->EndPoint) was the first to be "
               "false for 5 candidates.\n"
               "1 case, 1 failed\n");
}

TEST(TestCommand, SaysNoReasonWhereTheEventCameAtAnotherTime)
{
    const std::string file =
        fileWith("door.yaml", doorTest("[{model: GoesIn, objects: {p: 3}, begin: 2, end: 3}]"));
    EXPECT_EQ(
        runProgram("test " + file).out,
        file + "\n"
               "  FAILED  in & out (line 3)\n"
               "    - GoesIn  p=3  2 to 3 s  (line 10)\n"
               "    + GoesIn  g=Door p=3  2.04 to 2.04 s  NOTURGENT\n"
               "1 case, 1 failed\n");
}

TEST(TestCommand, SpeaksTap)
{
    const std::string good = fileWith("door.yaml", doorTest(kIn));
    const std::string bad = fileWith("late.yaml", doorTest(kLate));
    const Outcome outcome = runProgram("test --format tap " + good + " " + bad);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.out,
        "TAP version 13\nok 1 - " + good + ": in & out\nnot ok 2 - " + bad +
            ": in & out\n"
            "# + GoesIn  g=Door p=3  2.04 to 2.04 s  NOTURGENT\n"
            "# - GoesIn  p=3  3 to 3 s  (line 10)\n"
            "#   crossedRight(p->Position, g->StartPoint, g->EndPoint) was the first to be false "
            "for 5 "
            "candidates.\n"
            "1..2\n");
}

TEST(TestCommand, WritesJUnit)
{
    const std::string good = fileWith("door.yaml", doorTest(kIn));
    const std::string bad = fileWith("late.yaml", doorTest(kLate));
    const std::string lost = fileWith(
        "lost.yaml", "params: nowhere.yaml\ncases: [{name: lost, tracks: t, events: []}]\n");
    const Outcome outcome = runProgram("test --format junit " + good + " " + bad + " " + lost);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(
        outcome.out,
        HasSubstr(
            "    <testsuite name=\"" + bad + "\" tests=\"1\" failures=\"1\" errors=\"0\">\n" +
            "        <testcase classname=\"" + bad + "\" name=\"in &amp; out\">\n" +
            "            <failure message=\"other events than expected\">"
            "+ GoesIn  g=Door p=3  2.04 to 2.04 s  NOTURGENT\n"
            "- GoesIn  p=3  3 to 3 s  (line 10)\n"
            "  crossedRight(p-&gt;Position, g-&gt;StartPoint, g-&gt;EndPoint) was the first to be "
            "false for 5 candidates.\n</failure>\n"));
    EXPECT_THAT(outcome.out, HasSubstr("tests=\"1\" failures=\"0\" errors=\"1\">\n"));
    EXPECT_THAT(outcome.out, HasSubstr("<error message=\"cannot be run\">cannot be run: "));
    EXPECT_THAT(outcome.out, HasSubstr("name=\"in &amp; out\"/>\n"));
}

TEST(TestCommand, WritesFoundEventsIntoTheFile)
{
    const std::string file = fileWith("door.yaml", "# Mine.\n" + doorTest(kLate) + "# End.\n");
    const Outcome outcome = runProgram("test --update " + file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.talk, file + ": events of 1 cases written\n");
    const std::string text = contentOf(file);
    EXPECT_THAT(
        text,
        EndsWith("    events:\n      - {model: GoesIn, objects: {g: Door, p: 3}, begin: 2.04, end: "
                 "2.04, alarm: NOTURGENT}\n# End.\n"));
    EXPECT_THAT(text, testing::StartsWith("# Mine.\n"));
    EXPECT_EQ(runProgram("test " + file).status, 0);
    // What is right stays as it is written.
    EXPECT_EQ(runProgram("test --update " + file).talk, "");
    EXPECT_EQ(contentOf(file), text);
}

TEST(TestCommand, LeavesAForbiddenEventFailedWhenItUpdates)
{
    const std::string file = fileWith("door.yaml", doorTest("[]\n    absent: [GoesIn]"));
    const Outcome outcome = runProgram("test --update " + file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("(must be absent, line 11)\n1 case, 1 failed\n"));
}

TEST(TestCommand, LeavesFilesAloneThatItCannotUpdateSafely)
{
    const std::string text = doorTest("&e []") + "  - {name: b, scene: " + kExamples +
                             "gate/scenes/flow.yaml, events: *e}\n";
    const std::string file = fileWith("door.yaml", text);
    const Outcome outcome = runProgram("test --update " + file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.talk, HasSubstr("the events cannot be replaced safely"));
    EXPECT_EQ(contentOf(file), text);
}

TEST(TestCommand, TellsTheCoverageOfConstraints)
{
    const std::string file = fileWith("door.yaml", doorTest(kIn));
    const Outcome outcome = runProgram("test --coverage " + file);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(
        outcome.out,
        EndsWith("gate/gate.yaml\n"
                 "GoesIn\n"
                 "        1 true       100 false  crossedRight(p->Position, g->StartPoint, "
                 "g->EndPoint)\n"
                 "GoesOut\n"
                 "        0 true       101 false  crossedLeft(p->Position, g->StartPoint, "
                 "g->EndPoint)  never true\n"
                 "1 of 2 constraints were seen true and false\n"));
    EXPECT_EQ(runProgram("test --require-coverage " + file).status, 1);
    EXPECT_EQ(
        runProgram("test --require-coverage " + kExamples + "gate/tests/door.yaml").status, 0);
}

TEST(TestCommand, FindsTheSameWithAndWithoutCoverageAndAfterOtherCases)
{
    const std::string files = kExamples + "lobby/tests/bags.yaml " + kExamples +
                              "gate/tests/door.yaml " + kExamples + "lobby/tests/people.yaml " +
                              kExamples + "lobby/tests/bags.yaml ";
    EXPECT_EQ(runProgram("test " + files).status, 0);
    EXPECT_EQ(runProgram("test --coverage " + files).status, 0);
}

TEST(TestCommand, FindsInAFileOfTracksWhatItFindsInItsScene)
{
    const std::string tracks = temporary("bag.jsonl");
    EXPECT_EQ(
        runProgram("synth " + kExamples + "lobby/scenes/bag.yaml --output " + tracks).status, 0);
    const auto test = [](const std::string& what) {
        return "params: " + kExamples + "lobby/lobby.yaml\ncases:\n- {name: a, " + what +
               ", events: []}\n";
    };
    const std::string ofTracks = fileWith("tracks.yaml", test("tracks: " + tracks));
    const std::string ofScene =
        fileWith("scene.yaml", test("scene: " + kExamples + "lobby/scenes/bag.yaml"));
    EXPECT_EQ(runProgram("test --update " + ofTracks + " " + ofScene).status, 0);
    const std::string text = contentOf(ofTracks);
    EXPECT_THAT(text, HasSubstr("BagTakenByOther"));
    EXPECT_EQ(
        text.substr(text.find("events")),
        contentOf(ofScene).substr(contentOf(ofScene).find("events")));
}

TEST(TestCommand, SaysWhyACaseCannotBeRun)
{
    const std::string file = fileWith(
        "door.yaml",
        "params: " + kExamples +
            "gate/gate.yaml\ncases:\n"
            "  - {name: a, tracks: nowhere.jsonl, events: []}\n"
            "  - {name: b, scene: " +
            kExamples +
            "gate/scenes/flow.yaml, absent: [GoesUp]}\n"
            "  - {name: c, scene: " +
            kExamples + "gate/scenes/flow.yaml, events: [], set: {historySize: many}}\n");
    const Outcome outcome = runProgram("test " + file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("FAILED  a (line 3)\n    cannot be run: "));
    EXPECT_THAT(outcome.out, HasSubstr("nowhere.jsonl: No such file or directory\n"));
    EXPECT_THAT(
        outcome.out, HasSubstr("cannot be run: line 4: there is no model 'GoesUp' in use\n"));
    EXPECT_THAT(outcome.out, HasSubstr("FAILED  c (line 5)\n    cannot be run: "));
}

// A case has no option for the format.
TEST(TestCommand, NamesNoOptionForTracksOfNoKnownFormat)
{
    const std::string tracks = fileWith("letter.txt", "Dear all,\n");
    const std::string file = fileWith(
        "letter.yaml",
        "params: " + kExamples + "gate/gate.yaml\ncases:\n  - {name: a, tracks: " + tracks +
            ", events: []}\n");
    const Outcome outcome = runProgram("test " + file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("letter.txt: the format of the tracks is not known\n"));
}

TEST(TestCommand, TellsOnceWhatIsWrongInTheFilesOfItsCases)
{
    std::filesystem::remove_all(temporary("gate"));
    std::filesystem::copy(kExamples + "gate", temporary("gate"), kRecursively);
    const std::string parameters =
        fileWith("gate/gate.yaml", contentOf(kExamples + "gate/gate.yaml") + "historySise: 12\n");
    const std::string tracks = "tracks: " + kExamples + "gate/scenes/flow.yaml, events: []}\n";
    const std::string file = fileWith(
        "two.yaml",
        "params: " + parameters + "\ncases:\n  - {name: a, " + tracks + "  - {name: b, " + tracks);
    const Outcome outcome = runProgram("test " + file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.talk, HasSubstr("gate/gate.yaml:19:1: error: there is no "));
    EXPECT_EQ(outcome.talk.find("error: "), outcome.talk.rfind("error: ")) << outcome.talk;
}

TEST(TestCommand, TellsWhatIsWrongBeforeTheEngineDoes)
{
    std::filesystem::remove_all(temporary("gate"));
    std::filesystem::copy(kExamples + "gate", temporary("gate"), kRecursively);
    std::ofstream(temporary("gate/gate.yaml"), std::ios::app) << "historySise: 12\n";
    std::ofstream(temporary("gate/crossings.txt"))
        << "Scenarios {\nOdd,\nPrimitiveState (GoesIn,\n    PhysicalObjects((p : Person))\n"
           "    Constraints((p unheard p))\n)\n}\n";
    const std::string file = fileWith(
        "odd.yaml",
        "params: " + temporary("gate/gate.yaml") + "\ncases:\n  - {name: a, scene: " + kExamples +
            "gate/scenes/flow.yaml, events: []}\n");
    const std::string talk = runProgram("test " + file).talk;
    const std::size_t engine = talk.find("Warning: Operator unheard is unknown!");
    EXPECT_NE(engine, std::string::npos) << talk;
    EXPECT_LT(talk.find("there is no "), engine) << talk;
}

TEST(TestCommand, RunsNothingWhereAFileIsWrong)
{
    const std::string good = fileWith("door.yaml", doorTest(kIn));
    const std::string bad = fileWith("bad.yaml", "cases:\n  - {nam: a}\n");
    const Outcome outcome = runProgram("test " + good + " " + bad + " nowhere.yaml");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.talk, HasSubstr(bad + ":2:6: a case has no key 'nam'; it has name, "));
    EXPECT_THAT(
        outcome.talk,
        HasSubstr("scenariomatch test: cannot read nowhere.yaml: No such file or directory\n"));
}

TEST(TestCommand, SaysThatTheVerdictsCannotBeWritten)
{
    const std::string file = fileWith("door.yaml", doorTest(kIn));
    const Outcome outcome =
        runProgram("test " + file + " >/dev/full 2>" + temporary("full") + "; exit $? #");
    EXPECT_EQ(outcome.status, 6);
    EXPECT_THAT(
        contentOf(temporary("full")), HasSubstr("scenariomatch test: cannot write the verdicts\n"));
}

} // namespace scenariomatch
