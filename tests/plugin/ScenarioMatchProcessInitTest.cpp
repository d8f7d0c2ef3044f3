#include "ProcessFixture.h"
#include "scenario/CSScenario.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kPresent = "PrimitiveState(Present, PhysicalObjects((p : Person)))";
constexpr const char* kZone = "<Element kind='zone' name='Entrance' shape='polygon'>"
                              "<Vertex x='0' y='0' z='0'/><Vertex x='4' y='0' z='3'/>"
                              "<Vertex x='2' y='6' z='0'/></Element>";
constexpr const char* kCamera = "<Element kind='camera' name='Ceiling'/>";
constexpr const char* kWall = "<Element kind='wall' name='North' shape='polygon' height='2.5'>"
                              "<Vertex x='0' y='9' z='1'/><Vertex x='5' y='5'/>"
                              "<Vertex x='8' y='1' z='3'/></Element>";

class ScenarioMatchProcessInit : public scenariomatch::ProcessFixture
{
protected:
    std::string constant(int hostId, const std::string& name) const
    {
        return attribute(hostId, true, name);
    }
};

} // namespace

TEST_F(ScenarioMatchProcessInit, TellsEveryStepOnStandardOutput)
{
    ASSERT_TRUE(start(
        {.models = kPresent,
         .usedModels = "Present",
         .context = std::string(kZone) + kCamera,
         .parameters = "OperatorPluginPath: \"/nowhere\"\n"
                       "scenarioRecognitionOperatorDescription: \"ops.txt\"\n"}));
    EXPECT_EQ(
        m_output,
        "\nScenarioMatchProcess::init()OperatorPath:/nowhere\n"
        "\nreadOperatorAgent:" +
            path("ops.txt") + "readAllObjects:" + path("objects.txt") +
            "Models:" + path("engine.txt") + "\nFile:" + path("context.xml") +
            "Context has been set\n\nzone\nEntrance\ncamera\nCeiling\n");
}

TEST_F(ScenarioMatchProcessInit, TellsMoreWithDebug)
{
    ASSERT_TRUE(start(
        {.models = kPresent,
         .usedModels = "Present",
         .context = std::string(kZone) + kWall,
         .parameters = "debug: \"true\"\nOperatorPluginPath: \"/nowhere\"\n"}));
    EXPECT_THAT(
        m_output,
        HasSubstr("OperatorPath:/nowhere\n_________________________________________\n"
                  "Debug mode On: Extendable TRX\nBegin Init()\n\nreadOperatorAgent:"));
    EXPECT_THAT(m_output, HasSubstr("Physical Objects: "));
    EXPECT_THAT(m_output, HasSubstr("Initialisation: Read the context\n\nFile:"));
    EXPECT_THAT(
        m_output,
        HasSubstr("wall\nNorth\nAgents 0 1 \nEnd Init()\n"
                  "_________________________________________\n"));
    EXPECT_TRUE(m_process->engine()->m_debug);
}

TEST_F(ScenarioMatchProcessInit, WorksWithoutAnyFile)
{
    EXPECT_TRUE(init());
    EXPECT_EQ(
        m_output,
        "\nScenarioMatchProcess::init()\nConfiguration file is not found. Assuming Default Values\n"
        "OperatorPath:\n\nreadOperatorAgent:readAllObjects:Models:\nFile:"
        "ERROR reading the Context XML file.Check the filename!\n");
    EXPECT_EQ(m_errors, "");
    EXPECT_THAT(m_log, IsEmpty());
    frame(1, 0.0, {person(1)});
    EXPECT_EQ(constant(0, "Name"), "Scene0");
}

TEST_F(ScenarioMatchProcessInit, HandsParametersToTheEngine)
{
    m_process->setParamBayesianRatio(2.0);
    m_process->setParamConfidenceCompositeEvent(0.25);
    ASSERT_TRUE(start(
        {.parameters = "OperatorPluginPath: \"/nowhere\"\nconstProlongation: 7\n"
                       "constTimeSearch: 90\nhistorySize: 4\n"}));
    const CSEngine& engine = *m_process->engine();
    EXPECT_EQ(engine.m_operatorPluginPath, "/nowhere");
    EXPECT_FALSE(engine.m_debug);
    EXPECT_EQ(engine.m_bayesianRatio, 2.0);
    EXPECT_EQ(engine.m_constProlongation, 7.0);
    EXPECT_EQ(CSScenarioInstance::m_const_TimeSearch, 90.0);
    EXPECT_EQ(CSEngine::m_historySize, 4);
    EXPECT_EQ(CSAgent::m_historySize, 4);
    EXPECT_EQ(
        engine.m_thresholdByEventType,
        (std::map<std::string, double>{
            {"PrimitiveState", 0.1},
            {"PrimitiveEvent", 0.7},
            {"CompositeState", 0.7},
            {"CompositeEvent", 0.25}}));
    EXPECT_EQ(
        engine.m_levelAlarm,
        (std::map<std::string, int>{
            {"NOTURGENT", 0}, {"URGENT", 1}, {"VERYURGENT", 2}, {"SUPERURGENT", 3}}));
}

TEST_F(ScenarioMatchProcessInit, LoadsOperatorPluginsOfTheDirectory)
{
    ASSERT_TRUE(
        start({.parameters = "OperatorPluginPath: \"" SCENARIOMATCH_TEST_OPERATORS "\"\n"}));
    EXPECT_EQ(m_process->engine()->operators().count("below"), 1U);
}

TEST_F(ScenarioMatchProcessInit, EntersAnUnknownAlarmLevelAsZero)
{
    ASSERT_TRUE(start({.parameters = "XML3AlarmLevel: \"LOUD\"\n"}));
    const auto& levels = m_process->engine()->m_levelAlarm;
    ASSERT_EQ(levels.count("LOUD"), 1U);
    EXPECT_EQ(levels.at("LOUD"), 0);
}

TEST_F(ScenarioMatchProcessInit, ReadsModelsAndObjectTypes)
{
    ASSERT_TRUE(start({.models = kPresent, .usedModels = "Present"}));
    EXPECT_EQ(m_process->counters().models, 1U);
    EXPECT_EQ(CSAgent::m_allObjectTypes.count("Person"), 1U);
    frame(1, 0.0, {person(1)});
    EXPECT_EQ(m_process->getCurrentFrameEvents().size(), 1);
}

TEST_F(ScenarioMatchProcessInit, AppliesDeclaredAgentOperators)
{
    write(
        {.models = "PrimitiveState(Tall, PhysicalObjects((p : Person)) Constraints((tall(p))))",
         .usedModels = "Tall",
         .parameters = "scenarioRecognitionOperatorDescription: \"ops.txt\"\n"});
    writeFile("ops.txt", "operator tall(a : Person) { a->Height above 1.5 }\n");
    ASSERT_TRUE(init());
    frame(1, 0.0, {person(1, 1.8F), person(2, 1.2F)});
    const auto events = m_process->getCurrentFrameEvents();
    ASSERT_EQ(events.size(), 1);
    EXPECT_THAT(events.front()->getInvolvedActorIds(), ElementsAre(1));
}

TEST_F(ScenarioMatchProcessInit, MakesConstantAgentsOfZonesAndWalls)
{
    ASSERT_TRUE(start({.context = std::string(kZone) + kWall}));
    EXPECT_EQ(constant(0, "Type"), "Zone");
    EXPECT_EQ(constant(0, "Name"), "Entrance");
    EXPECT_EQ(constant(0, "Vertices"), "0 0 0  4 0 3  2 6 0  ");
    EXPECT_EQ(constant(0, "Position"), "2 2 1 ");
    EXPECT_EQ(constant(0, "Height"), "(none)");
    EXPECT_EQ(constant(1, "Type"), "Wall");
    EXPECT_EQ(constant(1, "Name"), "North");
    EXPECT_EQ(constant(1, "StartPoint"), "0 9 1 ");
    EXPECT_EQ(constant(1, "EndPoint"), "8 1 3 ");
    EXPECT_EQ(constant(1, "Position"), "4 5 2 ");
    EXPECT_EQ(constant(1, "Height"), "2.5");
    EXPECT_EQ(constant(1, "Vertices"), "(none)");
}

TEST_F(ScenarioMatchProcessInit, MakesConstantAgentsOfEquipment)
{
    ASSERT_TRUE(start(
        {.context = "<Element kind='object' name='Desk' shape='circle' height='1.1' radius='0.6'>"
                    "<Vertex x='2' y='3' z='1'/><Vertex x='9' y='9'/></Element>"
                    "<Element kind='object' name='Stand' shape='polygon' height='0.5'>"
                    "<Vertex x='0' y='0'/><Vertex x='3' y='0'/><Vertex x='0' y='3'/></Element>"}));
    EXPECT_EQ(constant(0, "Type"), "Equipment");
    EXPECT_EQ(constant(0, "Name"), "Desk");
    EXPECT_EQ(constant(0, "Height"), "1.1");
    EXPECT_EQ(constant(0, "Radius"), "0.6");
    EXPECT_EQ(constant(0, "Position"), "2 3 1 ");
    EXPECT_EQ(constant(0, "Vertices"), "(none)");
    EXPECT_EQ(constant(1, "Type"), "Equipment");
    EXPECT_EQ(constant(1, "Name"), "Stand");
    EXPECT_EQ(constant(1, "Vertices"), "0 0 0  3 0 0  0 3 0  ");
    EXPECT_EQ(constant(1, "Position"), "1 1 0 ");
    EXPECT_EQ(constant(1, "Height"), "0.5");
    EXPECT_EQ(constant(1, "Radius"), "(none)");
}

TEST_F(ScenarioMatchProcessInit, LetsACameraShareTheNextElementsIdentifier)
{
    ASSERT_TRUE(start({.context = std::string(kZone) + kCamera + kWall}));
    ASSERT_EQ(m_process->engine()->agents().size(), 2U);
    EXPECT_EQ(constant(0, "Type"), "Zone");
    EXPECT_EQ(constant(1, "Type"), "Wall");
    EXPECT_EQ(constant(1, "Name"), "North");
    frame(1, 0.0, {});
    EXPECT_EQ(constant(3, "Type"), "Scene");
    EXPECT_THAT(m_output, HasSubstr("Scene ID:3"));
}

TEST_F(ScenarioMatchProcessInit, LeavesACameraAtTheEndAnAgentOfItsOwn)
{
    ASSERT_TRUE(start({.context = std::string(kZone) + kWall + kCamera}));
    EXPECT_EQ(m_process->engine()->agents().size(), 3U);
    EXPECT_EQ(constant(2, "Type"), "Camera");
    EXPECT_EQ(constant(2, "Name"), "Cam");
}

TEST_F(ScenarioMatchProcessInit, TakesUnknownShapesForCameras)
{
    ASSERT_TRUE(start(
        {.context = "<Element kind='zone' name='Round' shape='circle'/>"
                    "<Element kind='wall' name='Odd' shape='circle'/>"
                    "<Element kind='object' name='Cube' shape='cube'/>"}));
    EXPECT_EQ(m_process->engine()->agents().size(), 1U);
    EXPECT_EQ(constant(0, "Type"), "Camera");
    EXPECT_EQ(constant(0, "Name"), "Cam");
    EXPECT_EQ(m_process->getListContextualElements().size(), 3U);
}

TEST_F(ScenarioMatchProcessInit, TakesContextElementsFromElsewhere)
{
    m_process->setListContextualElements({ContextElement()});
    EXPECT_EQ(m_process->getListContextualElements().size(), 1U);
    frame(1, 0.0, {});
    EXPECT_THAT(m_output, HasSubstr("Scene ID:1"));
}

TEST_F(ScenarioMatchProcessInit, GoesOnWithoutAContextThatCannotBeRead)
{
    write({.context = "<Element kind='camera'"});
    ASSERT_TRUE(init());
    EXPECT_THAT(
        m_output,
        HasSubstr(
            "\nFile:" + path("context.xml") +
            "ERROR reading the Context XML file.Check the filename!\n"));
    EXPECT_TRUE(m_process->getListContextualElements().empty());
    ASSERT_EQ(m_log.size(), 1U);
    EXPECT_THAT(m_log[0], HasSubstr("17 " + path("context.xml") + ":1:"));
    frame(1, 0.0, {});
    EXPECT_EQ(constant(0, "Type"), "Scene");
}

TEST_F(ScenarioMatchProcessInit, LogsContextElementsThatAreLeftOut)
{
    ASSERT_TRUE(
        start({.context = std::string("<Element kind='zone' name='Z' shape='polygon'/>") + kWall}));
    EXPECT_THAT(
        m_log,
        ElementsAre(
            "17 " + path("context.xml") + ":1:10: the element \"Z\" has 0 vertices and needs 3"));
    EXPECT_EQ(m_process->getListContextualElements().size(), 1U);
}

TEST_F(ScenarioMatchProcessInit, ReturnsFalseWhereATextBreaksOff)
{
    write({.models = kPresent, .usedModels = "Present"});
    writeFile("settings.txt", "Engine {test,\nUsedModels(\n");
    writeFile("engine.txt", "List {test,\nincludeEngine(\n}\n");
    EXPECT_FALSE(init());
    ASSERT_EQ(m_log.size(), 1U);
    EXPECT_THAT(
        m_log[0],
        HasSubstr(
            "17 " + path("engine.txt") + ": the text breaks off where something must follow ("));
}

TEST_F(ScenarioMatchProcessInit, DropsFaultyModelsAndGoesOn)
{
    ASSERT_TRUE(start(
        {.models =
             std::string(kPresent) +
             "\nPrimitiveState(Odd, PhysicalObjects((p : Person)) Constraints((p->Height past 1)))",
         .usedModels = "Present,Odd,Nothing"}));
    EXPECT_THAT(m_errors, HasSubstr("Warning: the scenario model: Nothing does not exist!\n"));
    EXPECT_THAT(m_errors, HasSubstr("Warning: Operator past is unknown!\n"));
    EXPECT_EQ(m_process->counters().models, 1U);
}

TEST_F(ScenarioMatchProcessInit, StartsTheEventFile)
{
    const std::string name = path("events.xml");
    writeFile("events.xml", "old");
    ASSERT_TRUE(start({.parameters = "saveXML3File: \"true\"\nXML3FileName: \"" + name + "\"\n"}));
    EXPECT_EQ(
        readFile("events.xml"),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Tarvos version=\"3.00\">\n");
}

TEST_F(ScenarioMatchProcessInit, LeavesTheEventFileAloneWhenItIsNotSaved)
{
    const std::string name = path("events.xml");
    ASSERT_TRUE(start({.parameters = "XML3FileName: \"" + name + "\"\n"}));
    EXPECT_FALSE(std::filesystem::exists(name));
    writeFile("events.xml", "old");
    ASSERT_TRUE(init());
    EXPECT_EQ(readFile("events.xml"), "old");
}

TEST_F(ScenarioMatchProcessInit, DoesNotChooseConstantObjects)
{
    write({.models = kPresent, .usedModels = "Present", .context = kZone});
    writeFile("settings.txt", "Engine {test,\nUsedModels(Present)\nInterestedObjects(Nobody)\n}\n");
    ASSERT_TRUE(init());
    EXPECT_EQ(constant(0, "Type"), "Zone");
    EXPECT_THAT(m_errors, Not(HasSubstr("does not exist!")));
}

TEST_F(ScenarioMatchProcessInit, ReadsAllFilesAgainWhenCalledTwice)
{
    ASSERT_TRUE(start({.models = kPresent, .usedModels = "Present", .context = kZone}));
    ASSERT_TRUE(init());
    EXPECT_EQ(m_process->engine()->agents().size(), 1U);
    EXPECT_EQ(constant(0, "Name"), "Entrance");
    std::filesystem::remove(path("context.xml"));
    ASSERT_TRUE(init());
    EXPECT_TRUE(m_process->getListContextualElements().empty());
}
