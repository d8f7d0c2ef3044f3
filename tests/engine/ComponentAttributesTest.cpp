#include "engine/ComponentAttributes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

namespace scenariomatch
{

namespace
{

std::shared_ptr<CSTimeStamp> stamp(int frame)
{
    return std::make_shared<CSTimeStamp>(frame, 0.1 * frame, 0.0);
}

// A value with its flag, position and history, in one line.
std::string textOf(const CSBasicType* value)
{
    if (value == nullptr) {
        return "none";
    }
    std::ostringstream text;
    if (const auto* interval = dynamic_cast<const CSInterval*>(value)) {
        text << interval->m_start.get() << ".." << interval->m_end.get();
    } else {
        text << toString(value);
    }
    text << (value->m_flag ? "! @" : " @") << value->m_frame << " [";
    for (const auto& [frame, old] : value->m_history) {
        text << frame << ": " << textOf(old.get()) << "; ";
    }
    return text.str() + "]";
}

std::string textOf(const CSAgent& agent)
{
    std::ostringstream text;
    for (const auto& [name, value] : agent.m_attributes) {
        text << name << " = " << textOf(value.get()) << '\n';
    }
    for (const auto& [frame, count] : agent.m_frames) {
        text << frame << ' ';
    }
    text << agent.m_frameID;
    return text.str();
}

class ComponentAttributesTest : public ::testing::Test
{
protected:
    void SetUp() override { startAnew(); }

    void TearDown() override { CSAgent::m_historySize = 1; }

    void startAnew()
    {
        m_late = CSAgent(1, false);
        m_eager = CSAgent(1, false);
        auto late = std::make_unique<ComponentAttributes>("Low");
        m_attributes = late.get();
        m_late.m_late.hold(std::move(late));
    }

    // Renews late attributes of one agent and enters those of the other at once.
    void renew(int start, int end, int frame)
    {
        const auto from = stamp(start);
        const auto to = stamp(end);
        m_attributes->renew(m_late, from, to, frame);
        m_eager.set("Interval", std::make_shared<CSInterval>(from, to), frame);
        m_eager.setFrameID(frame);
        m_eager.set("Name", std::make_shared<CSString>("Low"), frame);
    }

    void expectTheSame()
    {
        m_late.makeUp();
        ASSERT_EQ(textOf(m_late), textOf(m_eager));
    }

    // Renews at random and looks now and then. Frames follow each other, or some come twice, or
    // some go back.
    void renewAtRandom(std::mt19937 random)
    {
        const auto looks = 1 + random() % 20;
        const bool goesBack = random() % 3 == 0;
        const bool repeats = random() % 2 == 0;
        int frame = 10;
        for (int step = 0; step < 60; ++step) {
            const auto move = repeats ? random() % 6 : 2 + random() % 4;
            if (move > 1) {
                frame += static_cast<int>(move) - 1;
            } else if (goesBack && move == 0) {
                frame -= static_cast<int>(random() % 4);
            }
            renew(10, frame, frame);
            if (random() % looks == 0) {
                expectTheSame();
            }
        }
        expectTheSame();
    }

    CSAgent m_late{1, false};
    CSAgent m_eager{1, false};
    ComponentAttributes* m_attributes = nullptr;
};

} // namespace

TEST_F(ComponentAttributesTest, EntersNothingUntilSomebodyLooks)
{
    renew(1, 2, 2);
    EXPECT_TRUE(m_late.m_attributes.empty());
    EXPECT_TRUE(m_late.m_frames.empty());
    EXPECT_NE(m_late.get("Interval"), nullptr);
    EXPECT_EQ(textOf(m_late), textOf(m_eager));
}

TEST_F(ComponentAttributesTest, TellsIntervalAndNameUntilTheyAreMade)
{
    EXPECT_TRUE(m_attributes->interval().isNone());
    EXPECT_TRUE(m_attributes->name().isNone());
    renew(1, 2, 2);
    const auto from = stamp(1);
    const auto to = stamp(3);
    m_attributes->renew(m_late, from, to, 3);
    EXPECT_EQ(m_attributes->interval().m_interval.start, from.get());
    EXPECT_EQ(m_attributes->interval().m_interval.end, to.get());
    EXPECT_EQ(textOf(m_attributes->name().m_object), "Low @0 []");
    m_late.makeUp();
    EXPECT_TRUE(m_attributes->interval().isNone());
    EXPECT_TRUE(m_attributes->name().isNone());
}

TEST_F(ComponentAttributesTest, MayBeReadByModels)
{
    EXPECT_TRUE(m_attributes->isRead());
}

TEST_F(ComponentAttributesTest, EntersNothingTwice)
{
    CSAgent::m_historySize = 3;
    renew(1, 1, 1);
    renew(1, 2, 2);
    m_late.makeUp();
    m_late.makeUp();
    EXPECT_EQ(textOf(m_late), textOf(m_eager));
    renew(1, 3, 3);
    m_late.makeUp();
    EXPECT_EQ(textOf(m_late), textOf(m_eager));
}

TEST_F(ComponentAttributesTest, FlagsTheFirstValueAlone)
{
    renew(1, 1, 1);
    EXPECT_TRUE(m_late.get("Interval")->m_flag);
    EXPECT_TRUE(m_late.get("Name")->m_flag);
    renew(1, 2, 2);
    EXPECT_FALSE(m_late.get("Interval")->m_flag);
    EXPECT_FALSE(m_late.get("Name")->m_flag);
}

TEST_F(ComponentAttributesTest, FlagsNoneWhenTheFirstIsForgotten)
{
    for (int frame = 0; frame < 40; ++frame) {
        renew(0, frame, frame);
    }
    const auto interval = m_late.get("Interval");
    EXPECT_FALSE(interval->m_flag);
    ASSERT_EQ(interval->m_history.size(), 1U);
    EXPECT_FALSE(interval->m_history.begin()->second->m_flag);
    EXPECT_EQ(textOf(m_late), textOf(m_eager));
}

TEST_F(ComponentAttributesTest, EntersWhatIsLateBeforeTheClockGoesBack)
{
    renew(1, 5, 5);
    EXPECT_TRUE(m_late.m_attributes.empty());
    renew(1, 3, 3);
    EXPECT_FALSE(m_late.m_attributes.empty());
    m_late.makeUp();
    EXPECT_EQ(textOf(m_late), textOf(m_eager));
}

TEST_F(ComponentAttributesTest, KeepsNoMoreStampsThanTheHistoriesDo)
{
    std::vector<std::weak_ptr<CSTimeStamp>> ends;
    for (int frame = 0; frame < 1000; ++frame) {
        const auto end = stamp(frame);
        ends.push_back(end);
        m_attributes->renew(m_late, end, end, frame);
    }
    const auto kept =
        std::count_if(ends.begin(), ends.end(), [](const auto& end) { return !end.expired(); });
    EXPECT_LE(kept, 10);
    EXPECT_GE(kept, 2);
}

// Whatever is renewed and whenever somebody looks, one sees what would have been entered at once.
TEST_F(ComponentAttributesTest, IsWhatWouldHaveBeenEnteredAtOnce)
{
    for (const int historySize : {0, 1, 3}) {
        for (unsigned seed = 0; seed < 400; ++seed) {
            SCOPED_TRACE("history of " + std::to_string(historySize));
            SCOPED_TRACE("seed " + std::to_string(seed));
            CSAgent::m_historySize = historySize;
            startAnew();
            renewAtRandom(std::mt19937(seed));
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

} // namespace scenariomatch
