#include "engine/RecognisedScenarios.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

using scenariomatch::RecognisedScenarios;
using testing::ElementsAre;

namespace
{

std::shared_ptr<CSTimeStamp> at(double seconds)
{
    return std::make_shared<CSTimeStamp>(static_cast<int>(seconds), seconds, 0.0);
}

std::shared_ptr<CSScenario> modelNamed(const std::string& name)
{
    auto model = std::make_shared<CSScenario>();
    model->m_name = name;
    return model;
}

class RecognisedScenariosTest : public testing::Test
{
protected:
    void add(int id, const std::shared_ptr<CSScenario>& model, int agent, double end)
    {
        auto instance = std::make_shared<CSScenarioInstance>(model, at(end), at(end));
        instance->m_id = id;
        instance->m_bindings["p"] = std::make_shared<CSAgent>(agent, false);
        m_scenarios.add(m_scenarios.indexOf(model->m_name), instance);
    }

    RecognisedScenarios::Entry*
    find(const std::shared_ptr<CSScenario>& model, int agent, double now)
    {
        const std::array<std::string, 1> variables = {"p"};
        const std::array<int, 1> participants = {agent};
        return m_scenarios.findExtensible(
            m_scenarios.indexOf(model->m_name), *model, variables, participants, {*at(now), 5.0});
    }

    std::vector<int> ids() const
    {
        std::vector<int> result;
        for (const auto& instance : m_scenarios.list()) {
            result.push_back(instance->m_id);
        }
        return result;
    }

    RecognisedScenarios m_scenarios;
    std::shared_ptr<CSScenario> m_inside = modelNamed("Inside");
};

} // namespace

TEST_F(RecognisedScenariosTest, SortsLatestEndFirstAndKeepsTheOrderOfEqualEnds)
{
    add(0, m_inside, 1, 10);
    add(1, m_inside, 2, 10);
    m_scenarios.sort();
    add(2, m_inside, 3, 11);
    m_scenarios.extend(*find(m_inside, 2, 11), at(11), 1.0);
    m_scenarios.sort();
    EXPECT_THAT(ids(), ElementsAre(1, 2, 0));
}

TEST_F(RecognisedScenariosTest, SortsStablyWhenTheClockGoesBack)
{
    add(0, m_inside, 1, 10);
    m_scenarios.sort();
    add(1, m_inside, 2, 8);
    add(2, m_inside, 3, 8);
    m_scenarios.sort();
    add(3, m_inside, 4, 9);
    m_scenarios.sort();
    EXPECT_THAT(ids(), ElementsAre(0, 3, 1, 2));
    add(4, m_inside, 5, 10);
    m_scenarios.sort();
    EXPECT_THAT(ids(), ElementsAre(0, 4, 3, 1, 2));
    add(5, m_inside, 6, 11);
    m_scenarios.sort();
    EXPECT_THAT(ids(), ElementsAre(5, 0, 4, 3, 1, 2));
}

TEST_F(RecognisedScenariosTest, FindsTheFirstOfTheSameParticipantsWithinTheProlongation)
{
    add(0, m_inside, 1, 10);
    add(1, m_inside, 1, 10);
    m_scenarios.sort();
    EXPECT_EQ(find(m_inside, 1, 10), nullptr);
    ASSERT_NE(find(m_inside, 1, 12), nullptr);
    EXPECT_EQ(find(m_inside, 1, 12)->instance->m_id, 0);
    EXPECT_EQ(find(m_inside, 1, 16), nullptr);
    EXPECT_EQ(find(m_inside, 2, 12), nullptr);
}

TEST_F(RecognisedScenariosTest, ComparesTheVariablesOfTheEarlierOneWhenModelsShareAName)
{
    add(0, m_inside, 1, 10);
    add(1, modelNamed("Inside"), 2, 10);
    m_scenarios.sort();
    EXPECT_EQ(find(m_inside, 2, 12)->instance->m_id, 1);
    EXPECT_EQ(find(modelNamed("Inside"), 1, 12)->instance->m_id, 0);
}

TEST_F(RecognisedScenariosTest, GivesTheInstancesOfAParticipantInListOrder)
{
    m_scenarios.indexByParticipant("Inside", "p");
    add(0, m_inside, 1, 10);
    add(1, m_inside, 2, 10);
    add(2, m_inside, 1, 10);
    m_scenarios.sort();
    add(3, m_inside, 1, 11);
    m_scenarios.sort();
    std::vector<int> found;
    for (const auto* entry : m_scenarios.ofParticipant("Inside", "p", 1)->items()) {
        found.push_back(entry->instance->m_id);
    }
    EXPECT_THAT(found, ElementsAre(3, 0, 2));
    EXPECT_EQ(m_scenarios.ofParticipant("Inside", "p", 7), nullptr);
}

TEST_F(RecognisedScenariosTest, IndexesWhatIsAlreadyThere)
{
    add(0, m_inside, 1, 10);
    m_scenarios.sort();
    m_scenarios.indexByParticipant("Inside", "p");
    ASSERT_NE(m_scenarios.ofParticipant("Inside", "p", 1), nullptr);
    EXPECT_EQ(m_scenarios.ofParticipant("Inside", "p", 1)->items().size(), 1U);
}

TEST_F(RecognisedScenariosTest, RemovesTheExpiredTail)
{
    add(0, m_inside, 1, 10);
    m_scenarios.sort();
    add(1, m_inside, 2, 20);
    m_scenarios.sort();
    std::vector<int> expired;
    const auto note = [&](const CSScenarioInstance& instance) { expired.push_back(instance.m_id); };
    m_scenarios.removeExpired(*at(70), 60.0, note);
    EXPECT_THAT(expired, ElementsAre());
    m_scenarios.removeExpired(*at(71), 60.0, note);
    EXPECT_THAT(expired, ElementsAre(0));
    EXPECT_THAT(ids(), ElementsAre(1));
}

TEST_F(RecognisedScenariosTest, RemovesAllBehindTheFirstExpiredOneOfAnUnsortedList)
{
    add(0, m_inside, 1, 10);
    add(1, m_inside, 2, 90);
    std::vector<int> expired;
    m_scenarios.removeExpired(*at(91), 60.0, [&](const CSScenarioInstance& instance) {
        expired.push_back(instance.m_id);
    });
    EXPECT_THAT(expired, ElementsAre(0));
    EXPECT_THAT(ids(), ElementsAre());
}
