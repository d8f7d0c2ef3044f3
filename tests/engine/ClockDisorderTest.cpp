#include "EngineFixture.h"
#include "tests/reference/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <vector>

namespace scenariomatch
{

namespace
{

constexpr int kFrames = 300;
constexpr double kHour = 3600.0;
constexpr double kDay = 24.0 * kHour;

// A clock that runs, stands still, goes back, and jumps by seconds, hours and days, and frame
// numbers that do the same.
class WildClock
{
public:
    explicit WildClock(Random& random)
        : m_random(random)
    {
    }

    void next()
    {
        static const std::vector<double> kSteps{
            0.04, 0.04, 0.04, 1.0, 0.0, -0.04, -1.0, -2.5, kHour, -kHour, kDay, -kDay, 12.0, -30.0};
        static const std::vector<int> kFrameSteps{1, 1, 1, 1, 0, -1, -20, 1000};
        m_seconds += m_random.of(kSteps);
        m_frame += m_random.of(kFrameSteps);
    }

    double seconds() const { return m_seconds; }

    int frame() const { return m_frame; }

private:
    Random& m_random;
    double m_seconds = 1.0e9;
    int m_frame = 100;
};

class ClockDisorder : public EngineFixture, public ::testing::WithParamInterface<std::uint32_t>
{
protected:
    void readTwoLevels()
    {
        readModels(
            "PrimitiveState(Low, PhysicalObjects((p : Person))\n Constraints((2 above p->P)))\n"
            "PrimitiveState(High, PhysicalObjects((p : Person))\n Constraints((p->P above 1)))\n"
            "CompositeEvent(Rise, PhysicalObjects((p : Person))\n"
            " Components((c1 : PrimitiveState Low(p))\n (c2 : PrimitiveState High(p)))\n"
            " Constraints((c1->Interval before c2->Interval)))\n",
            "Low,High,Rise");
        CSEngine::m_historySize = 3;
        CSAgent::m_historySize = 3;
        m_engine.setConstTimeSearch(60.0);
        m_engine.m_constProlongation = 1.0;
    }

    // What must hold after every frame, whatever the clock did.
    void expectOrder() const
    {
        const auto& list = m_engine.recognisedScenarios();
        EXPECT_TRUE(std::is_sorted(list.begin(), list.end(), compare_scenario_end));
        std::set<int> ids;
        for (const auto& instance : list) {
            EXPECT_TRUE(ids.insert(instance->m_id).second);
            EXPECT_LE(instance->m_end->duration(m_engine.currentTime()), 60.0);
            for (const auto& [variable, agent] : instance->m_bindings) {
                ASSERT_NE(agent, nullptr);
                const bool isPart = agent->m_type == "Component";
                EXPECT_TRUE(isPart || agent->m_instances.contains(instance->m_id));
                EXPECT_TRUE(isPart || m_engine.agents().contains(agent->m_engineID));
            }
        }
        expectNothingLeftOver(ids);
        EXPECT_LE(CSEngine::h_currentTime.size(), 3U);
    }

    // Nobody remembers an instance that has been forgotten.
    void expectNothingLeftOver(const std::set<int>& ids) const
    {
        for (const auto& [id, agent] : m_engine.agents()) {
            for (const auto& [instance, one] : agent->m_instances) {
                EXPECT_TRUE(ids.contains(instance));
            }
        }
        for (const auto& [id, component] : m_engine.components()) {
            EXPECT_TRUE(ids.contains(id));
        }
    }
};

} // namespace

TEST_P(ClockDisorder, LeavesWhatIsRecognisedInTheOrderOfItsEnds)
{
    Random random(GetParam());
    readTwoLevels();
    WildClock clock(random);
    std::size_t most = 0;
    for (int i = 0; i < kFrames && !HasFailure(); ++i) {
        clock.next();
        std::vector<Actor> actors;
        for (int host = 0; host < 4; ++host) {
            if (!random.oneIn(3)) {
                actors.push_back({host, "Person", static_cast<double>(random.pick(4))});
            }
        }
        runFrame(clock.frame(), clock.seconds(), actors);
        expectOrder();
        most = std::max(most, m_engine.recognisedScenarios().size());
    }
    EXPECT_GT(most, 4U);
}

INSTANTIATE_TEST_SUITE_P(
    Seeds, ClockDisorder, ::testing::Range(std::uint32_t{0}, std::uint32_t{40}));

} // namespace scenariomatch
