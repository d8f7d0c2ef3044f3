#include "TroubleRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace scenariomatch
{

namespace
{

using testing::HasSubstr;

// Operators that fail in a way that the process survives: person 1 is recognised all the same, and
// the operator is named once.
void expectSurvived(const std::string& trouble, const std::string& message)
{
    for (const std::string mode : {"", "--isolate "}) {
        const Outcome outcome = TroubleRun(trouble, 4, 6).run(mode + "--stats");
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1) << outcome.out;
        EXPECT_THAT(outcome.out, HasSubstr(R"("begin_frame":1,)"));
        EXPECT_THAT(outcome.out, HasSubstr(R"("end_frame":10,)"));
        EXPECT_THAT(outcome.talk, HasSubstr(message + "\n"));
        EXPECT_EQ(outcome.talk.find("Operator"), outcome.talk.rfind("Operator")) << outcome.talk;
        EXPECT_THAT(outcome.talk, HasSubstr("operator-failure     3  error: "));
    }
}

} // namespace

TEST(TroublesomeOperator, ThatThrowsIsNamedOnceAndCounted)
{
    expectSurvived("throw", "Operator trouble failed: no idea");
}

TEST(TroublesomeOperator, ThatReturnsNothingIsNamedOnceAndCounted)
{
    expectSurvived(
        "nothing", "Operator trouble failed: it gives nothing where its description says BOOL");
}

TEST(TroublesomeOperator, ThatReturnsAnotherTypeIsNamedOnceAndCounted)
{
    expectSurvived(
        "word", "Operator trouble failed: it gives STRING where its description says BOOL");
}

TEST(TroublesomeOperator, ThatMakesFramesSlowIsNamedOnce)
{
    const Outcome outcome = TroubleRun("slow", 4, 6).run("");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(
        outcome.talk,
        testing::ContainsRegex(
            "Operator trouble is slow: its calls took [0-9]+\\.[0-9][0-9] s of a frame\n"));
    EXPECT_EQ(outcome.talk.find("is slow"), outcome.talk.rfind("is slow"));
}

} // namespace scenariomatch
