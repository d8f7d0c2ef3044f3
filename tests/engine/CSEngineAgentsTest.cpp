#include "tests/engine/EngineFixture.h"

#include <iostream>

namespace scenariomatch
{

namespace
{

class CSEngineAgents : public EngineFixture
{
protected:
    int enterNamed(int host, const std::string& name)
    {
        const int id = m_engine.getAgent(host, true);
        m_engine.setAgentAttribute(id, "Name", std::make_shared<CSString>(name), 0);
        return id;
    }

    std::vector<int> agentIds() const
    {
        std::vector<int> ids;
        for (const auto& [id, agent] : m_engine.agents()) {
            ids.push_back(id);
        }
        return ids;
    }

    std::vector<int> agentsOf(const std::string& type) const
    {
        std::vector<int> ids;
        m_engine.getAllAgent(type, ids);
        return ids;
    }
};

using Ids = std::vector<int>;

} // namespace

TEST_F(CSEngineAgents, KeepsMobileAndConstantObjectsOfOneIdentifierApart)
{
    EXPECT_EQ(m_engine.getAgent(7, false), 0);
    EXPECT_EQ(m_engine.getAgent(7, true), 1);
    EXPECT_EQ(m_engine.getAgent(7, false), 0);
    EXPECT_EQ(m_engine.getAgent(7, true), 1);
    EXPECT_FALSE(m_engine.agents().at(0)->m_constant);
    EXPECT_TRUE(m_engine.agents().at(1)->m_constant);
}

TEST_F(CSEngineAgents, NumbersMobileAndConstantObjectsTogether)
{
    EXPECT_EQ(m_engine.getAgent(40, true), 0);
    EXPECT_EQ(m_engine.getAgent(30, false), 1);
    EXPECT_EQ(m_engine.getAgent(-5, true), 2);
    const CSAgent& agent = *m_engine.agents().at(1);
    EXPECT_EQ(agent.m_ID, 30);
    EXPECT_EQ(agent.m_engineID, 1);
    EXPECT_EQ(agent.m_className, "Agent");
    EXPECT_EQ(agent.m_type, "");
    EXPECT_FALSE(agent.m_interested);
    EXPECT_TRUE(agent.m_instances.empty());
}

TEST_F(CSEngineAgents, NeverHandsOutARemovedIdentifierAgain)
{
    runFrame(1, 1.0, {{3, "Person", 0.0}});
    runFrame(2, 2.0, {});
    EXPECT_EQ(agentIds(), Ids());
    runFrame(3, 3.0, {{3, "Person", 0.0}});
    EXPECT_EQ(agentIds(), Ids({1}));
}

TEST_F(CSEngineAgents, SetsFrameTypeAndAttributes)
{
    const int id = m_engine.getAgent(1, false);
    m_engine.setAgentFrameID(id, 12);
    m_engine.setAgentType(id, "ignored", std::make_shared<CSString>("Person"), 12);
    m_engine.setAgentAttribute(id, "Speed", std::make_shared<CSDouble>(2.5), 12);
    CSAgent& agent = *m_engine.agents().at(id);
    EXPECT_EQ(agent.m_frameID, 12);
    EXPECT_EQ(agent.m_type, "Person");
    EXPECT_EQ(toString(agent.get("Type").get()), "Person");
    EXPECT_EQ(agent.m_attributes.count("ignored"), 0U);
    EXPECT_EQ(toString(agent.get("Speed").get()), "2.5");
    EXPECT_EQ(agent.get("Speed")->m_frame, 12);
}

TEST_F(CSEngineAgents, IgnoresSettersForAnUnknownIdentifier)
{
    m_engine.setAgentFrameID(9, 1);
    m_engine.setAgentType(9, "Type", std::make_shared<CSString>("Person"), 1);
    m_engine.setAgentAttribute(9, "P", std::make_shared<CSDouble>(1.0), 1);
    EXPECT_EQ(agentIds(), Ids());
}

TEST_F(CSEngineAgents, FindsConstantAgentsAndThoseOfTheCurrentFrame)
{
    enterConstant({1, "Person", 0.0});
    enterFrame(10, 10.0, {{2, "Person", 0.0}, {3, "Child", 0.0}, {4, "Person", 0.0}});
    EXPECT_EQ(agentsOf("Person"), Ids({0, 1, 3}));
    EXPECT_EQ(agentsOf("Child"), Ids({2}));
    EXPECT_EQ(agentsOf("person"), Ids());
    enterFrame(11, 11.0, {{4, "Person", 0.0}});
    EXPECT_EQ(agentsOf("Person"), Ids({0, 3}));
}

TEST_F(CSEngineAgents, AppendsToTheIdentifiersGiven)
{
    enterConstant({1, "Zone", 0.0});
    Ids ids{42};
    m_engine.getAllAgent("Zone", ids);
    m_engine.getAllAgent("Zone", ids);
    EXPECT_EQ(ids, Ids({42, 0, 0}));
}

TEST_F(CSEngineAgents, HasNoMobileAgentBeforeTheFirstTime)
{
    enterConstant({1, "Person", 0.0});
    const int id = m_engine.getAgent(2, false);
    m_engine.setAgentType(id, "Type", std::make_shared<CSString>("Person"), 0);
    EXPECT_EQ(agentsOf("Person"), Ids({0}));
    m_engine.infer();
    EXPECT_TRUE(alive().empty());
}

TEST_F(CSEngineAgents, BearsInferenceBeforeTheFirstTimeWithModels)
{
    readModels("PrimitiveState(There, PhysicalObjects((z : Zone)))\n", "There");
    enterConstant({1, "Zone", 0.0});
    m_engine.infer();
    EXPECT_TRUE(alive().empty());
    runFrame(1, 1.0, {});
    EXPECT_EQ(alive(), std::vector<std::string>({"0 There 1..1 z=1"}));
}

TEST_F(CSEngineAgents, LosesAnAgentAtTheEndOfTheFirstFrameWithoutIt)
{
    runFrame(10, 10.0, {{5, "Person", 0.0}});
    EXPECT_EQ(agentIds(), Ids({0}));
    enterFrame(11, 11.0, {});
    EXPECT_EQ(agentsOf("Person"), Ids());
    EXPECT_EQ(agentIds(), Ids({0}));
    m_engine.infer();
    EXPECT_EQ(agentIds(), Ids());
}

TEST_F(CSEngineAgents, KeepsAnAgentWhileARecognisedInstanceBindsIt)
{
    readModels("PrimitiveState(There, PhysicalObjects((p : Person)))\n", "There");
    m_engine.setConstTimeSearch(2.0);
    runFrame(1, 1.0, {{5, "Person", 0.0}});
    EXPECT_EQ(m_engine.agents().at(0)->m_instances, (std::map<int, int>{{0, 1}}));
    runFrame(2, 3.0, {});
    EXPECT_EQ(agentIds(), Ids({0}));
    // The instance expires in this frame; the agent goes at its end.
    runFrame(3, 3.5, {});
    EXPECT_EQ(alive(), std::vector<std::string>());
    EXPECT_EQ(agentIds(), Ids());
}

TEST_F(CSEngineAgents, KeepsAnAgentSeenInAFrameStillInItsMap)
{
    m_engine.setHistorySize(3);
    runFrame(1, 1.0, {{5, "Person", 0.0}});
    runFrame(2, 2.0, {});
    EXPECT_EQ(agentIds(), Ids()) << "an earlier frame is no reason to keep the agent";
    runFrame(3, 3.0, {{6, "Person", 0.0}});
    // The clock of the host repeats frame 3.
    enterFrame(3, 4.0, {});
    m_engine.infer();
    EXPECT_EQ(agentIds(), Ids({1}));
}

TEST_F(CSEngineAgents, NeverRemovesConstantAgents)
{
    enterConstant({1, "Zone", 0.0});
    runFrame(1, 1.0, {});
    runFrame(2, 2.0, {});
    EXPECT_EQ(agentIds(), Ids({0}));
    m_engine.getAgent(2, false);
    m_engine.removeConstAgents();
    EXPECT_EQ(agentIds(), Ids({1}));
    EXPECT_EQ(m_engine.getAgent(1, true), 0) << "the identifier of the host stays known";
}

TEST_F(CSEngineAgents, KeepsOneTimeForAHistoryOfOne)
{
    for (int frame = 1; frame <= 3; ++frame) {
        runFrame(frame, frame, {});
    }
    ASSERT_EQ(CSEngine::h_currentTime.size(), 1U);
    EXPECT_EQ(CSEngine::h_currentTime.begin()->first, 3);
    m_engine.setHistorySize(3);
    EXPECT_EQ(CSEngine::h_currentTime.size(), 1U);
    for (int frame = 4; frame <= 7; ++frame) {
        runFrame(frame, frame, {});
    }
    ASSERT_EQ(CSEngine::h_currentTime.size(), 3U);
    EXPECT_EQ(CSEngine::h_currentTime.begin()->first, 5);
}

TEST_F(CSEngineAgents, DropsOneTimeACallAfterTheHistoryWasShortened)
{
    m_engine.setHistorySize(4);
    for (int frame = 1; frame <= 4; ++frame) {
        m_engine.setCurrentTime(stamp(frame, frame), frame);
    }
    m_engine.setHistorySize(1);
    m_engine.cleanHistory();
    EXPECT_EQ(CSEngine::h_currentTime.size(), 3U);
    m_engine.cleanHistory();
    EXPECT_EQ(CSEngine::h_currentTime.size(), 2U);
    EXPECT_EQ(CSEngine::h_currentTime.begin()->first, 3);
}

TEST_F(CSEngineAgents, SetsTheTimeWithoutKeepingIt)
{
    const auto time = stamp(5, 5.0);
    m_engine.setCurrentTime(time);
    EXPECT_EQ(m_engine.currentTime(), time);
    EXPECT_TRUE(CSEngine::h_currentTime.empty());
    const auto first = stamp(6, 6.0);
    m_engine.setCurrentTime(first, 6);
    const auto second = stamp(6, 6.5);
    m_engine.setCurrentTime(second, 6);
    EXPECT_EQ(CSEngine::h_currentTime.size(), 1U);
    EXPECT_EQ(CSEngine::h_currentTime.at(6), second);
}

TEST_F(CSEngineAgents, SetsBothHistorySizesAndTheTimeSearch)
{
    m_engine.setHistorySize(9);
    EXPECT_EQ(CSEngine::m_historySize, 9);
    EXPECT_EQ(CSAgent::m_historySize, 9);
    m_engine.setConstTimeSearch(12.5);
    EXPECT_EQ(CSScenarioInstance::m_const_TimeSearch, 12.5);
}

TEST_F(CSEngineAgents, MakesAComponentOnce)
{
    EXPECT_EQ(m_engine.getComponent(17), 17);
    const auto component = m_engine.components().at(17);
    EXPECT_EQ(component->m_ID, 17);
    EXPECT_EQ(component->m_type, "Component");
    EXPECT_FALSE(component->m_constant);
    EXPECT_EQ(m_engine.getComponent(17), 17);
    EXPECT_EQ(m_engine.components().at(17), component);
    EXPECT_TRUE(m_engine.agents().empty());
}

TEST_F(CSEngineAgents, KeepsTheConstantObjectsOfInterest)
{
    enterNamed(1, "Door");
    enterNamed(2, "Desk");
    enterNamed(3, "Door");
    m_engine.m_interestedObjects = {"Desk", "Roof", "Door"};
    const CapturedStream errors(std::cerr);
    m_engine.chooseConstantObjects();
    EXPECT_EQ(agentIds(), Ids({0, 1}));
    EXPECT_TRUE(m_engine.agents().at(0)->m_interested);
    EXPECT_EQ(
        errors.text(),
        "Warning: the constant object: Roof does not exist!\n"
        "Warning: the constant object: Door does not used!\n");
    EXPECT_EQ(m_engine.getAgent(3, true), 2) << "the identifier of the host stays known";
}

TEST_F(CSEngineAgents, DropsMobileAndNamelessObjectsWhenChoosing)
{
    enterNamed(1, "Door");
    m_engine.getAgent(2, true);
    const int mobile = m_engine.getAgent(3, false);
    m_engine.setAgentAttribute(mobile, "Name", std::make_shared<CSString>("Desk"), 0);
    m_engine.m_interestedObjects = {"Door", "Desk"};
    const CapturedStream errors(std::cerr);
    m_engine.chooseConstantObjects();
    EXPECT_EQ(agentIds(), Ids({0}));
    EXPECT_EQ(
        errors.text(),
        "Warning: the constant object: Desk does not exist!\n"
        "Warning: the constant object:  does not used!\n"
        "Warning: the constant object: Desk does not used!\n");
}

TEST_F(CSEngineAgents, DropsEveryObjectWhenNoneIsOfInterest)
{
    enterNamed(1, "Door");
    const CapturedStream errors(std::cerr);
    m_engine.chooseConstantObjects();
    EXPECT_EQ(agentIds(), Ids());
    EXPECT_EQ(errors.text(), "Warning: the constant object: Door does not used!\n");
}

TEST_F(CSEngineAgents, ForwardsObjectTypesToTheCatalogue)
{
    const std::string file = m_folder.write(
        "types.txt",
        "class Mobile {\nconstant false;\n}\nclass Vehicle:Mobile {\nconstant false;\n}\n");
    m_engine.readAllObjects(file);
    EXPECT_EQ(
        CSAgent::m_allObjectTypes.at("Mobile"), (std::vector<std::string>{"Mobile", "Vehicle"}));
    EXPECT_FALSE(CSAgent::m_constantObjects.at("Component"));
}

} // namespace scenariomatch
