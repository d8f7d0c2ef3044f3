#include "engine/FrameView.h"

#include "tests/engine/PlanMaterial.h"

#include <gtest/gtest.h>

#include <random>

namespace scenariomatch
{

namespace
{

using Ids = std::vector<int>;

class FrameViewTest : public ::testing::Test
{
protected:
    void begin(int frame) { m_view.begin(m_scene.m_agents, CSTimeStamp(frame, 0.0, 0.0), m_types); }

    // The host's identifiers of the agents of the type, in order.
    Ids ofType(const std::string& type)
    {
        Ids ids;
        for (const FrameView::AgentIndex index : m_view.ofType(m_view.typeNumber(type))) {
            ids.push_back(m_view.agent(index)->m_ID);
        }
        return ids;
    }

    // Identifiers and the numbers "P" that a walk over the agents finds of the type.
    std::pair<Ids, std::vector<double>> walked(const std::string& type, int frame)
    {
        Ids ids;
        std::vector<double> numbers;
        for (const std::string& name : m_types[type]) {
            for (const auto& [id, agent] : m_scene.m_agents) {
                if (agent->m_type == name && (agent->m_constant || agent->m_frameID == frame)) {
                    ids.push_back(agent->m_ID);
                    numbers.push_back(CSPlainValue(agent->get("P").get()).m_number);
                }
            }
        }
        return {ids, numbers};
    }

    // The attribute of the first agent of the type.
    CSPlainValue firstValue(const std::string& attribute, const std::string& type)
    {
        const std::size_t typeNumber = m_view.typeNumber(type);
        return m_view.values(
            m_view.attributeNumber(attribute), typeNumber)[m_view.ofType(typeNumber).front()];
    }

    Scene m_scene;
    FrameView::TypeTable m_types{
        {"Agent", {"Agent", "Zone", "Person", "Child"}},
        {"Person", {"Person", "Child"}},
        {"Child", {"Child"}},
        {"Zone", {"Zone"}}};
    FrameView m_view;
};

} // namespace

TEST_F(FrameViewTest, HasThoseSeenInTheFrameAndConstants)
{
    m_scene.add("Person", 7);
    m_scene.add("Person", 6);
    m_scene.addConstant("Person");
    m_scene.add("Person", 8);
    m_scene.add("Person", 7);
    begin(7);
    EXPECT_EQ(m_view.size(), 3U);
    EXPECT_EQ(ofType("Person"), (Ids{100, 102, 104}));
}

TEST_F(FrameViewTest, ListsATypeThenThoseDerivedFromItInTheirOrder)
{
    m_scene.add("Child", 1);
    m_scene.add("Person", 1);
    m_scene.add("Zone", 1);
    m_scene.add("Child", 1);
    m_scene.add("Person", 1);
    m_scene.add("Car", 1);
    begin(1);
    EXPECT_EQ(ofType("Person"), (Ids{101, 104, 100, 103}));
    EXPECT_EQ(ofType("Child"), (Ids{100, 103}));
    EXPECT_EQ(ofType("Agent"), (Ids{102, 101, 104, 100, 103}));
}

TEST_F(FrameViewTest, HasNobodyOfATypeThatTheTableLacks)
{
    m_scene.add("Car", 1);
    begin(1);
    EXPECT_EQ(m_view.size(), 1U);
    EXPECT_EQ(ofType("Car"), Ids());
    EXPECT_EQ(ofType("Zone"), Ids());
}

TEST_F(FrameViewTest, GivesTheSameNumberForTheSameName)
{
    const std::size_t person = m_view.typeNumber("Person");
    const std::size_t zone = m_view.typeNumber("Zone");
    EXPECT_NE(person, zone);
    EXPECT_EQ(m_view.typeNumber("Person"), person);
    const std::size_t position = m_view.attributeNumber("Position");
    EXPECT_NE(m_view.attributeNumber("Name"), position);
    EXPECT_EQ(m_view.attributeNumber("Position"), position);
}

TEST_F(FrameViewTest, NumbersConstantsApart)
{
    m_scene.add("Person", 1);
    m_scene.addConstant("Zone");
    m_scene.add("Person", 0);
    m_scene.addConstant("Zone");
    begin(1);
    ASSERT_EQ(m_view.size(), 3U);
    EXPECT_EQ(m_view.constants(), 2U);
    EXPECT_EQ(m_view.constantNumber(0), -1);
    EXPECT_EQ(m_view.constantNumber(1), 0);
    EXPECT_EQ(m_view.constantNumber(2), 1);
}

TEST_F(FrameViewTest, ReadsAttributesOfTheTypesThatAreAskedFor)
{
    m_scene.add("Person", 1).set("P", std::make_shared<CSDouble>(2.0), 1);
    m_scene.add("Zone", 1).set("P", std::make_shared<CSDouble>(3.0), 1);
    begin(1);
    EXPECT_EQ(firstValue("P", "Person").m_number, 2.0);
    EXPECT_EQ(firstValue("P", "Zone").m_number, 3.0);
}

TEST_F(FrameViewTest, HasNoValueWhereAnAgentLacksTheAttribute)
{
    m_scene.add("Person", 1);
    CSAgent& entered = m_scene.add("Zone", 1);
    entered.m_attributes["P"] = nullptr;
    begin(1);
    EXPECT_TRUE(firstValue("P", "Person").isNone());
    EXPECT_TRUE(firstValue("P", "Zone").isNone());
}

TEST_F(FrameViewTest, ForgetsTheFrameBefore)
{
    m_scene.add("Person", 1).set("P", std::make_shared<CSDouble>(2.0), 1);
    m_scene.addConstant("Person").set("P", std::make_shared<CSDouble>(4.0), 0);
    begin(1);
    EXPECT_EQ(firstValue("P", "Person").m_number, 2.0);
    begin(2);
    EXPECT_EQ(m_view.size(), 1U);
    EXPECT_EQ(ofType("Person"), Ids{101});
    EXPECT_EQ(firstValue("P", "Person").m_number, 4.0);
}

TEST_F(FrameViewTest, ForgetsValuesThatAnAgentLostSinceAFrameInTheSameTime)
{
    CSAgent& agent = m_scene.add("Person", 1);
    agent.set("P", std::make_shared<CSDouble>(2.0), 1);
    begin(1);
    EXPECT_TRUE(firstValue("P", "Person").isNumber());
    const auto frame = m_view.frame();
    agent.m_attributes.clear();
    begin(1);
    EXPECT_NE(m_view.frame(), frame);
    EXPECT_TRUE(firstValue("P", "Person").isNone());
}

TEST_F(FrameViewTest, KeepsToTheTypeThatAnAgentHasNow)
{
    CSAgent& agent = m_scene.add("Person", 1);
    begin(1);
    EXPECT_EQ(ofType("Person"), Ids{100});
    agent.m_type = "Zone";
    begin(1);
    EXPECT_EQ(ofType("Person"), Ids());
    EXPECT_EQ(ofType("Zone"), Ids{100});
}

TEST_F(FrameViewTest, KeepsToTheTypesOfTheFrame)
{
    m_scene.add("Child", 1);
    begin(1);
    EXPECT_EQ(ofType("Person"), Ids{100});
    m_types["Person"] = {"Person"};
    begin(1);
    EXPECT_EQ(ofType("Person"), Ids());
}

TEST_F(FrameViewTest, ReadsAttributesForTypesThatAreNamedLater)
{
    m_scene.add("Person", 1).set("P", std::make_shared<CSDouble>(2.0), 1);
    m_scene.add("Zone", 1).set("P", std::make_shared<CSDouble>(3.0), 1);
    begin(1);
    EXPECT_EQ(firstValue("P", "Person").m_number, 2.0);
    EXPECT_EQ(firstValue("P", "Agent").m_number, 3.0);
}

TEST_F(FrameViewTest, SeesThousandsOfTypesThatAreMadeUp)
{
    for (int i = 0; i < 3000; ++i) {
        Scene scene;
        const std::string type = "Type" + std::to_string(i);
        scene.add(type, i);
        scene.add("Person", i);
        m_types[type] = {type, "Person"};
        m_view.begin(scene.m_agents, CSTimeStamp(i, 0.0, 0.0), m_types);
        ASSERT_EQ(ofType("Person"), Ids{101}) << i;
        if (i % 500 == 0) {
            ASSERT_EQ(ofType(type), (Ids{100, 101})) << i;
        }
    }
}

// Lists and values of random scenes are those of a walk over the agents.
TEST_F(FrameViewTest, SaysWhatAWalkSays)
{
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same scenes every time
    const std::vector<std::string> names{"Agent", "Person", "Child", "Zone", "Car"};
    for (int i = 0; i < 12; ++i) {
        m_scene.add("Person", 0);
    }
    for (int frame = 1; frame <= 300; ++frame) {
        for (const auto& [id, agent] : m_scene.m_agents) {
            agent->m_type = names[random() % names.size()];
            agent->m_constant = random() % 4 == 0;
            agent->m_frameID = frame - static_cast<int>(random() % 2);
            agent->set("P", std::make_shared<CSDouble>(static_cast<double>(random())), frame);
        }
        begin(frame);
        for (const std::string type : {"Person", "Agent", "Child", "Zone"}) {
            const auto [ids, numbers] = walked(type, frame);
            ASSERT_EQ(ofType(type), ids) << frame << ' ' << type;
            const std::size_t number = m_view.typeNumber(type);
            const auto values = m_view.values(m_view.attributeNumber("P"), number);
            std::vector<double> seen;
            for (const FrameView::AgentIndex index : m_view.ofType(number)) {
                seen.push_back(values[index].m_number);
            }
            ASSERT_EQ(seen, numbers) << frame << ' ' << type;
        }
    }
}

} // namespace scenariomatch
