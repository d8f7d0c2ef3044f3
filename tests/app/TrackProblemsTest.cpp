#include "app/TrackProblems.h"

#include <gtest/gtest.h>

#include <sstream>

namespace scenariomatch
{

TEST(TrackProblems, PrintsPlaceReasonSourceLineAndCaret)
{
    std::ostringstream talk;
    TrackProblems problems("hall.txt", talk, {});
    problems.report(TrackProblemKind::Malformed, {3, 5, "1 2 x\t4"}, "a number is expected");
    problems.report(TrackProblemKind::Damaged, {9, 0, {}}, "the end");
    problems.report(TrackProblemKind::Damaged, {0, 0, {}}, "nothing there");
    EXPECT_EQ(
        talk.str(),
        "hall.txt:3:5: a number is expected\n1 2 x 4\n    ^\nhall.txt:9: the end\nhall.txt: "
        "nothing there\n");
}

TEST(TrackProblems, PutsTheCaretBelowTheCharacterWhenBytesBeforeItMakeLongOnes)
{
    std::ostringstream talk;
    TrackProblems problems("t", talk, {});
    problems.report(TrackProblemKind::Malformed, {1, 5, "\xC3\xA4\xC3\xB6x"}, "no");
    EXPECT_EQ(talk.str(), "t:1:5: no\n\xC3\xA4\xC3\xB6x\n  ^\n");
}

TEST(TrackProblems, CutsLongLinesAroundTheColumn)
{
    std::ostringstream talk;
    TrackProblemOptions options;
    options.longestExcerpt = 10;
    TrackProblems problems("t", talk, options);
    problems.report(
        TrackProblemKind::Malformed, {1, 21, "abcdefghijklmnopqrstUVWXYZ0123456789"}, "no");
    EXPECT_EQ(talk.str(), "t:1:21: no\n...pqrstUVWXY...\n        ^\n");
    talk.str("");
    problems.report(
        TrackProblemKind::Malformed, {1, 1, "abcdefghijklmnopqrstUVWXYZ0123456789"}, "no");
    EXPECT_EQ(talk.str(), "t:1:1: no\nabcdefghij...\n^\n");
}

TEST(TrackProblems, CountsOnlyAfterTheLimitAndSaysSoOnce)
{
    std::ostringstream talk;
    TrackProblemOptions options;
    options.mostPrinted = 1;
    TrackProblems problems("t", talk, options);
    for (int i = 0; i < 3; ++i) {
        problems.report(TrackProblemKind::Untracked, {1, 0, {}}, "no");
    }
    EXPECT_EQ(talk.str(), "t:1: no\nt: further problems are counted and not printed\n");
    EXPECT_EQ(problems.count(TrackProblemKind::Untracked), 3U);
    EXPECT_FALSE(problems.isStopped());
}

TEST(TrackProblems, StopsAtTheFirstWhenStrict)
{
    std::ostringstream talk;
    TrackProblemOptions options;
    options.isStrict = true;
    TrackProblems problems("t", talk, options);
    EXPECT_FALSE(problems.isStopped());
    problems.report(TrackProblemKind::Untracked, {1, 0, {}}, "first");
    problems.report(TrackProblemKind::Untracked, {2, 0, {}}, "second");
    EXPECT_TRUE(problems.isStopped());
    EXPECT_EQ(talk.str(), "t:1: first\n");
}

TEST(TrackProblems, SumsUpByKind)
{
    std::ostringstream talk;
    TrackProblemOptions options;
    options.mostPrinted = 0;
    TrackProblems problems("t", talk, options);
    problems.printSummary();
    EXPECT_EQ(talk.str(), "");
    for (int kind = 0; kind <= static_cast<int>(TrackProblemKind::Damaged); ++kind) {
        for (int i = 0; i <= kind % 2; ++i) {
            problems.report(static_cast<TrackProblemKind>(kind), {1, 0, {}}, "no");
        }
    }
    talk.str("");
    problems.printSummary();
    EXPECT_EQ(
        talk.str(),
        "t: 1 malformed line left out, 2 lines too long left out, 1 frame out of order left out, "
        "2 clocks that go back replaced, 1 repeated identifier left out, "
        "2 objects with a number that is not finite left out, 1 number out of range left out, "
        "2 untracked objects left out, 1 damaged end left out\n");
}

} // namespace scenariomatch
