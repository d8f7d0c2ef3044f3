#include "tests/engine/EngineFixture.h"

#include <iostream>
#include <limits>

namespace scenariomatch
{

namespace
{

using Lines = std::vector<std::string>;

class CSEngineInference : public EngineFixture
{
protected:
    void readThere(const std::string& threshold = "")
    {
        readModels(
            "PrimitiveState(There" + threshold + ", PhysicalObjects((p : Person)))\n", "There");
    }

    Lines firstLevel() const
    {
        Lines lines;
        for (const auto& [name, instances] : m_engine.firstLevelCandidates()) {
            for (const auto& instance : instances) {
                lines.push_back(describe(*instance));
            }
        }
        return lines;
    }

    std::shared_ptr<CSScenario> model(const std::string& kind = "PrimitiveState") const
    {
        return m_engine.m_allScenarios->m_scenariosByKind.at(kind).front();
    }
};

std::shared_ptr<CSScenarioInstance> endingAt(double seconds, double milliseconds)
{
    auto instance = std::make_shared<CSScenarioInstance>();
    instance->m_end = std::make_shared<CSTimeStamp>(1, seconds, milliseconds);
    return instance;
}

} // namespace

TEST_F(CSEngineInference, ExtendsARecognitionWithinTheProlongation)
{
    readThere();
    m_engine.m_constProlongation = 5.0;
    runFrame(1, 10.0, {{7, "Person", 0.0}});
    runFrame(2, 12.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..2 p=7"}));
}

TEST_F(CSEngineInference, StartsANewInstanceBeyondTheProlongation)
{
    readThere();
    m_engine.m_constProlongation = 1.0;
    runFrame(1, 10.0, {{7, "Person", 0.0}});
    runFrame(2, 12.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"1 There 2..2 p=7", "0 There 1..1 p=7"}));
}

TEST_F(CSEngineInference, ExtendsAcrossAGapUpToTheProlongation)
{
    readThere();
    m_engine.m_constProlongation = 2.0;
    runFrame(1, 10.0, {{7, "Person", 0.0}});
    runFrame(2, 11.0, {});
    runFrame(3, 12.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..3 p=7"}));
}

TEST_F(CSEngineInference, ExtendsNothingWithoutProlongation)
{
    readThere();
    m_engine.m_constProlongation = 0.0;
    runFrame(1, 10.0, {{7, "Person", 0.0}});
    runFrame(2, 10.5, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"1 There 2..2 p=7", "0 There 1..1 p=7"}));
    m_engine.m_constProlongation = -1.0;
    runFrame(3, 10.5, {{7, "Person", 0.0}});
    EXPECT_EQ(alive().size(), 3U);
}

TEST_F(CSEngineInference, NeverExtendsWhatWasRecognisedAtThisTime)
{
    readThere();
    m_engine.m_constProlongation = 5.0;
    runFrame(1, 10.0, {{7, "Person", 0.0}});
    // The next frame has the same clock.
    runFrame(2, 10.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=7", "1 There 2..2 p=7"}));
}

TEST_F(CSEngineInference, RecognisesTwiceInOneFrame)
{
    // Two models of one name have the same participants.
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n",
        "There");
    m_engine.m_constProlongation = 5.0;
    runFrame(1, 10.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=7", "1 There 1..1 p=7"}));
    runFrame(2, 11.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..2 p=7", "1 There 1..2 p=7"}));
}

TEST_F(CSEngineInference, TellsParticipantsApart)
{
    readThere();
    m_engine.m_constProlongation = 5.0;
    runFrame(1, 10.0, {{7, "Person", 0.0}});
    runFrame(2, 11.0, {{8, "Person", 0.0}});
    EXPECT_EQ(alive(), Lines({"1 There 2..2 p=8", "0 There 1..1 p=7"}));
}

TEST_F(CSEngineInference, KeepsStartBindingsAndIdOfAnExtendedInstance)
{
    readModels(
        "PrimitiveState(Sure, PhysicalObjects((p : Person)) Constraints((sure(p->P))))\n", "Sure");
    m_engine.m_constProlongation = 5.0;
    runFrame(1, 10.0, {{7, "Person", 0.5}});
    const auto instance = m_engine.recognisedScenarios().front();
    const auto start = instance->m_start;
    runFrame(2, 12.0, {{7, "Person", 0.75}});
    EXPECT_EQ(m_engine.recognisedScenarios().front(), instance);
    EXPECT_EQ(instance->m_start, start);
    EXPECT_EQ(instance->m_end, m_engine.currentTime());
    EXPECT_EQ(instance->m_confidence, 0.75);
    EXPECT_EQ(instance->m_id, 0);
}

TEST_F(CSEngineInference, AddsARecognitionToTheList)
{
    readThere();
    m_engine.setCurrentTime(stamp(3, 3.0), 3);
    const auto agent = std::make_shared<CSAgent>(9, false);
    auto instance = std::make_shared<CSScenarioInstance>(model(), stamp(4, 4.0), stamp(2, 2.0));
    instance->m_bindings["p"] = agent;
    std::shared_ptr<CSTimeStamp> start;
    EXPECT_EQ(m_engine.addRecognisedEvent(instance, start), 0);
    EXPECT_EQ(start, m_engine.currentTime()) << "a start that is not earlier becomes now";
    EXPECT_EQ(instance->m_start, m_engine.currentTime());
    EXPECT_EQ(instance->m_end, m_engine.currentTime());
    EXPECT_EQ(agent->m_instances, (std::map<int, int>{{0, 1}}));
    EXPECT_EQ(alive(), Lines({"0 There 3..3 p=9"}));
}

TEST_F(CSEngineInference, AddsAnObjectThatIsInTheListASecondTimeAsAnotherInstance)
{
    readThere();
    m_engine.setCurrentTime(stamp(3, 3.0), 3);
    const auto instance =
        std::make_shared<CSScenarioInstance>(model(), stamp(3, 3.0), stamp(3, 3.0));
    instance->m_bindings["p"] = std::make_shared<CSAgent>(9, false);
    std::shared_ptr<CSTimeStamp> start;
    EXPECT_EQ(m_engine.addRecognisedEvent(instance, start), 0);
    EXPECT_EQ(m_engine.addRecognisedEvent(instance, start), 1);
    m_engine.sortRecognisedScenarios();
    EXPECT_EQ(alive(), Lines({"0 There 3..3 p=9", "1 There 3..3 p=9"}));
}

TEST_F(CSEngineInference, RecognisesNothingBeforeTheFirstTime)
{
    readThere();
    CSEngine::InstancesByModel none;
    const auto instance = std::make_shared<CSScenarioInstance>(model(), nullptr, nullptr);
    std::shared_ptr<CSTimeStamp> start = stamp(1, 1.0);
    EXPECT_EQ(m_engine.addRecognisedEvent(instance, start), -1);
    EXPECT_EQ(start, nullptr);
    m_engine.createComplexEvent(none, {{"There", {instance}}});
    m_engine.recogniseComplexEvent({{"There", {instance}}}, none);
    m_engine.infer();
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(alive(), Lines({}));
}

TEST_F(CSEngineInference, EndsTheWalkAtWhatEndedNowWhenTheProlongationIsNegative)
{
    readThere();
    m_engine.m_constProlongation = -1.0;
    runFrame(1, 10.0, {{1, "Person", 1.0}, {2, "Person", 1.0}});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=1", "1 There 1..1 p=2"}));
    // The clock goes back by two seconds: the first is extended, which then ends the walk for the
    // second.
    runFrame(2, 8.0, {{1, "Person", 1.0}, {2, "Person", 1.0}});
    EXPECT_EQ(alive(), Lines({"1 There 1..1 p=2", "0 There 1..2 p=1", "2 There 2..2 p=2"}));
}

TEST_F(CSEngineInference, KeepsTheEarlierStartOfANewInstance)
{
    readThere();
    m_engine.setCurrentTime(stamp(3, 3.0), 3);
    const auto earlier = stamp(1, 1.0);
    const auto instance = std::make_shared<CSScenarioInstance>(model(), earlier, stamp(2, 2.0));
    std::shared_ptr<CSTimeStamp> start;
    m_engine.addRecognisedEvent(instance, start);
    EXPECT_EQ(start, earlier);
    EXPECT_EQ(instance->m_start, earlier);
    EXPECT_EQ(instance->m_end, m_engine.currentTime());
}

TEST_F(CSEngineInference, HandsOutTheStartOfTheInstanceExtended)
{
    readThere();
    m_engine.m_constProlongation = 5.0;
    m_engine.setCurrentTime(stamp(1, 1.0), 1);
    const auto agent = std::make_shared<CSAgent>(9, false);
    const auto first = std::make_shared<CSScenarioInstance>(model(), stamp(1, 1.0), stamp(1, 1.0));
    first->m_bindings["p"] = agent;
    std::shared_ptr<CSTimeStamp> start;
    m_engine.addRecognisedEvent(first, start);
    m_engine.setCurrentTime(stamp(2, 2.0), 2);
    const auto second = std::make_shared<CSScenarioInstance>(*first);
    second->m_confidence = 0.5;
    EXPECT_EQ(m_engine.addRecognisedEvent(second, start), 0);
    EXPECT_EQ(start, first->m_start);
    EXPECT_EQ(first->m_end, m_engine.currentTime());
    EXPECT_EQ(first->m_confidence, 0.5);
    EXPECT_EQ(m_engine.recognisedScenarios().size(), 1U);
}

TEST_F(CSEngineInference, RemovesAnInstanceOlderThanTheTimeSearch)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveEvent(Event, PhysicalObjects((p : Person))"
        " Components((c : PrimitiveState There(p))))\n",
        "There,Event");
    m_engine.setConstTimeSearch(600.0);
    runFrame(1, 0.0, {{7, "Person", 0.0}});
    const auto agent = m_engine.agents().at(0);
    EXPECT_EQ(agent->m_instances.size(), 2U);
    runFrame(2, 600.0, {});
    EXPECT_EQ(alive(), Lines({"0 There 1..1 p=7", "1 Event 1..1 c=0 p=7"}));
    EXPECT_EQ(m_engine.components().size(), 1U);
    runFrame(3, 601.0, {});
    EXPECT_EQ(alive(), Lines());
    EXPECT_TRUE(m_engine.components().empty());
    EXPECT_TRUE(agent->m_instances.empty());
}

TEST_F(CSEngineInference, ComparesTheConfidenceWithTheThreshold)
{
    readThere("[0.5]");
    auto instance = std::make_shared<CSScenarioInstance>(model(), stamp(1, 1.0), stamp(1, 1.0));
    instance->m_confidence = 0.5;
    EXPECT_TRUE(m_engine.isConfident(instance));
    readThere("[0.51]");
    instance = std::make_shared<CSScenarioInstance>(model(), stamp(1, 1.0), stamp(1, 1.0));
    instance->m_confidence = 0.5;
    EXPECT_FALSE(m_engine.isConfident(instance));
}

TEST_F(CSEngineInference, DividesTheConfidenceByTheBayesianRatio)
{
    readThere("[0.3]");
    m_engine.m_bayesianRatio = 2.0;
    const auto instance =
        std::make_shared<CSScenarioInstance>(model(), stamp(1, 1.0), stamp(1, 1.0));
    instance->m_confidence = 0.5;
    EXPECT_FALSE(m_engine.isConfident(instance));
    EXPECT_EQ(instance->m_confidence, 0.25);
}

TEST_F(CSEngineInference, LetsAConfidenceThatIsNoNumberPass)
{
    readThere("[0.9]");
    const auto instance =
        std::make_shared<CSScenarioInstance>(model(), stamp(1, 1.0), stamp(1, 1.0));
    instance->m_confidence = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(m_engine.isConfident(instance));
}

TEST_F(CSEngineInference, MultipliesTheConfidencesOfComponents)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "CompositeEvent(Both, Components((a : PrimitiveState There(p))"
        "(b : PrimitiveState There(p))))\n",
        "There,Both");
    const auto instance =
        std::make_shared<CSScenarioInstance>(model("CompositeEvent"), stamp(1, 1.0), stamp(1, 1.0));
    instance->m_bindings["a"] = std::make_shared<CSAgent>(1, false);
    instance->m_bindings["a"]->m_confidence = 0.5;
    instance->m_bindings["b"] = std::make_shared<CSAgent>(2, false);
    instance->m_bindings["b"]->m_confidence = 0.5;
    EXPECT_TRUE(m_engine.isConfident(instance));
    EXPECT_EQ(instance->m_confidence, 0.25);
}

TEST_F(CSEngineInference, IsNotConfidentWithAnUnboundComponent)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "CompositeEvent(Both, Components((a : PrimitiveState There(p))"
        "(b : PrimitiveState There(p))))\n",
        "There,Both");
    const auto instance =
        std::make_shared<CSScenarioInstance>(model("CompositeEvent"), stamp(1, 1.0), stamp(1, 1.0));
    instance->m_bindings["a"] = std::make_shared<CSAgent>(1, false);
    EXPECT_FALSE(m_engine.isConfident(instance));
    instance->m_bindings["b"] = nullptr;
    EXPECT_FALSE(m_engine.isConfident(instance));
}

const std::string kLevels = "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
                            "PrimitiveEvent(Event, PhysicalObjects((p : Person))"
                            " Components((c : PrimitiveState There(p))))\n"
                            "CompositeEvent(Above, PhysicalObjects((p : Person))"
                            " Components((c : PrimitiveEvent Event(p))))\n";

TEST_F(CSEngineInference, KeepsTheFirstLevelCandidatesOfAnEarlierFrame)
{
    readModels(kLevels, "There,Event,Above");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive().size(), 3U);
    EXPECT_EQ(firstLevel(), Lines({"1 Event 1..1 c=0 p=7"}));
    runFrame(2, 2.0, {});
    EXPECT_EQ(m_engine.statistics().tested, 0);
    EXPECT_EQ(firstLevel(), Lines({"1 Event 1..1 c=0 p=7"}));
}

TEST_F(CSEngineInference, KeepsTheFirstLevelCandidatesOfWhatIsForgottenBeforeTheyAreAskedFor)
{
    readModels(kLevels, "There,Event,Above");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    m_engine.setConstTimeSearch(5.0);
    runFrame(2, 2.0, {{7, "Person", 0.0}, {8, "Person", 0.0}});
    runFrame(3, 100.0, {});
    EXPECT_EQ(alive(), Lines());
    EXPECT_EQ(firstLevel(), Lines({"5 Event 2..2 c=3 p=7", "6 Event 2..2 c=4 p=8"}));
}

TEST_F(CSEngineInference, GivesFirstLevelCandidatesThatExtendSomethingNoNumber)
{
    readModels(kLevels, "There,Event,Above");
    m_engine.m_constProlongation = 1.0;
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    runFrame(2, 2.0, {{7, "Person", 0.0}});
    EXPECT_EQ(alive().size(), 3U);
    EXPECT_EQ(firstLevel(), Lines({"0 Event 2..2 c=0 p=7"}));
}

TEST_F(CSEngineInference, KeepsTheFirstLevelCandidatesWhenModelsAreReadAnew)
{
    readModels(kLevels, "There,Event,Above");
    runFrame(1, 1.0, {{7, "Person", 0.0}});
    readThere();
    runFrame(2, 200.0, {});
    EXPECT_EQ(firstLevel(), Lines({"1 Event 1..1 c=0 p=7"}));
}

TEST_F(CSEngineInference, SeedsWithInstancesThatDoNotBindAllObjectsOfTheirModel)
{
    readModels(
        "PrimitiveState(There, PhysicalObjects((p : Person)))\n"
        "PrimitiveEvent(Event, PhysicalObjects((a : Person)(b : Person)(p : Person))"
        " Components((c : PrimitiveState There(p))))\n"
        "CompositeEvent(Above, PhysicalObjects((x : Person)(y : Person))"
        " Components((c : PrimitiveEvent Event(x, , y))))\n",
        "There,Event,Above");
    m_engine.m_constProlongation = 1.0;
    for (int frame = 1; frame <= 3; ++frame) {
        runFrame(frame, frame, {{7, "Person", 0.0}});
        EXPECT_EQ(
            alive(),
            Lines(
                {"0 There 1.." + std::to_string(frame) + " p=7",
                 "1 Event 1.." + std::to_string(frame) + " c=0 p=7",
                 "2 Above 1.." + std::to_string(frame) + " c=1 x=none y=7"}));
    }
}

TEST_F(CSEngineInference, PutsTheLatestEndFirstAndKeepsTheOrderOtherwise)
{
    readThere();
    m_engine.m_constProlongation = 1.0;
    runFrame(1, 1.0, {{1, "Person", 0.0}, {2, "Person", 0.0}, {3, "Person", 0.0}});
    runFrame(2, 2.0, {{2, "Person", 0.0}, {4, "Person", 0.0}});
    EXPECT_EQ(
        alive(),
        Lines({"1 There 1..2 p=2", "3 There 2..2 p=4", "0 There 1..1 p=1", "2 There 1..1 p=3"}));
    runFrame(3, 3.0, {{3, "Person", 0.0}});
    EXPECT_EQ(
        alive(),
        Lines(
            {"4 There 3..3 p=3",
             "1 There 1..2 p=2",
             "3 There 2..2 p=4",
             "0 There 1..1 p=1",
             "2 There 1..1 p=3"}));
}

TEST_F(CSEngineInference, OrdersByEndSecondsThenMilliseconds)
{
    EXPECT_TRUE(compare_scenario_end(endingAt(2.0, 0.0), endingAt(1.0, 999.0)));
    EXPECT_FALSE(compare_scenario_end(endingAt(1.0, 999.0), endingAt(2.0, 0.0)));
    EXPECT_TRUE(compare_scenario_end(endingAt(1.0, 2.0), endingAt(1.0, 1.0)));
    EXPECT_FALSE(compare_scenario_end(endingAt(1.0, 1.0), endingAt(1.0, 1.0)));
}

TEST_F(CSEngineInference, PrintsWhatWasRecognisedInTheFrame)
{
    readModels(
        "PrimitiveState(Low, PhysicalObjects((p : Person)(z : Zone)) Constraints((sure(z->P))))\n"
        "PrimitiveEvent(Event, PhysicalObjects((p : Person))"
        " Components((c : PrimitiveState Low(p, z))))\n",
        "Low,Event");
    enterConstant({30, "Zone", 0.25});
    m_engine.m_constProlongation = 5.0;
    runFrame(4, 1.0, {{7, "Person", 0.0}});
    runFrame(5, 2.0, {{8, "Person", 0.0}});
    {
        const CapturedStream output(std::cout);
        m_engine.printRecognisedScenario("");
        EXPECT_EQ(
            output.text(),
            "2 Low [5 5] [Conf:0.25]\n\tp 8 | z 30 | \n"
            "3 Event [5 5] [Conf:0.25]\n\tc 2 | p 8 | z 30 | \n");
    }
    {
        const CapturedStream output(std::cout);
        m_engine.printRecognisedScenario("PrimitiveEvent");
        EXPECT_EQ(output.text(), "3 Event [5 5] [Conf:0.25]\n\tc 2 | p 8 | z 30 | \n");
    }
    {
        const CapturedStream output(std::cout);
        m_engine.printRecognisedScenario("CompositeState");
        EXPECT_EQ(output.text(), "");
    }
}

TEST_F(CSEngineInference, PrintsAllThatIsAlive)
{
    readThere();
    runFrame(4, 1.0, {{7, "Person", 0.0}});
    runFrame(5, 2.0, {{8, "Person", 0.0}});
    const CapturedStream output(std::cout);
    m_engine.printAllRecognisedScenario();
    EXPECT_EQ(output.text(), "1 There 5 5 [1]\n\tp 8 | \n0 There 4 4 [1]\n\tp 7 | \n");
}

TEST_F(CSEngineInference, PrintsAnEmptyAgentAsMinusOne)
{
    readThere();
    m_engine.setCurrentTime(stamp(3, 3.0), 3);
    const auto instance =
        std::make_shared<CSScenarioInstance>(model(), stamp(3, 3.0), stamp(3, 3.0));
    instance->m_bindings["p"] = nullptr;
    std::shared_ptr<CSTimeStamp> start;
    m_engine.addRecognisedEvent(instance, start);
    const CapturedStream output(std::cout);
    m_engine.printAllRecognisedScenario();
    EXPECT_EQ(output.text(), "0 There 3 3 [1]\n\tp -1 | \n");
}

TEST_F(CSEngineInference, StoresThresholdsAndLevels)
{
    m_engine.setThresholdByEventType("PrimitiveState", 0.5);
    m_engine.setThresholdByEventType("PrimitiveState", 0.75);
    m_engine.setLevelAlarm("URGENT", 1);
    m_engine.setLevelAlarm("URGENT", 4);
    EXPECT_EQ(
        m_engine.m_thresholdByEventType, (std::map<std::string, double>{{"PrimitiveState", 0.75}}));
    EXPECT_EQ(m_engine.m_levelAlarm, (std::map<std::string, int>{{"URGENT", 4}}));
}

} // namespace scenariomatch
