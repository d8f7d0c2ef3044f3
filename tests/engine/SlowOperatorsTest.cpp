#include "engine/SlowOperators.h"

#include "tests/scenario/FakeOperators.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace scenariomatch
{

namespace
{

class SlowOperatorsTest : public ::testing::Test
{
protected:
    void runFrame()
    {
        m_slow.startFrame();
        callOperator(m_op, {});
        m_slow.endFrame([this](const std::string& message) { m_messages.push_back(message); });
    }

    SlowOperators m_slow;
    FakeOperator m_op{"reach"};
    std::vector<std::string> m_messages;
};

} // namespace

TEST_F(SlowOperatorsTest, AreReportedOnceInTheFrameAfterASlowOne)
{
    // Every frame takes longer than this.
    m_slow.setBound(std::chrono::milliseconds(0));
    runFrame();
    EXPECT_TRUE(m_messages.empty());
    runFrame();
    ASSERT_EQ(m_messages.size(), 1U);
    EXPECT_EQ(m_messages.front(), "Operator reach is slow: its calls took 0.00 s of a frame");
    runFrame();
    EXPECT_EQ(m_messages.size(), 1U);
}

TEST_F(SlowOperatorsTest, AreNotTimedWhileFramesAreFast)
{
    m_slow.setBound(std::chrono::hours(1));
    for (int i = 0; i < 3; ++i) {
        m_slow.startFrame();
        EXPECT_FALSE(areOperatorsWatched);
        m_slow.endFrame({});
    }
}

TEST_F(SlowOperatorsTest, AreTimedDuringTheFrameAlone)
{
    m_slow.setBound(std::chrono::milliseconds(0));
    runFrame();
    m_slow.startFrame();
    EXPECT_TRUE(areOperatorsWatched);
    m_slow.endFrame({});
    EXPECT_FALSE(areOperatorsWatched);
}

} // namespace scenariomatch
