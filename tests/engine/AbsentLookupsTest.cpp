#include "EngineFixture.h"

#include <gtest/gtest.h>

#include <vector>

namespace scenariomatch
{

namespace
{

constexpr int kMany = 1'000'000;

class AbsentLookups : public EngineFixture
{
protected:
    // An agent that has been seen twice.
    CSAgent& seenTwice()
    {
        enterFrame(1, 1.0, {{7, "Person", 1.0}});
        enterFrame(2, 2.0, {{7, "Person", 2.0}});
        return *m_engine.agents().at(m_engine.getAgent(7, false));
    }
};

} // namespace

TEST_F(AbsentLookups, EnterAnAttributeOnceHoweverOftenItIsAskedFor)
{
    CSAgent& agent = seenTwice();
    const std::size_t before = agent.m_attributes.size();
    for (int i = 0; i < kMany; ++i) {
        ASSERT_EQ(agent.get("Absent"), nullptr);
    }
    EXPECT_EQ(agent.m_attributes.size(), before + 1);
    EXPECT_EQ(agent.m_attributes.at("Absent"), nullptr);
}

TEST_F(AbsentLookups, EnterAPositionOnceHoweverOftenItIsAskedFor)
{
    CSAgent& agent = seenTwice();
    const std::size_t before = agent.get("P")->m_history.size();
    for (int i = 0; i < kMany; ++i) {
        ASSERT_EQ(agent.get("P", -5), nullptr);
    }
    EXPECT_EQ(agent.get("P")->m_history.size(), before + 1);
    EXPECT_EQ(agent.m_attributes.size(), 2U);
}

TEST_F(AbsentLookups, EnterATypeOnceHoweverOftenItIsAskedFor)
{
    CSAgent::m_constantObjects.clear();
    for (int i = 0; i < kMany; ++i) {
        ASSERT_FALSE(CSAgent("Nothing", 1).m_constant);
    }
    EXPECT_EQ(CSAgent::m_constantObjects.size(), 1U);
}

TEST_F(AbsentLookups, EnterNoAgentByAnIdentifierThatTheEngineDoesNotKnow)
{
    seenTwice();
    const auto value = std::make_shared<CSDouble>(1.0);
    const auto type = std::make_shared<CSString>("Person");
    std::vector<int> ids;
    for (int i = 0; i < kMany; ++i) {
        m_engine.setAgentFrameID(99, 2);
        m_engine.setAgentType(99, "Type", type, 2);
        m_engine.setAgentAttribute(99, "P", value, 2);
        m_engine.getAllAgent("Nothing", ids);
    }
    EXPECT_EQ(m_engine.agents().size(), 1U);
    EXPECT_TRUE(ids.empty());
}

TEST_F(AbsentLookups, EnterAnAgentAndAPseudoAgentOnce)
{
    seenTwice();
    for (int i = 0; i < kMany; ++i) {
        m_engine.getAgent(8, false);
        m_engine.getComponent(5);
    }
    EXPECT_EQ(m_engine.agents().size(), 2U);
    EXPECT_EQ(m_engine.components().size(), 1U);
}

// Models ask in every frame for what is not there.
TEST_F(AbsentLookups, OfModelsLeaveOneEntryEach)
{
    constexpr int kFrames = 20'000;
    readModels(
        "PrimitiveState(Odd, PhysicalObjects((p : Person))\n Constraints((p->Absent above 1)))\n"
        "PrimitiveState(Low, PhysicalObjects((p : Person))\n Constraints((2 above p->P)))\n",
        "Odd,Low");
    m_engine.m_constProlongation = 1.0;
    for (int frame = 0; frame < kFrames; ++frame) {
        runFrame(frame, frame, {{7, "Person", 1.0}});
    }
    const CSAgent& agent = *m_engine.agents().at(m_engine.getAgent(7, false));
    EXPECT_EQ(agent.m_attributes.size(), 3U);
    EXPECT_EQ(agent.m_attributes.at("Absent"), nullptr);
    EXPECT_EQ(m_engine.agents().size(), 1U);
    EXPECT_EQ(m_engine.recognisedScenarios().size(), 1U);
    EXPECT_EQ(CSEngine::h_currentTime.size(), 1U);
}

} // namespace scenariomatch
