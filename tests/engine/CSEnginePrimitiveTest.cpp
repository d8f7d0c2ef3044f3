#include "tests/engine/EngineFixture.h"

#include <iostream>
#include <stdexcept>

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

class CSEnginePrimitive : public EngineFixture
{
};

const char* const kLow =
    "PrimitiveState(Low, PhysicalObjects((p : Person)) Constraints((!(p->P above 2))))\n";

} // namespace

TEST_F(CSEnginePrimitive, TriesEveryOrderedSelectionOfAgents)
{
    readModels("PrimitiveState(Pair, PhysicalObjects((p : Person)(q : Person)))\n", "Pair");
    runFrame(1, 1.0, {{10, "Person", 0.0}, {20, "Person", 0.0}, {30, "Person", 0.0}});
    EXPECT_EQ(
        alive(),
        Lines(
            {"0 Pair 1..1 p=10 q=20",
             "1 Pair 1..1 p=10 q=30",
             "2 Pair 1..1 p=20 q=10",
             "3 Pair 1..1 p=20 q=30",
             "4 Pair 1..1 p=30 q=10",
             "5 Pair 1..1 p=30 q=20"}));
    EXPECT_EQ(m_engine.statistics().tested, 6);
    EXPECT_EQ(m_engine.statistics().accepted, 6);
    EXPECT_EQ(m_engine.statistics().completions, 0);
}

TEST_F(CSEnginePrimitive, HasNoInstanceWithFewerAgentsThanVariables)
{
    readModels("PrimitiveState(Pair, PhysicalObjects((p : Person)(q : Person)))\n", "Pair");
    runFrame(1, 1.0, {{10, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.statistics().tested, 0);
}

TEST_F(CSEnginePrimitive, SkipsAModelWithAnEmptyGroup)
{
    readModels("PrimitiveState(At, PhysicalObjects((p : Person)(z : Zone)))\n", "At");
    runFrame(1, 1.0, {{10, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.statistics().tested, 0);
}

TEST_F(CSEnginePrimitive, HasNoAgentForATypeThatIsNotDeclared)
{
    readModels("PrimitiveState(Lone, PhysicalObjects((a : Agent)))\n", "Lone");
    runFrame(1, 1.0, {{10, "Agent", 0.0}, {11, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
}

TEST_F(CSEnginePrimitive, HasNoInstanceWithoutPhysicalObjects)
{
    readModels("PrimitiveState(Empty, Alarm((Level : URGENT)))\n", "Empty");
    runFrame(1, 1.0, {{10, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.statistics().tested, 0);
}

TEST_F(CSEnginePrimitive, TakesSubtypesAfterTheTypeItself)
{
    readModels("PrimitiveState(There, PhysicalObjects((p : Person)))\n", "There");
    runFrame(1, 1.0, {{1, "Child", 0.0}, {2, "Person", 0.0}, {3, "Child", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=2", "1 There 1..1 p=1", "2 There 1..1 p=3"}));
}

TEST_F(CSEnginePrimitive, VariesTheGroupOfTheFirstTypeNameSlowest)
{
    readModels("PrimitiveState(At, PhysicalObjects((z : Zone)(p : Person)))\n", "At");
    enterConstant({100, "Zone", 0.0});
    enterConstant({200, "Zone", 0.0});
    runFrame(1, 1.0, {{1, "Person", 0.0}, {2, "Person", 0.0}});
    EXPECT_EQ(
        alive(),
        Lines(
            {"0 At 1..1 p=1 z=100",
             "1 At 1..1 p=1 z=200",
             "2 At 1..1 p=2 z=100",
             "3 At 1..1 p=2 z=200"}));
}

TEST_F(CSEnginePrimitive, BindsOneAgentToVariablesOfTwoTypesItHas)
{
    readModels("PrimitiveState(Two, PhysicalObjects((p : Person)(c : Child)))\n", "Two");
    runFrame(1, 1.0, {{1, "Child", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 Two 1..1 c=1 p=1"}));
}

TEST_F(CSEnginePrimitive, TakesModelsInTheOrderOfTheirNames)
{
    readModels(
        "PrimitiveState(Zebra, PhysicalObjects((p : Person)))\n"
        "PrimitiveState(Ant, PhysicalObjects((p : Person)))\n",
        "Zebra,Ant");
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 Ant 1..1 p=1", "1 Zebra 1..1 p=1"}));
}

TEST_F(CSEnginePrimitive, RecognisesWhatHasNoConstraintWithFullConfidence)
{
    readModels("PrimitiveState(There[1], PhysicalObjects((p : Person)))\n", "There");
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    ASSERT_EQ(alive(), Lines({"0 There 1..1 p=1"}));
    EXPECT_EQ(m_engine.recognisedScenarios().front()->m_confidence, 1.0);
}

TEST_F(CSEnginePrimitive, TestsTheThresholdOfAModelWithoutConstraints)
{
    readModels("PrimitiveState(There[1.5], PhysicalObjects((p : Person)))\n", "There");
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.statistics().tested, 1);
    EXPECT_EQ(m_engine.statistics().accepted, 0);
}

TEST_F(CSEnginePrimitive, StopsAtTheFirstFalseConstraint)
{
    int calls = 0;
    addOperator("counted", [&calls](const auto&) {
        ++calls;
        return std::make_shared<CSBool>(true, 0.5);
    });
    addOperator("!", [](const auto& arguments) {
        const auto value = std::dynamic_pointer_cast<CSBool>(arguments.at(0));
        return std::make_shared<CSBool>(!value->m_value);
    });
    publishOperators();
    readModels(
        "PrimitiveState(Low, PhysicalObjects((p : Person))"
        " Constraints((counted(p->P))(!(p->P above 2))(counted(p->P))))\n",
        "Low");
    runFrame(1, 1.0, {{1, "Person", 3.0}});
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(alive(), Lines());
    runFrame(2, 2.0, {{1, "Person", 1.0}});
    EXPECT_EQ(calls, 3);
    ASSERT_EQ(alive(), Lines({"0 Low 2..2 p=1"}));
    EXPECT_EQ(m_engine.recognisedScenarios().front()->m_confidence, 0.25);
}

TEST_F(CSEnginePrimitive, DropsAModelWhoseNegationIsNotLoaded)
{
    const CapturedStream errors(std::cerr);
    readModels(kLow, "Low");
    EXPECT_EQ(
        errors.text(),
        "Warning: Operator ! is unknown!\n\t in scenario model Low. It will not be used!\n");
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
}

TEST_F(CSEnginePrimitive, MultipliesTheConfidencesOfConstraints)
{
    readModels(
        "PrimitiveState(Sure[0.2], PhysicalObjects((p : Person)(q : Person))"
        " Constraints((sure(p->P))(sure(q->P))))\n",
        "Sure");
    runFrame(1, 1.0, {{1, "Person", 0.5}, {2, "Person", 0.5}});
    ASSERT_EQ(m_engine.recognisedScenarios().size(), 2U);
    EXPECT_EQ(m_engine.recognisedScenarios().front()->m_confidence, 0.25);
    runFrame(2, 10.0, {{1, "Person", 0.5}, {2, "Person", 0.25}});
    EXPECT_EQ(endedNow(), Lines()) << "0.125 is below the threshold";
}

TEST_F(CSEnginePrimitive, TakesAnEmptyOrForeignValueForFalse)
{
    addOperator("nothing", [](const auto&) { return std::shared_ptr<CSBasicType>(); });
    addOperator("number", [](const auto&) { return std::make_shared<CSDouble>(1.0); });
    publishOperators();
    readModels(
        "PrimitiveState(A, PhysicalObjects((p : Person)) Constraints((nothing(p->P))))\n"
        "PrimitiveState(B, PhysicalObjects((p : Person)) Constraints((number(p->P))))\n"
        "PrimitiveState(C, PhysicalObjects((p : Person)) Constraints((word)))\n",
        "A,B,C");
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.statistics().tested, 3);
}

TEST_F(CSEnginePrimitive, TakesAnOperatorThatThrowsForFalseAndReportsItOnce)
{
    addOperator("failing", [](const auto&) -> std::shared_ptr<CSBasicType> {
        throw std::runtime_error("out of order");
    });
    publishOperators();
    Lines reports;
    m_engine.setFailureReport(
        [&reports](const std::string& message) { reports.push_back(message); });
    readModels(
        "PrimitiveState(A, PhysicalObjects((p : Person)) Constraints((failing(p->P))))\n", "A");
    runFrame(1, 1.0, {{1, "Person", 0.0}, {2, "Person", 0.0}});
    runFrame(2, 2.0, {{1, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.operatorFailures(), 3U);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_NE(reports.front().find("failing"), std::string::npos) << reports.front();
}

TEST_F(CSEnginePrimitive, EntersAMissingAttributeIntoTheAgent)
{
    readModels(
        "PrimitiveState(Odd, PhysicalObjects((p : Person)) Constraints((p->Size above 2)))\n",
        "Odd");
    runFrame(1, 1.0, {{1, "Person", 0.0}});
    const auto& attributes = m_engine.agents().at(0)->m_attributes;
    ASSERT_EQ(attributes.count("Size"), 1U);
    EXPECT_EQ(attributes.at("Size"), nullptr);
}

TEST_F(CSEnginePrimitive, HandsTheAgentsOwnValueToOperators)
{
    std::shared_ptr<CSBasicType> seen;
    addOperator("look", [&seen](const auto& arguments) {
        seen = arguments.at(0);
        return std::make_shared<CSBool>(true);
    });
    publishOperators();
    readModels(
        "PrimitiveState(Seen, PhysicalObjects((p : Person)) Constraints((look(p->P))))\n", "Seen");
    runFrame(1, 1.0, {{1, "Person", 0.5}});
    runFrame(2, 2.0, {{1, "Person", 1.5}});
    EXPECT_EQ(seen, m_engine.agents().at(0)->get("P"));
    EXPECT_EQ(toString(seen->m_history.at(1).get()), "0.5");
}

TEST_F(CSEnginePrimitive, SeedsEveryParentInTheSameFrame)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveEvent(First, PhysicalObjects((a : Person))"
        " Components((c : PrimitiveState There(a))))\n"
        "CompositeEvent(Second, PhysicalObjects((b : Person))"
        " Components((d : PrimitiveState There(b))))\n",
        "There,First,Second");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_EQ(
        alive(), Lines({"0 There 1..1 p=7", "1 First 1..1 a=7 c=0", "2 Second 1..1 b=7 d=0"}));
    EXPECT_EQ(m_engine.statistics().tested, 3);
    EXPECT_EQ(m_engine.statistics().accepted, 3);
}

TEST_F(CSEnginePrimitive, FillsThePseudoAgentOfASeed)
{
    readModels(
        "PrimitiveState(Sure, PhysicalObjects((p : Person)) Constraints((sure(p->P))))\n"
        "PrimitiveEvent(Event, PhysicalObjects((p : Person))"
        " Components((c : PrimitiveState Sure(p))))\n",
        "Sure,Event");
    m_engine.m_constProlongation = 5.0;
    runFrame(4, 1.0, {{7, "Person", 0.5}});
    runFrame(5, 2.0, {{7, "Person", 0.75}});
    CSAgent& component = *m_engine.components().at(0);
    EXPECT_EQ(component.m_type, "Component");
    EXPECT_EQ(component.m_confidence, 0.75);
    EXPECT_EQ(component.m_frameID, 5);
    EXPECT_EQ(toString(component.get("Name").get()), "Sure");
    const auto interval = std::dynamic_pointer_cast<CSInterval>(component.get("Interval"));
    ASSERT_NE(interval, nullptr);
    EXPECT_EQ(interval->m_start->m_frameID, 4);
    EXPECT_EQ(interval->m_end, m_engine.currentTime());
    EXPECT_EQ(interval->m_frame, 5);
}

TEST_F(CSEnginePrimitive, HasNoPseudoAgentWithoutAParent)
{
    readModels("PrimitiveState(There, PhysicalObjects((p : Person)))\n", "There");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_TRUE(m_engine.components().empty());
}

TEST_F(CSEnginePrimitive, PassesOverArgumentsThatTheSubModelLacks)
{
    readModels(
        "PrimitiveState(Pair, PhysicalObjects((p : Person)(q : Child)))\n"
        "PrimitiveEvent(Few, PhysicalObjects((a : Person))"
        " Components((c : PrimitiveState Pair(a))))\n"
        "PrimitiveEvent(Many, PhysicalObjects((a : Person))"
        " Components((c : PrimitiveState Pair(a, b, d))))\n",
        "Pair,Few,Many");
    runFrame(1, 1.0, {{7, "Person", 0.0}, {8, "Child", 0.0}});
    EXPECT_EQ(
        alive(),
        Lines(
            {"0 Pair 1..1 p=7 q=8",
             "1 Pair 1..1 p=8 q=8",
             "2 Few 1..1 a=7 c=0",
             "3 Few 1..1 a=8 c=1",
             "4 Many 1..1 a=7 b=8 c=0",
             "5 Many 1..1 a=8 b=8 c=1"}));
}

TEST_F(CSEnginePrimitive, IsNotConfidentInAPrimitiveStateWithComponents)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveState(Odd, PhysicalObjects((p : Person))"
        " Components((c : PrimitiveState There(p))))\n",
        "There,Odd");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=7"}));
    EXPECT_EQ(m_engine.statistics().tested, 2);
}

TEST_F(CSEnginePrimitive, TakesThePrimitiveStateAloneWithoutComponents)
{
    readModels("PrimitiveEvent(Never, PhysicalObjects((p : Person)))\n", "Never");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(m_engine.statistics().tested, 0);
}

TEST_F(CSEnginePrimitive, VerifiesAnInstanceOnItsOwn)
{
    readModels(
        "PrimitiveState(Sure, PhysicalObjects((p : Person))"
        " Constraints((sure(p->P))(p->P above 0)))\n",
        "Sure");
    const auto model = m_engine.m_allScenarios->m_scenariosByKind.at("PrimitiveState").front();
    CSScenarioInstance instance(model, stamp(1, 1.0), stamp(2, 2.0));
    const auto agent = std::make_shared<CSAgent>(1, false);
    agent->set("P", std::make_shared<CSDouble>(0.5), 1);
    instance.m_bindings["p"] = agent;
    EXPECT_TRUE(instance.recognisePrimitiveState());
    EXPECT_EQ(instance.m_confidence, 0.5);
    agent->set("P", std::make_shared<CSDouble>(-0.5), 2);
    EXPECT_FALSE(instance.recognisePrimitiveState());
    EXPECT_EQ(instance.m_confidence, 1.0);
}

TEST_F(CSEnginePrimitive, CopiesAnInstanceWithoutItsText)
{
    const auto agent = std::make_shared<CSAgent>(1, false);
    CSScenarioInstance instance(std::make_shared<CSScenario>(), stamp(1, 1.0), stamp(2, 2.0));
    EXPECT_EQ(instance.m_confidence, 1.0);
    instance.m_bindings["p"] = agent;
    instance.m_text = "text";
    instance.m_id = 8;
    instance.m_confidence = 0.5;
    const CSScenarioInstance copy(instance);
    EXPECT_EQ(copy.m_scenario, instance.m_scenario);
    EXPECT_EQ(copy.m_bindings.at("p"), agent);
    EXPECT_EQ(copy.m_start, instance.m_start);
    EXPECT_EQ(copy.m_end, instance.m_end);
    EXPECT_EQ(copy.m_id, 8);
    EXPECT_EQ(copy.m_confidence, 0.5);
    EXPECT_EQ(copy.m_text, "");
}

} // namespace scenariomatch
