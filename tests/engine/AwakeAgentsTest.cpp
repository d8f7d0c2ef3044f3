#include "engine/AwakeAgents.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace scenariomatch
{

namespace
{

class AwakeAgentsTest : public ::testing::Test
{
protected:
    std::shared_ptr<CSAgent> add(int id, int frame)
    {
        auto agent = std::make_shared<CSAgent>(100 + id, false);
        agent->m_engineID = id;
        agent->setFrameID(frame);
        m_all[id] = agent;
        m_awake.add(agent);
        return agent;
    }

    // Reviews the frame and gives the identifiers of those looked at.
    std::vector<int> review(int frame)
    {
        std::vector<int> met;
        m_awake.review(frame, [&](const CSAgent& agent) {
            met.push_back(agent.m_engineID);
            return true;
        });
        return met;
    }

    std::vector<int> awake() const
    {
        std::vector<int> ids;
        for (const auto& [id, agent] : m_awake.table()) {
            ids.push_back(id);
        }
        return ids;
    }

    AwakeAgents::Table m_all;
    AwakeAgents m_awake;
};

using Ids = std::vector<int>;

} // namespace

TEST_F(AwakeAgentsTest, PutsToSleepWhoIsNotInTheFrame)
{
    add(1, 5);
    add(2, 6);
    m_awake.startFrame(6, m_all);
    EXPECT_EQ(review(6), (Ids{1, 2}));
    EXPECT_EQ(awake(), Ids{2});
}

TEST_F(AwakeAgentsTest, LetsStayWhoIsInALaterFrame)
{
    add(1, 9);
    m_awake.startFrame(6, m_all);
    review(6);
    EXPECT_EQ(awake(), Ids{1});
}

TEST_F(AwakeAgentsTest, LetsStayWhoseListOfFramesHasALaterOne)
{
    const auto agent = add(1, 9);
    agent->m_frameID = 3;
    m_awake.startFrame(6, m_all);
    review(6);
    EXPECT_EQ(awake(), Ids{1});
}

TEST_F(AwakeAgentsTest, LetsConstantsStay)
{
    add(1, 0)->m_constant = true;
    m_awake.startFrame(6, m_all);
    review(6);
    EXPECT_EQ(awake(), Ids{1});
}

TEST_F(AwakeAgentsTest, WakesWhoIsSeenAgain)
{
    const auto agent = add(1, 5);
    m_awake.startFrame(6, m_all);
    review(6);
    agent->setFrameID(7);
    EXPECT_EQ(awake(), Ids());
    m_awake.startFrame(7, m_all);
    EXPECT_EQ(awake(), Ids{1});
    review(7);
    EXPECT_EQ(awake(), Ids{1});
}

TEST_F(AwakeAgentsTest, WakesWhoIsFreed)
{
    const auto agent = add(1, 5);
    m_awake.startFrame(6, m_all);
    review(6);
    agent->wakeUp();
    m_awake.wakeSeen(m_all);
    EXPECT_EQ(awake(), Ids{1});
}

TEST_F(AwakeAgentsTest, LetsSleepWhoIsNotFreedTwice)
{
    const auto agent = add(1, 5);
    m_awake.startFrame(6, m_all);
    review(6);
    agent->wakeUp();
    agent->wakeUp();
    m_awake.wakeSeen(m_all);
    review(6);
    EXPECT_EQ(awake(), Ids());
    m_awake.wakeSeen(m_all);
    EXPECT_EQ(awake(), Ids());
}

TEST_F(AwakeAgentsTest, WakesEveryoneWhenTheFrameNumberDoesNotGrow)
{
    add(1, 5);
    add(2, 5);
    m_awake.startFrame(6, m_all);
    review(6);
    EXPECT_EQ(awake(), Ids());
    m_awake.startFrame(6, m_all);
    EXPECT_EQ(awake(), (Ids{1, 2}));
    review(6);
    EXPECT_EQ(awake(), Ids());
    m_awake.startFrame(5, m_all);
    EXPECT_EQ(awake(), (Ids{1, 2}));
}

TEST_F(AwakeAgentsTest, WakesEveryoneUntilTheLatestFrameIsPassed)
{
    add(1, 5);
    m_awake.startFrame(10, m_all);
    review(10);
    m_awake.startFrame(8, m_all);
    review(8);
    m_awake.startFrame(9, m_all);
    EXPECT_EQ(awake(), Ids{1});
    review(9);
    m_awake.startFrame(11, m_all);
    EXPECT_EQ(awake(), Ids());
}

TEST_F(AwakeAgentsTest, TakesOutWhoDoesNotRemain)
{
    const auto gone = add(1, 6);
    add(2, 6);
    m_awake.startFrame(6, m_all);
    m_awake.review(6, [](const CSAgent& agent) { return agent.m_engineID != 1; });
    EXPECT_EQ(awake(), Ids{2});
    // Who was taken out does not sleep: nothing wakes it.
    EXPECT_EQ(gone->m_sleepers, nullptr);
}

TEST_F(AwakeAgentsTest, ForgetsSleepersThatHaveBeenRemoved)
{
    const auto agent = add(1, 5);
    m_awake.startFrame(6, m_all);
    review(6);
    m_all.clear();
    agent->wakeUp();
    m_awake.startFrame(7, m_all);
    EXPECT_EQ(awake(), Ids());
}

TEST_F(AwakeAgentsTest, TakesTheOthersForAwakeWhenReplaced)
{
    const auto asleep = add(1, 5);
    add(2, 6);
    m_awake.startFrame(6, m_all);
    review(6);
    asleep->wakeUp();
    AwakeAgents::Table others{{1, asleep}};
    m_awake.replace(others);
    EXPECT_EQ(awake(), Ids{1});
    EXPECT_EQ(asleep->m_sleepers, nullptr);
    review(6);
    EXPECT_EQ(awake(), Ids());
}

TEST_F(AwakeAgentsTest, KeepsTheNewAgentWhereIdentifiersAreUsedAgain)
{
    add(1, 6);
    const auto second = add(1, 6);
    ASSERT_EQ(m_awake.table().size(), 1U);
    EXPECT_EQ(m_awake.table().at(1), second);
}

// Whoever is in a frame is awake in it, however agents come, go and are freed.
TEST_F(AwakeAgentsTest, IsNeverAsleepInAFrameThatHasTheAgent)
{
    std::mt19937 random(3); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same way every time
    std::size_t slept = 0;
    for (int id = 0; id < 8; ++id) {
        add(id, 0);
    }
    int frame = 0;
    for (int step = 0; step < 2000; ++step) {
        frame += random() % 10 == 0 ? -static_cast<int>(random() % 4) : 1;
        std::set<int> present;
        for (const auto& [id, agent] : m_all) {
            if (random() % 3 == 0) {
                agent->setFrameID(frame);
                present.insert(id);
            } else if (random() % 9 == 0) {
                agent->wakeUp();
            }
        }
        m_awake.startFrame(frame, m_all);
        for (const int id : present) {
            ASSERT_TRUE(m_awake.table().contains(id)) << step;
        }
        review(frame);
        for (const auto& [id, agent] : m_all) {
            const bool isAsleep = !m_awake.table().contains(id);
            ASSERT_EQ(isAsleep, agent->m_sleepers != nullptr) << step;
            slept += isAsleep ? 1U : 0U;
        }
    }
    EXPECT_GT(slept, 1000U);
}

} // namespace scenariomatch
