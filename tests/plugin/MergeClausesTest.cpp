#include "ProcessFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace
{

using testing::HasSubstr;
using testing::Not;

// A person below one metre, and one that rises above one and a half.
constexpr const char* kDown =
    "PrimitiveState(Down, PhysicalObjects((p : Person)) Constraints((1.0 above p->Height)))\n";
constexpr const char* kRise =
    "PrimitiveState(Rise, PhysicalObjects((p : Person)) Constraints((p->Height above 1.5))"
    " Miscellaneous((MergeStartEnd, (Start Down)(Threshold 10))))\n";

class MergeClauses : public scenariomatch::ProcessFixture
{
protected:
    void use(const std::string& models, const std::string& names)
    {
        ASSERT_TRUE(start(
            {.models = models, .usedModels = names, .parameters = "constProlongation: -1\n"}));
    }

    void down(int number, double second) { frame(number, second, {person(7, 0.9F)}); }

    void rise(int number, double second) { frame(number, second, {person(7)}); }

    // The frame in which the first instance of the list starts.
    int startFrame() const
    {
        return m_process->engine()->recognisedScenarios().front()->m_start->m_frameID;
    }
};

} // namespace

TEST_F(MergeClauses, TakeOverTheStartOfTheEarlierEvent)
{
    use(std::string(kDown) + kRise, "Down,Rise");
    down(1, 0.0);
    rise(2, 1.5);
    EXPECT_EQ(startFrame(), 1);
    EXPECT_THAT(
        m_output,
        testing::EndsWith("\n Miscellaneous case\n"
                          "\nID.AgM1:p,7\nID.AgM2:7"
                          "\nHigher Level Event\nID:1\nName:Rise\n"
                          "Start:2 2026-5-4 10:0:1.500\nEnd:2 2026-5-4 10:0:1.500\nConfidence:1\n"
                          "\nLower Level Event\nID:0\nName:Down\n"
                          "Start:1 2026-5-4 10:0:0.0\nEnd:1 2026-5-4 10:0:0.0\nConfidence:1\n"
                          "\n Is it the same?1"
                          "\nHigher Level Event\nID:1\nName:Rise\n"
                          "Start:1 2026-5-4 10:0:0.0\nEnd:2 2026-5-4 10:0:1.500\nConfidence:1\n"
                          "Merge was:1;\n"));
}

TEST_F(MergeClauses, ReplaceThePointerAndLeaveTheStampAlone)
{
    use(std::string(kDown) + kRise, "Down,Rise");
    down(1, 0.0);
    rise(2, 1.0);
    const auto& list = m_process->engine()->recognisedScenarios();
    EXPECT_EQ(list.front()->m_start, list.back()->m_start);
    EXPECT_EQ(list.front()->m_end->m_frameID, 2);
    EXPECT_EQ(list.back()->m_end->m_frameID, 1);
}

TEST_F(MergeClauses, LetTheOldestWithinTheThresholdWin)
{
    use(std::string(kDown) + kRise, "Down,Rise");
    down(1, 0.0);
    down(2, 5.0);
    down(3, 10.0);
    rise(4, 15.0);
    EXPECT_EQ(startFrame(), 2);
    EXPECT_THAT(m_output, testing::EndsWith("Merge was:1;\n"));
}

TEST_F(MergeClauses, StopAtACandidateBeyondTheThreshold)
{
    use(std::string(kDown) + kRise, "Down,Rise");
    down(1, 0.0);
    rise(2, 10.001);
    EXPECT_EQ(startFrame(), 2);
    EXPECT_THAT(m_output, testing::EndsWith("\n Miscellaneous case\nMerge was:0;\n"));
}

TEST_F(MergeClauses, ReachTheThresholdItself)
{
    use(std::string(kDown) + kRise, "Down,Rise");
    down(1, 0.0);
    rise(2, 10.0);
    EXPECT_EQ(startFrame(), 1);
}

TEST_F(MergeClauses, TellOtherParticipantsApart)
{
    use(std::string(kDown) + kRise, "Down,Rise");
    frame(1, 0.0, {person(8, 0.9F)});
    rise(2, 1.0);
    EXPECT_EQ(startFrame(), 2);
    EXPECT_THAT(m_output, HasSubstr("\nID.AgM1:p,7\nID.AgM2:8"));
    EXPECT_THAT(m_output, testing::EndsWith("\n Is it the same?0Merge was:0;\n"));
}

TEST_F(MergeClauses, TakeAComponentThatTheCandidateLacksForAnother)
{
    use("PrimitiveState(Down, PhysicalObjects((q : Person)) Constraints((1.0 above q->Height)))\n" +
            std::string(kRise),
        "Down,Rise");
    down(1, 0.0);
    rise(2, 1.0);
    EXPECT_EQ(startFrame(), 2);
    EXPECT_THAT(m_output, HasSubstr("\nID.AgM1:p,7\nID.AgM2:-1"));
    EXPECT_THAT(m_output, testing::EndsWith("\n Is it the same?0Merge was:0;\n"));
}

TEST_F(MergeClauses, MatchNothingWithoutAStart)
{
    use(std::string(kDown) +
            "PrimitiveState(Rise, PhysicalObjects((p : Person)) Constraints((p->Height above 1.5))"
            " Miscellaneous((MergeStartEnd, (Threshold 10))))",
        "Down,Rise");
    down(1, 0.0);
    rise(2, 1.0);
    EXPECT_EQ(startFrame(), 2);
    EXPECT_THAT(m_output, testing::EndsWith("\n Miscellaneous case\nMerge was:0;\n"));
}

TEST_F(MergeClauses, ReachNoEarlierFrameWithoutAThreshold)
{
    use(std::string(kDown) +
            "PrimitiveState(Rise, PhysicalObjects((p : Person)) Constraints((p->Height above 1.5))"
            " Miscellaneous((MergeStartEnd, (Start Down))))",
        "Down,Rise");
    down(1, 0.0);
    rise(2, 1.0);
    EXPECT_EQ(startFrame(), 2);
}

TEST_F(MergeClauses, LeaveModelsWithoutAClauseAlone)
{
    use(std::string(kDown) +
            "PrimitiveState(Rise, PhysicalObjects((p : Person)) Constraints((p->Height above 1.5))"
            " Miscellaneous((Other, (Start Down)(Threshold 10))))",
        "Down,Rise");
    down(1, 0.0);
    rise(2, 1.0);
    EXPECT_EQ(startFrame(), 2);
    EXPECT_THAT(m_output, Not(HasSubstr("Miscellaneous case")));
}

TEST_F(MergeClauses, ExamineNothingWhenTheFirstInstanceEndedEarlier)
{
    use(std::string(kDown) + kRise, "Down,Rise");
    down(1, 0.0);
    rise(2, 1.0);
    frame(3, 2.0, {});
    EXPECT_EQ(m_output, "Scene ID:0");
}

TEST_F(MergeClauses, DoNotCompareSubEvents)
{
    use(std::string(kDown) + "PrimitiveState(Tall, PhysicalObjects((p : Person)) "
                             "Constraints((p->Height above 1.5)))\n"
                             "CompositeEvent(Stand, PhysicalObjects((p : Person))"
                             " Components((c : PrimitiveState Tall(p)))"
                             " Miscellaneous((MergeStartEnd, (Start Down)(Threshold 10))))",
        "Down,Tall,Stand");
    down(1, 0.0);
    rise(2, 1.0);
    EXPECT_THAT(m_output, HasSubstr("\n Miscellaneous case\n\nID.AgM1:p,7\nID.AgM2:7\nHigher"));
    EXPECT_THAT(m_output, Not(HasSubstr("ID.AgM1:c")));
    EXPECT_THAT(m_output, testing::EndsWith("Merge was:1;\n"));
}

TEST_F(MergeClauses, TraceTwoModelsByName)
{
    use("PrimitiveState(Scenario_01_started, PhysicalObjects((p : Person)))\n"
        "PrimitiveState(Scenario_02_started, PhysicalObjects((p : Mobile)))\n",
        "Scenario_01_started,Scenario_02_started");
    frame(1, 0.0, {person(7)});
    EXPECT_THAT(m_output, testing::EndsWith("\n Event Model check in Misc:Scenario_01_started0\n"));
    frame(2, 2.5, {});
    EXPECT_EQ(m_output, "Scene ID:0\n Event Model check in Misc:Scenario_01_started2.5\n");
    frame(3, 3.0, {actor(8, "CAR")});
    EXPECT_THAT(
        m_output,
        testing::EndsWith("\n Event Model check in Misc:Scenario_02_started0\n"
                          "\n Event Model check in Misc:Scenario_01_started3\n"));
}
