#include "plugin/ActorAgents.h"

#include "engine/CSEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

using testing::ElementsAre;

const std::set<std::string>& allNames()
{
    static const std::set<std::string> names = [] {
        std::set<std::string> all;
        for (std::size_t i = 0; i < kActorAttributes; ++i) {
            all.insert(nameOf(static_cast<ActorAttribute>(i)));
        }
        return all;
    }();
    return names;
}

ActorState stateOf(int frame, int hostId, float x)
{
    ActorState state;
    state.frame = frame;
    state.id = hostId;
    state.box = {.x = frame, .y = 2, .width = 5, .height = 4};
    state.position = {.x = x, .y = 0.0F, .z = 0.0F};
    state.type = "Person";
    state.posture = frame + 1000;
    return state;
}

// All that can be seen of a value: its text, tag, frame and flag.
using Seen = std::tuple<std::string, std::string, int, bool>;

Seen see(const std::shared_ptr<CSBasicType>& value)
{
    return value ? Seen{toString(value.get()), value->m_type, value->m_frame, value->m_flag}
                 : Seen{};
}

// The attributes' present and earlier values.
std::map<std::string, std::vector<Seen>> seeAll(CSAgent& agent)
{
    agent.makeUp();
    std::map<std::string, std::vector<Seen>> all;
    for (const auto& [name, value] : agent.m_attributes) {
        all[name].push_back(see(value));
        for (const auto& [frame, earlier] : value->m_history) {
            all[name].push_back(see(earlier));
            EXPECT_TRUE(earlier == nullptr || earlier->m_history.empty());
        }
    }
    return all;
}

// With all attributes named by models, and with none: what is seen is the same. The history size is
// one for the process.
class ActorAgentsTest : public testing::TestWithParam<bool>
{
protected:
    void SetUp() override
    {
        m_engine.setHistorySize(2);
        if (GetParam()) {
            m_agents.setNamedAttributes(allNames());
        }
    }

    void TearDown() override { m_engine.setHistorySize(1); }

    // Enters a frame of actors with these identifiers, each standing at x and its identifier.
    void enter(int frame, const std::vector<int>& hostIds, float x)
    {
        m_agents.startFrame();
        for (const int hostId : hostIds) {
            m_agents.enter(stateOf(frame, hostId, x + static_cast<float>(hostId)));
        }
    }

    CSAgent& agent(int hostId) { return *m_engine.agents().at(m_engine.getAgent(hostId, false)); }

    static double x(const std::shared_ptr<CSBasicType>& position)
    {
        const auto* point = dynamic_cast<const CS3DDPoint*>(position.get());
        return point != nullptr ? point->m_x : -1000.0;
    }

    // The earlier positions, oldest first, and the present one.
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

TEST_P(ActorAgentsTest, KeepsEarlierValuesInTheHistories)
{
    for (int frame = 1; frame <= 50; ++frame) {
        enter(frame, {7}, 10.0F * static_cast<float>(frame));
    }
    EXPECT_THAT(positions(7), ElementsAre(487.0, 497.0, 507.0));
    EXPECT_EQ(agent(7).m_type, "Person");
    EXPECT_EQ(toString(agent(7).get("Posture").get()), "1050");
    EXPECT_EQ(toString(agent(7).get("Posture", 49).get()), "1049");
    EXPECT_EQ(agent(7).get("Posture", 47), nullptr);
    EXPECT_EQ(agent(7).m_frameID, 50);
    EXPECT_EQ(agent(7).m_frames, (std::map<int, int>{{49, 1}, {50, 1}}));
}

TEST_P(ActorAgentsTest, FollowsActorsThatChangePlaces)
{
    enter(1, {7, 8}, 10.0F);
    enter(2, {8, 7}, 20.0F);
    enter(3, {9, 7, 8}, 30.0F);
    EXPECT_THAT(positions(7), ElementsAre(17.0, 27.0, 37.0));
    EXPECT_THAT(positions(8), ElementsAre(18.0, 28.0, 38.0));
    EXPECT_THAT(positions(9), ElementsAre(39.0));
}

TEST_P(ActorAgentsTest, EntersAnActorThatComesAgainAsANewAgent)
{
    enter(1, {7}, 10.0F);
    enter(2, {7}, 20.0F);
    m_engine.setCurrentTime(std::make_shared<CSTimeStamp>(3, 0.0, 0.0));
    m_engine.removeAgents();
    enter(4, {7}, 40.0F);
    EXPECT_THAT(positions(7), ElementsAre(47.0));
    EXPECT_TRUE(agent(7).get("Position")->m_flag);
}

TEST_P(ActorAgentsTest, KeepsTheSeenAgentInTheTable)
{
    enter(1, {7}, 10.0F);
    enter(2, {7}, 20.0F);
    m_engine.setCurrentTime(std::make_shared<CSTimeStamp>(2, 0.0, 0.0));
    m_engine.removeAgents();
    enter(3, {7}, 30.0F);
    EXPECT_THAT(positions(7), ElementsAre(17.0, 27.0, 37.0));
}

TEST_P(ActorAgentsTest, TakesTheLastOfTwoActorsWithOneIdentifier)
{
    enter(1, {7, 7}, 10.0F);
    enter(2, {7}, 20.0F);
    enter(3, {7, 7}, 30.0F);
    EXPECT_THAT(positions(7), ElementsAre(27.0, 37.0, 37.0));
}

TEST_P(ActorAgentsTest, GivesTheSameValueTwiceInAFrame)
{
    enter(1, {7}, 10.0F);
    enter(2, {7}, 20.0F);
    EXPECT_EQ(agent(7).get("Width"), agent(7).get("Width"));
    EXPECT_EQ(agent(7).get("Width", 1), agent(7).get("Width", 1));
}

TEST_P(ActorAgentsTest, LeavesAValueAloneThatSomebodyHolds)
{
    enter(1, {7}, 10.0F);
    const auto held = agent(7).get("Position");
    for (int frame = 2; frame <= 20; ++frame) {
        enter(frame, {7}, 0.0F);
    }
    EXPECT_EQ(x(held), 17.0);
    EXPECT_EQ(held->m_frame, 1);
    EXPECT_TRUE(held->m_flag);
}

TEST_P(ActorAgentsTest, LeavesNothingOfAnEarlierValueInANewOne)
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
TEST_P(ActorAgentsTest, PassesOverValuesThatSomebodyElseSet)
{
    for (int frame = 1; frame <= 20; frame += 2) {
        enter(frame, {7}, 1.0F);
        agent(7).set("Position", std::make_shared<CSString>("here"), frame + 1);
        EXPECT_EQ(x(agent(7).get("Position", frame)), 8.0);
    }
}

// Against an agent whose attributes are all set one by one: frames that go back or come twice,
// changing kinds of actors, attributes asked for in vain, looks at any time.
TEST_P(ActorAgentsTest, ShowsWhatSettingEveryAttributeWouldShow)
{
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same frames every time
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int scene = 0; scene < 300; ++scene) {
        m_engine.setHistorySize(below(6) - 1);
        CSAgent expected(scene, false);
        int frame = 0;
        for (int step = 0; step < 40; ++step) {
            frame = below(10) > 0 ? frame + 1 + below(2) : std::max(frame - below(4), 0);
            ActorState state = stateOf(frame, scene, static_cast<float>(step));
            state.posture = below(8) > 0 ? state.posture : 0;
            m_agents.startFrame();
            m_agents.enter(state);
            expected.setFrameID(frame);
            visitActorAttributes(
                state,
                [&]<typename Value>(std::type_identity<Value>, ActorAttribute name, auto... of) {
                    expected.set(
                        nameOf(name), std::make_shared<Value>(std::move(of)...), state.frame);
                });
            if (below(12) == 0) {
                const int asked = frame + below(3) - 1;
                EXPECT_EQ(see(agent(scene).get("Speed", asked)), see(expected.get("Speed", asked)));
            }
            if (below(10) == 0) {
                EXPECT_EQ(seeAll(agent(scene)), seeAll(expected));
            }
        }
        ASSERT_EQ(seeAll(agent(scene)), seeAll(expected));
        ASSERT_EQ(agent(scene).m_frames, expected.m_frames);
        ASSERT_EQ(agent(scene).m_type, "Person");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Named, ActorAgentsTest, testing::Bool(), [](const testing::TestParamInfo<bool>& named) {
        return named.param ? "All" : "None";
    });

} // namespace scenariomatch
