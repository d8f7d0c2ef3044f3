#include "engine/CandidateLimit.h"

#include "tests/engine/EngineFixture.h"

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

const std::string kPair = "PrimitiveState(Pair, PhysicalObjects((p : Person)(q : Person)))\n";
const std::string kThere = "PrimitiveState(There, PhysicalObjects((p : Person)))\n";

class CandidateLimitTest : public EngineFixture
{
protected:
    void SetUp() override
    {
        EngineFixture::SetUp();
        m_engine.setFailureReport(
            [this](const std::string& message) { m_reports.push_back(message); });
    }

    void runThree(int frame)
    {
        runFrame(frame, frame, {{10, "Person", 0.0}, {20, "Person", 0.0}, {30, "Person", 0.0}});
    }

    Lines m_reports;
};

} // namespace

TEST(CandidateLimit, CountsTriesFromTheStart)
{
    CandidateLimit limit;
    limit.set(2);
    limit.start();
    EXPECT_TRUE(limit.tryOne());
    EXPECT_TRUE(limit.tryOne());
    EXPECT_FALSE(limit.isReached());
    EXPECT_FALSE(limit.tryOne());
    EXPECT_TRUE(limit.isReached());
    EXPECT_EQ(limit.tried(), 2U);
    limit.start(1);
    EXPECT_FALSE(limit.isReached());
    EXPECT_TRUE(limit.tryOne());
    EXPECT_FALSE(limit.tryOne());
}

TEST(CandidateLimit, IsNoneForZero)
{
    CandidateLimit limit;
    limit.set(1);
    limit.set(0);
    limit.start();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_TRUE(limit.tryOne());
    }
}

// Ten, with itself, twenty and thirty; then twenty is one too many.
TEST_F(CandidateLimitTest, LeavesOutWhatIsTriedBeyondIt)
{
    readModels(kPair, "Pair");
    m_engine.setCandidateLimit(4);
    runThree(1);
    EXPECT_EQ(alive(), Lines({"0 Pair 1..1 p=10 q=20", "1 Pair 1..1 p=10 q=30"}));
    EXPECT_EQ(
        m_reports,
        Lines({"Model Pair has too many candidates in frame 1 (6): those after 4 tries are left "
               "out"}));
}

TEST_F(CandidateLimitTest, IsReportedOncePerModelAndCountedPerFrame)
{
    readModels(kPair, "Pair");
    m_engine.setCandidateLimit(4);
    runThree(1);
    runThree(2);
    EXPECT_EQ(m_reports.size(), 1U);
    EXPECT_EQ(m_engine.candidateCuts(), 2U);
}

TEST_F(CandidateLimitTest, LeavesOtherModelsUntouched)
{
    readModels(
        kPair + kThere +
            "CompositeState(Stays, PhysicalObjects((q : Person))"
            " Components((a : PrimitiveState There(q))))\n",
        "Pair,There,Stays");
    m_engine.setCandidateLimit(3);
    runThree(1);
    EXPECT_EQ(
        alive(),
        Lines(
            {"0 Pair 1..1 p=10 q=20",
             "1 There 1..1 p=10",
             "2 There 1..1 p=20",
             "3 There 1..1 p=30",
             "4 Stays 1..1 a=1 q=10",
             "5 Stays 1..1 a=2 q=20",
             "6 Stays 1..1 a=3 q=30"}));
    EXPECT_EQ(m_reports.size(), 1U);
}

TEST_F(CandidateLimitTest, IsNotReachedByAsManyTries)
{
    readModels(kPair, "Pair");
    m_engine.setCandidateLimit(12);
    runThree(1);
    EXPECT_EQ(alive().size(), 6U);
    EXPECT_EQ(m_reports, Lines());
    EXPECT_EQ(m_engine.candidateCuts(), 0U);
}

// Models that share the search for their candidates are cut, and reported, both.
TEST_F(CandidateLimitTest, HoldsForModelsThatShareTheirWork)
{
    const std::string rest =
        "PhysicalObjects((p : Person)(q : Person)) Constraints((p->P near q->P)))\n";
    readModels("PrimitiveState(A, " + rest + "PrimitiveState(B, " + rest, "A,B");
    m_engine.setCandidateLimit(4);
    runThree(1);
    EXPECT_EQ(
        alive(),
        Lines(
            {"0 A 1..1 p=10 q=20",
             "1 A 1..1 p=10 q=30",
             "2 B 1..1 p=10 q=20",
             "3 B 1..1 p=10 q=30"}));
    EXPECT_EQ(m_reports.size(), 2U);
}

TEST_F(CandidateLimitTest, HoldsForCompletionsOfComposites)
{
    readModels(
        "PrimitiveState(Low, PhysicalObjects((p : Person)) Constraints((2 above p->P)))\n"
        "PrimitiveState(High, PhysicalObjects((p : Person)) Constraints((p->P above 2)))\n"
        "CompositeEvent(After, PhysicalObjects((q : Person)(r : Person))"
        " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(r)))"
        " Constraints((a->Interval before b->Interval)))\n",
        "Low,High,After");
    m_engine.setConstTimeSearch(600.0);
    m_engine.setCandidateLimit(4);
    runThree(1);
    EXPECT_EQ(m_engine.candidateCuts(), 0U);
    runFrame(5, 5.0, {{10, "Person", 3.0}, {20, "Person", 3.0}, {30, "Person", 3.0}});
    // Three times each of three persons who were low, of whom one is the same person.
    EXPECT_EQ(m_engine.candidateCuts(), 1U);
    EXPECT_EQ(
        m_reports,
        Lines(
            {"Model After has too many candidates in frame 5: those after 4 tries are left out"}));
    EXPECT_EQ(endedNow().size(), 3U + 3U);
    m_engine.setCandidateLimit(0);
    runFrame(6, 6.0, {{10, "Person", 3.0}, {20, "Person", 3.0}, {30, "Person", 3.0}});
    EXPECT_EQ(endedNow().size(), 3U + 6U);
}

} // namespace scenariomatch
