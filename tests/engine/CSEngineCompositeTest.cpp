#include "engine/RecognitionObserver.h"
#include "tests/engine/EngineFixture.h"

#include <iostream>

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

// A person below and above 2 on the line, and composites of the two.
const std::string kLowAndHigh =
    "PrimitiveState(Low, PhysicalObjects((p : Person)) Constraints((2 above p->P)))\n"
    "PrimitiveState(High, PhysicalObjects((p : Person)) Constraints((p->P above 2)))\n";

class CSEngineComposite : public EngineFixture
{
protected:
    void readRise(double timeSearch)
    {
        readModels(
            kLowAndHigh + "CompositeEvent(Rise, PhysicalObjects((q : Person))"
                          " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(q)))"
                          " Constraints((a->Interval before b->Interval)))\n",
            "Low,High,Rise");
        m_engine.setConstTimeSearch(timeSearch);
        m_engine.m_constProlongation = 1.0;
    }

    const CSScenarioInstance* find(const std::string& name) const
    {
        for (const auto& instance : m_engine.recognisedScenarios()) {
            if (instance->m_scenario->m_name == name) {
                return instance.get();
            }
        }
        return nullptr;
    }
};

} // namespace

TEST_F(CSEngineComposite, CompletesWithAnEarlierRecognition)
{
    readRise(600.0);
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 11.0, {{7, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"1 High 2..2 p=7", "2 Rise 1..2 a=0 b=1 q=7"}));
    const auto* rise = find("Rise");
    const auto* low = find("Low");
    ASSERT_NE(rise, nullptr);
    ASSERT_NE(low, nullptr);
    EXPECT_EQ(rise->m_start, low->m_start);
    EXPECT_EQ(m_engine.statistics().completions, 1);
    EXPECT_EQ(m_engine.statistics().tested, 3);
    EXPECT_EQ(m_engine.statistics().accepted, 2);
}

TEST_F(CSEngineComposite, ReachesNoFurtherBackThanTheTimeSearch)
{
    readRise(5.0);
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 11.0, {{7, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"1 High 2..2 p=7"}));
    EXPECT_EQ(m_engine.statistics().completions, 0);
}

TEST_F(CSEngineComposite, ReachesBackExactlyTheTimeSearch)
{
    readRise(10.0);
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 11.0, {{7, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"1 High 2..2 p=7", "2 Rise 1..2 a=0 b=1 q=7"}));
}

TEST_F(CSEngineComposite, IsNotCompletedByItsEarlierComponent)
{
    readRise(600.0);
    runFrame(1, 1.0, {{7, "Person", 3.0}});
    runFrame(2, 11.0, {{7, "Person", 1.0}});
    EXPECT_EQ(endedNow(), Lines({"1 Low 2..2 p=7"}));
    EXPECT_EQ(m_engine.statistics().completions, 0);
}

TEST_F(CSEngineComposite, IsExtendedAsLongAsTheTriggerHolds)
{
    readRise(600.0);
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 2.0, {{7, "Person", 3.0}});
    runFrame(3, 3.0, {{7, "Person", 3.0}});
    runFrame(4, 4.0, {{7, "Person", 4.0}});
    EXPECT_EQ(endedNow(), Lines({"1 High 2..4 p=7", "2 Rise 1..4 a=0 b=1 q=7"}));
}

TEST_F(CSEngineComposite, RejectsAnotherParticipantInASharedArgument)
{
    readRise(600.0);
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 2.0, {{8, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"1 High 2..2 p=8"}));
    EXPECT_EQ(m_engine.statistics().completions, 1);
}

TEST_F(CSEngineComposite, RejectsOneObjectForTwoVariables)
{
    readModels(
        kLowAndHigh + "CompositeEvent(Two, PhysicalObjects((q : Person)(r : Person))"
                      " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(r))))\n",
        "Low,High,Two");
    runFrame(1, 1.0, {{7, "Person", 1.0}, {8, "Person", 1.0}});
    runFrame(2, 2.0, {{7, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"2 High 2..2 p=7", "3 Two 1..2 a=1 b=2 q=8 r=7"}));
    EXPECT_EQ(m_engine.statistics().completions, 2);
}

TEST_F(CSEngineComposite, AllowsAMobileAndAConstantObjectOfOneIdentifier)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveState(Open, PhysicalObjects((z : Zone)))\n"
        "CompositeEvent(Both, PhysicalObjects((p : Person)(z : Zone))"
        " Components((a : PrimitiveState Open(z))(b : PrimitiveState There(p))))\n",
        "There,Open,Both");
    enterConstant({7, "Zone", 0.0});
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_EQ(
        alive(), Lines({"0 Open 1..1 z=7", "1 There 1..1 p=7", "2 Both 1..1 a=0 b=1 p=7 z=7"}));
}

TEST_F(CSEngineComposite, ComparesNoObjectWithASubEvent)
{
    // Person 0 and sub-event 0 are different things.
    readRise(600.0);
    runFrame(1, 1.0, {{0, "Person", 1.0}});
    runFrame(2, 2.0, {{0, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"1 High 2..2 p=0", "2 Rise 1..2 a=0 b=1 q=0"}));
}

TEST_F(CSEngineComposite, NeverPairsAnInstanceWithItself)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "CompositeEvent(Twice, PhysicalObjects((q : Person))"
        " Components((a : PrimitiveState There(q))(b : PrimitiveState There(q))))\n",
        "There,Twice");
    m_engine.m_constProlongation = 1.0;
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=7"}));
    EXPECT_EQ(m_engine.statistics().completions, 1);
    runFrame(2, 5.0, {{7, "Person", 0.0}});
    EXPECT_EQ(endedNow(), Lines({"1 There 2..2 p=7", "2 Twice 1..2 a=0 b=1 q=7"}));
    EXPECT_EQ(m_engine.statistics().completions, 2);
}

TEST_F(CSEngineComposite, SendsASeedWithoutSkipIndexStraightToVerification)
{
    readModels(
        kLowAndHigh + "PrimitiveEvent(IsLow, PhysicalObjects((q : Person))"
                      " Components((a : PrimitiveState Low(q))) Constraints((q->P above 0)))\n",
        "Low,IsLow");
    runFrame(1, 1.0, {{7, "Person", 1.0}, {8, "Person", -1.0}});
    EXPECT_EQ(alive(), Lines({"0 Low 1..1 p=7", "1 Low 1..1 p=8", "2 IsLow 1..1 a=0 q=7"}));
    EXPECT_EQ(m_engine.statistics().completions, 0);
    EXPECT_EQ(m_engine.statistics().tested, 4);
}

// The last binding of a name counts, so that the component's confidence is the person's.
TEST_F(CSEngineComposite, MultipliesTheConfidencesOfWhomComponentsAreBoundTo)
{
    RecognitionObserver observer;
    for (RecognitionObserver* watching : {static_cast<RecognitionObserver*>(nullptr), &observer}) {
        m_engine.setObserver(watching);
        m_engine.m_bayesianRatio = 2.0;
        readModels(
            "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
            "PrimitiveEvent(Event, PhysicalObjects((p : Person))"
            " Components((p : PrimitiveState There(p))))\n",
            "There,Event");
        const int frame = watching == nullptr ? 1 : 2;
        runFrame(frame, 1000.0 * frame, {{7, "Person", 0.0}});
        ASSERT_EQ(endedNow().size(), 2U);
        EXPECT_EQ(m_engine.recognisedScenarios().back()->m_confidence, 0.5);
    }
}

TEST_F(CSEngineComposite, StartsAnEventOfOneComponentWithTheFrame)
{
    readModels(
        kLowAndHigh + "PrimitiveEvent(Falls, PhysicalObjects((q : Person))"
                      " Components((a : PrimitiveState Low(q))) Constraints((1 above q->P)))\n",
        "Low,Falls");
    m_engine.m_constProlongation = 1.0;
    runFrame(1, 1.0, {{7, "Person", 1.5}});
    runFrame(2, 2.0, {{7, "Person", 0.5}});
    EXPECT_EQ(alive(), Lines({"0 Low 1..2 p=7", "1 Falls 2..2 a=0 q=7"}));
}

TEST_F(CSEngineComposite, RecognisesAHierarchyInOneFrame)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveEvent(One, PhysicalObjects((p : Person))"
        " Components((c : PrimitiveState There(p))))\n"
        "CompositeState(Two, PhysicalObjects((p : Person))"
        " Components((c : PrimitiveEvent One(p))))\n"
        "CompositeEvent(Three, PhysicalObjects((p : Person))"
        " Components((c : CompositeState Two(p))(d : PrimitiveState There(p)))"
        " Constraints((c->Interval overlap d->Interval)))\n"
        "CompositeEvent(Four, PhysicalObjects((p : Person))"
        " Components((d : PrimitiveState There(p))(c : CompositeState Two(p))))\n",
        "There,One,Two,Three,Four");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_EQ(
        alive(),
        Lines(
            {"0 There 1..1 p=7",
             "1 One 1..1 c=0 p=7",
             "2 Two 1..1 c=1 p=7",
             "3 Four 1..1 c=2 d=0 p=7"}))
        << "There has triggered Three before Two was recognised";
    m_engine.m_constProlongation = 1.0;
    runFrame(2, 2.0, {{7, "Person", 0.0}});
    EXPECT_NE(find("Three"), nullptr);
}

TEST_F(CSEngineComposite, LooksTheLatestRecognitionsUpFirst)
{
    readRise(600.0);
    m_engine.m_constProlongation = 0.0;
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 2.0, {{7, "Person", 1.0}});
    runFrame(3, 3.0, {{7, "Person", 3.0}});
    EXPECT_EQ(
        endedNow(),
        Lines({"2 High 3..3 p=7", "3 Rise 2..3 a=1 b=2 q=7", "4 Rise 1..3 a=0 b=2 q=7"}));
}

TEST_F(CSEngineComposite, TakesTheTriggerFromTheTemporalConstraint)
{
    // Written in the wrong order of time: the constraint says that High comes first.
    readModels(
        kLowAndHigh + "CompositeEvent(Fall, PhysicalObjects((q : Person))"
                      " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(q)))"
                      " Constraints((b->Interval before a->Interval)))\n",
        "Low,High,Fall");
    runFrame(1, 1.0, {{7, "Person", 3.0}});
    runFrame(2, 2.0, {{7, "Person", 1.0}});
    EXPECT_EQ(endedNow(), Lines({"1 Low 2..2 p=7", "2 Fall 1..2 a=1 b=0 q=7"}));
}

TEST_F(CSEngineComposite, UpdatesThePseudoAgentOfWhatIsLookedUp)
{
    readRise(600.0);
    runFrame(1, 1.0, {{7, "Person", 1.0}});
    runFrame(2, 2.0, {{7, "Person", 1.0}});
    runFrame(4, 9.0, {{7, "Person", 3.0}});
    CSAgent& component = *m_engine.components().at(0);
    EXPECT_EQ(component.m_type, "Component");
    EXPECT_EQ(component.m_frameID, 4);
    EXPECT_EQ(toString(component.get("Name").get()), "Low");
    const auto interval = std::dynamic_pointer_cast<CSInterval>(component.get("Interval"));
    ASSERT_NE(interval, nullptr);
    EXPECT_EQ(interval->m_start->m_frameID, 1);
    EXPECT_EQ(interval->m_end->m_frameID, 2);
}

TEST_F(CSEngineComposite, PassesNothingForAnEmptyArgumentList)
{
    readModels(
        kLowAndHigh + "CompositeEvent(Both, PhysicalObjects((q : Person))"
                      " Components((a : PrimitiveState Low())(b : PrimitiveState High()))"
                      " Constraints((a->Interval overlap b->Interval)))\n",
        "Low,High,Both");
    runFrame(1, 1.0, {{7, "Person", 1.0}, {8, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"0 High 1..1 p=8", "1 Low 1..1 p=7", "2 Both 1..1 a=1 b=0"}));
}

TEST_F(CSEngineComposite, MultipliesTheConfidencesOfItsComponents)
{
    readModels(
        "PrimitiveState(Sure, PhysicalObjects((p : Person)) Constraints((sure(p->P))))\n"
        "CompositeEvent(Pair[0.25], PhysicalObjects((p : Person)(q : Person))"
        " Components((a : PrimitiveState Sure(p))(b : PrimitiveState Sure(q))))\n",
        "Sure,Pair");
    runFrame(1, 1.0, {{7, "Person", 0.5}, {8, "Person", 0.5}});
    const auto* pair = find("Pair");
    ASSERT_NE(pair, nullptr);
    EXPECT_EQ(pair->m_confidence, 0.25);
    EXPECT_EQ(endedNow().size(), 4U);
    runFrame(2, 1000.0, {{7, "Person", 0.5}, {8, "Person", 0.375}});
    EXPECT_EQ(endedNow().size(), 2U) << "0.1875 is below the threshold";
}

TEST_F(CSEngineComposite, BindsAnEmptyAgentForWhatTheSubEventLacks)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveEvent(Event, PhysicalObjects((p : Person)(z : Zone))"
        " Components((c : PrimitiveState There(p))))\n"
        "CompositeEvent(Above, PhysicalObjects((p : Person)(z : Zone))"
        " Components((c : PrimitiveEvent Event(p, z))))\n",
        "There,Event,Above");
    m_engine.m_constProlongation = 1.0;
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    runFrame(2, 2.0, {{7, "Person", 0.0}});
    EXPECT_EQ(
        alive(),
        Lines({"0 There 1..2 p=7", "1 Event 1..2 c=0 p=7", "2 Above 1..2 c=1 p=7 z=none"}));
}

TEST_F(CSEngineComposite, ReportsAModelThatContainsItself)
{
    const CapturedStream errors(std::cerr);
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "CompositeEvent(Hen, Components((c : CompositeEvent Egg(p))))\n"
        "CompositeEvent(Egg, Components((c : CompositeEvent Hen(p))(d : PrimitiveState "
        "There(p))))\n",
        "There,Hen,Egg");
    EXPECT_NE(errors.text().find("Warning: "), std::string::npos) << errors.text();
    EXPECT_NE(errors.text().find("Hen"), std::string::npos) << errors.text();
    EXPECT_NE(errors.text().find("Egg"), std::string::npos) << errors.text();
    EXPECT_NE(errors.text().find("It will not be used!\n"), std::string::npos) << errors.text();
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    runFrame(2, 2.0, {{7, "Person", 0.0}});
    for (const std::string& line : alive()) {
        EXPECT_NE(line.find("There"), std::string::npos) << line;
    }
}

TEST_F(CSEngineComposite, BindsThreeComponents)
{
    readModels(
        kLowAndHigh +
            "PrimitiveState(Zero, PhysicalObjects((p : Person)) Constraints((1 above p->P)))\n"
            "CompositeEvent(Three, PhysicalObjects((q : Person))"
            " Components((a : PrimitiveState Zero(q))(b : PrimitiveState Low(q))"
            "(c : PrimitiveState High(q))))\n",
        "Low,High,Zero,Three");
    runFrame(1, 1.0, {{7, "Person", 0.5}});
    runFrame(2, 2.0, {{7, "Person", 1.5}});
    runFrame(3, 3.0, {{7, "Person", 3.0}});
    // Recognised before: 0 Low and 1 Zero in frame 1, 2 Low in frame 2.
    EXPECT_EQ(
        endedNow(),
        Lines({"3 High 3..3 p=7", "4 Three 1..3 a=1 b=2 c=3 q=7", "5 Three 1..3 a=1 b=0 c=3 q=7"}));
}

TEST_F(CSEngineComposite, LeavesOutACandidateWithAnUnboundComponent)
{
    readModels(
        kLowAndHigh +
            "PrimitiveState(Zero, PhysicalObjects((p : Person)) Constraints((1 above p->P)))\n"
            "CompositeEvent(Three, PhysicalObjects((q : Person))"
            " Components((a : PrimitiveState Zero(q))(b : PrimitiveState Low(q))"
            "(c : PrimitiveState High(q))))\n",
        "Low,High,Zero,Three");
    runFrame(1, 1.0, {{7, "Person", 1.5}});
    runFrame(2, 2.0, {{7, "Person", 3.0}});
    EXPECT_EQ(endedNow(), Lines({"1 High 2..2 p=7"}));
    EXPECT_EQ(m_engine.statistics().tested, 3) << "one candidate of each primitive state";
}

TEST_F(CSEngineComposite, FillsLaterComponentsWithDifferentInstances)
{
    readModels(
        kLowAndHigh +
            "CompositeEvent(Three, PhysicalObjects((q : Person)(r : Person)(s : Person))"
            " Components((a : PrimitiveState Low(q))(b : PrimitiveState High(r))"
            "(c : PrimitiveState Low(s)))"
            " Constraints((a->Interval before c->Interval)(b->Interval before c->Interval)))\n",
        "Low,High,Three");
    runFrame(1, 1.0, {{1, "Person", 1.0}, {2, "Person", 3.0}});
    runFrame(2, 2.0, {{3, "Person", 1.0}});
    ASSERT_NE(find("Three"), nullptr);
    EXPECT_EQ(describe(*find("Three")), "3 Three 1..2 a=1 b=0 c=2 q=1 r=2 s=3");
}

} // namespace scenariomatch
