#include "app/TrackProblems.h"

#include <gtest/gtest.h>

#include <sstream>

namespace scenariomatch
{

TEST(TrackProblems, PrintsPlaceReasonSourceLineAndCaret)
{
    std::ostringstream talk;
    TrackProblems problems("hall.txt", talk, {});
    problems.report(Oddity::Malformed, {3, 5, "1 2 x\t4"}, "a number is expected");
    problems.report(Oddity::Damaged, {9, 0, {}}, "the end");
    problems.report(Oddity::Damaged, {0, 0, {}}, "nothing there");
    EXPECT_EQ(
        talk.str(),
        "hall.txt:3:5: a number is expected\n1 2 x 4\n    ^\nhall.txt:9: the end\nhall.txt: "
        "nothing there\n");
}

TEST(TrackProblems, PutsTheCaretBelowTheCharacterWhenBytesBeforeItMakeLongOnes)
{
    std::ostringstream talk;
    TrackProblems problems("t", talk, {});
    problems.report(Oddity::Malformed, {1, 5, "\xC3\xA4\xC3\xB6x"}, "no");
    EXPECT_EQ(talk.str(), "t:1:5: no\n\xC3\xA4\xC3\xB6x\n  ^\n");
}

TEST(TrackProblems, CutsLongLinesAroundTheColumn)
{
    std::ostringstream talk;
    TrackProblemOptions options;
    options.longestExcerpt = 10;
    TrackProblems problems("t", talk, options);
    problems.report(Oddity::Malformed, {1, 21, "abcdefghijklmnopqrstUVWXYZ0123456789"}, "no");
    EXPECT_EQ(talk.str(), "t:1:21: no\n...pqrstUVWXY...\n        ^\n");
    talk.str("");
    problems.report(Oddity::Malformed, {1, 1, "abcdefghijklmnopqrstUVWXYZ0123456789"}, "no");
    EXPECT_EQ(talk.str(), "t:1:1: no\nabcdefghij...\n^\n");
}

TEST(TrackProblems, CountsOnlyAfterTheLimitAndSaysSoOnce)
{
    std::ostringstream talk;
    TrackProblemOptions options;
    options.mostPrinted = 1;
    TrackProblems problems("t", talk, options);
    for (int i = 0; i < 3; ++i) {
        problems.report(Oddity::Untracked, {1, 0, {}}, "no");
    }
    EXPECT_EQ(talk.str(), "t:1: no\nt: further problems are counted and not printed\n");
    EXPECT_EQ(problems.counts().of(Oddity::Untracked), 3U);
    EXPECT_FALSE(problems.isStopped());
}

TEST(TrackProblems, StopsAtTheFirstWhenStrict)
{
    std::ostringstream talk;
    TrackProblemOptions options;
    options.isStrict = true;
    TrackProblems problems("t", talk, options);
    EXPECT_FALSE(problems.isStopped());
    problems.report(Oddity::Untracked, {1, 0, {}}, "first");
    problems.report(Oddity::Untracked, {2, 0, {}}, "second");
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
    int count = 1;
    for (const Oddity kind :
         {Oddity::Malformed,
          Oddity::TooLong,
          Oddity::FrameGoesBack,
          Oddity::ClockGoesBack,
          Oddity::DuplicateId,
          Oddity::NotFinite,
          Oddity::OutOfRange,
          Oddity::NegativeBox,
          Oddity::TooManyObjects,
          Oddity::UnknownClass,
          Oddity::Untracked,
          Oddity::Damaged}) {
        for (int i = 0; i < count; ++i) {
            problems.report(kind, {1, 0, {}}, "no");
        }
        count = 3 - count;
    }
    talk.str("");
    problems.printSummary();
    EXPECT_EQ(
        talk.str(),
        "t: 1 malformed line left out, 2 lines too long left out, 1 frame out of order left out, "
        "2 clocks that go back replaced, 1 repeated identifier left out, "
        "2 objects with a number that is not finite left out, 1 number out of range left out, "
        "2 boxes of negative size left out, 1 object too many for its frame left out, "
        "2 objects of unknown classes left out, 1 untracked object left out, "
        "2 damaged ends left out\n");
}

TEST(TrackProblems, CountsWhatIsNoProblemWithoutAWord)
{
    std::ostringstream talk;
    TrackProblems problems("t", talk, TrackProblemOptions{.isStrict = true});
    problems.note(Oddity::NotConsidered);
    problems.printSummary();
    EXPECT_EQ(problems.counts().of(Oddity::NotConsidered), 1U);
    EXPECT_EQ(problems.total(), 0U);
    EXPECT_FALSE(problems.isStopped());
    EXPECT_EQ(talk.str(), "");
}

} // namespace scenariomatch
