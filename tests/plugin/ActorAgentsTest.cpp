#include "plugin/ActorAgents.h"

#include "engine/CSEngine.h"
#include "host/rhmDataActor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;

// The history size is one for the process.
class ActorAgentsTest : public testing::Test
{
protected:
    void SetUp() override { m_engine.setHistorySize(2); }

    void TearDown() override { m_engine.setHistorySize(1); }

    // Enters a frame of actors with these identifiers, who all stand at x.
    void enter(int frame, const std::vector<int>& hostIds, float x)
    {
        m_agents.startFrame(frame);
        for (const int hostId : hostIds) {
            rhmDataActor actor;
            actor.setIdent(hostId);
            actor.setCurrentPosition({.x = x + static_cast<float>(hostId), .y = 0.0F, .z = 0.0F});
            m_agents.enter(actor);
            m_agents.setType("Person");
            m_agents.setPosture(frame);
        }
    }

    CSAgent& agent(int hostId) { return *m_engine.agents().at(m_engine.getAgent(hostId, false)); }

    static double x(const std::shared_ptr<CSBasicType>& position)
    {
        const auto* point = dynamic_cast<const CS3DDPoint*>(position.get());
        return point != nullptr ? point->m_x : -1000.0;
    }

    // The present position and the earlier ones, oldest first.
    std::vector<double> positions(int hostId)
    {
        const auto current = agent(hostId).get("Position");
        std::vector<double> all;
        for (const auto& [frame, position] : current->m_history) {
            all.push_back(x(position));
        }
        all.push_back(x(current));
        return all;
    }

    CSEngine m_engine;
    ActorAgents m_agents{m_engine};
};

} // namespace

TEST_F(ActorAgentsTest, KeepsEarlierValuesInTheHistories)
{
    for (int frame = 1; frame <= 5; ++frame) {
        enter(frame, {7}, 10.0F * static_cast<float>(frame));
    }
    EXPECT_THAT(positions(7), ElementsAre(37.0, 47.0, 57.0));
    EXPECT_EQ(agent(7).m_type, "Person");
    EXPECT_EQ(toString(agent(7).get("Posture").get()), "5");
    EXPECT_EQ(toString(agent(7).get("Posture", 4).get()), "4");
    EXPECT_EQ(agent(7).m_frameID, 5);
}

TEST_F(ActorAgentsTest, FollowsActorsThatChangePlaces)
{
    enter(1, {7, 8}, 10.0F);
    enter(2, {8, 7}, 20.0F);
    enter(3, {9, 7, 8}, 30.0F);
    EXPECT_THAT(positions(7), ElementsAre(17.0, 27.0, 37.0));
    EXPECT_THAT(positions(8), ElementsAre(18.0, 28.0, 38.0));
    EXPECT_THAT(positions(9), ElementsAre(39.0));
}

TEST_F(ActorAgentsTest, EntersAnActorThatComesAgainAsANewAgent)
{
    enter(1, {7}, 10.0F);
    enter(2, {7}, 20.0F);
    m_engine.setCurrentTime(std::make_shared<CSTimeStamp>(3, 0.0, 0.0));
    m_engine.removeAgents();
    enter(4, {7}, 40.0F);
    EXPECT_THAT(positions(7), ElementsAre(47.0));
    EXPECT_TRUE(agent(7).get("Position")->m_flag);
}

TEST_F(ActorAgentsTest, TakesTheLastOfTwoActorsWithOneIdentifier)
{
    enter(1, {7, 7}, 10.0F);
    enter(2, {7}, 20.0F);
    enter(3, {7, 7}, 30.0F);
    EXPECT_THAT(positions(7), ElementsAre(27.0, 37.0, 37.0));
}

TEST_F(ActorAgentsTest, LeavesAValueAloneThatSomebodyHolds)
{
    enter(1, {7}, 10.0F);
    const auto held = agent(7).get("Position");
    for (int frame = 2; frame <= 8; ++frame) {
        enter(frame, {7}, 0.0F);
    }
    EXPECT_EQ(x(held), 17.0);
    EXPECT_EQ(held->m_frame, 1);
    EXPECT_TRUE(held->m_flag);
}

TEST_F(ActorAgentsTest, LeavesNothingOfAnEarlierValueInANewOne)
{
    for (int frame = 1; frame <= 20; ++frame) {
        enter(frame, {7, 8}, 0.0F);
        for (const int hostId : {7, 8}) {
            CSBasicType& position = *agent(hostId).get("Position");
            EXPECT_EQ(position.m_type, "3DDPOINT");
            EXPECT_EQ(position.m_confidence, 1.0);
            EXPECT_EQ(position.m_flag, frame == 1);
            EXPECT_EQ(position.m_frame, frame);
            position.m_type = "2DDPOINT";
            position.m_confidence = 0.5;
            position.m_flag = true;
        }
    }
}

// What is not of the attribute's class cannot serve for its next value.
TEST_F(ActorAgentsTest, PassesOverValuesThatSomebodyElseSet)
{
    for (int frame = 1; frame <= 20; frame += 2) {
        enter(frame, {7}, 1.0F);
        agent(7).set("Position", std::make_shared<CSString>("here"), frame + 1);
        EXPECT_EQ(x(agent(7).get("Position", frame)), 8.0);
    }
}

} // namespace scenariomatch
