#include "app/RunStatistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;

TrackFrame frameOf(std::size_t actors)
{
    TrackFrame frame;
    frame.actors.resize(actors);
    for (TrackedActor& actor : frame.actors) {
        actor.size = TrackSize();
    }
    return frame;
}

std::string printed(const RunStatistics& statistics, const TrackProblems& problems)
{
    std::ostringstream out;
    statistics.print(out, problems);
    const std::string text = out.str();
    const std::size_t memory = text.find("peak memory");
    return text.substr(text.find('\n', memory) + 1);
}

} // namespace

TEST(RunStatistics, SaysWhenWhatWasReadIsNotUsedOrDropped)
{
    std::ostringstream talk;
    TrackProblems problems("t", talk, {});
    RunStatistics statistics;
    EXPECT_EQ(statistics.imbalance(problems), "");
    problems.countRead();
    problems.countRead();
    problems.countRead();
    statistics.addFrame(frameOf(2), {});
    EXPECT_EQ(
        statistics.imbalance(problems),
        "3 actors were read, 2 used and 0 dropped, which does not add up: please report it");
    problems.countDropped(1);
    EXPECT_EQ(statistics.imbalance(problems), "");
}

TEST(RunStatistics, ListsNoOddityThatWasNotMet)
{
    std::ostringstream talk;
    const TrackProblems problems("t", talk, {});
    RunStatistics statistics;
    statistics.addFrame(frameOf(1), {});
    EXPECT_EQ(printed(statistics, problems), "");
}

TEST(RunStatistics, ListsEveryOddityOfReadersProcessAndEngine)
{
    std::ostringstream talk;
    TrackProblems problems("t", talk, {});
    for (const Oddity kind :
         {Oddity::Malformed,
          Oddity::TooLong,
          Oddity::OutOfRange,
          Oddity::TooManyObjects,
          Oddity::UnknownClass,
          Oddity::Damaged,
          Oddity::FrameGoesBack}) {
        problems.report(kind, {}, "no");
    }
    problems.note(Oddity::NotConsidered);
    RecognitionCounters counters;
    counters.operatorFailures = 2;
    counters.candidateCuts = 3;
    counters.feed = {
        .actors = 1,
        .missingActors = 4,
        .duplicateIds = 5,
        .untracked = 6,
        .notFinite = 7,
        .negativeBoxes = 8,
        .unknownTypes = 9,
        .framesGoBack = 10,
        .clocksGoBack = 11,
        .clockJumps = 12,
        .badClocks = 13};
    RunStatistics statistics;
    TrackFrame frame = frameOf(1);
    frame.actors.front().size.reset();
    statistics.addFrame(frame, counters);
    statistics.setRestarts(14);
    statistics.setLostFrames(15);
    const std::string list = printed(statistics, problems);
    for (std::size_t i = 0; i < kOddities; ++i) {
        EXPECT_THAT(list, HasSubstr(std::string(textOf(static_cast<Oddity>(i)).name) + " "));
    }
    EXPECT_THAT(
        list,
        HasSubstr("frame-goes-back      11  warning: Number the frames upwards and give each "));
    EXPECT_THAT(list, HasSubstr("clock-jumps          12  note: Make sure that the recording "));
    EXPECT_THAT(list, HasSubstr("\nmissing-size         1  note: "));
    EXPECT_THAT(list, HasSubstr("\noperator-failure     2  error: "));
    EXPECT_THAT(list, HasSubstr("\nengine-restart       14  error: "));
    EXPECT_THAT(list, HasSubstr("\nframe-not-in-file    15  error: "));
}

} // namespace scenariomatch
