#include "engine/Seeding.h"

#include "engine/Agents.h"
#include "tests/engine/PlanMaterial.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace scenariomatch
{

namespace
{

void addComponent(
    CSScenario& model,
    const std::string& variable,
    const std::string& subModel,
    const std::vector<std::string>& arguments)
{
    auto component = std::make_unique<CComponent>();
    component->m_variable = variable;
    component->m_modelName = subModel;
    component->m_arguments = arguments;
    model.m_components.push_back(std::move(component));
}

// A recognised instance of Low, which involves a person and a zone.
class SeedingTest : public ::testing::Test
{
protected:
    SeedingTest()
        : m_low(modelWith("Low", {{"p", "Person"}, {"z", "Zone"}}))
        , m_parent(modelWith("High", {{"a", "Person"}, {"b", "Zone"}}))
    {
    }

    Seeding seeding() { return {m_parent, *m_low, m_variables}; }

    RecognisedEntry recognised(const CConstraint::Bindings& bindings) const
    {
        RecognisedEntry entry;
        entry.instance = std::make_shared<CSScenarioInstance>(m_low, nullptr, nullptr);
        entry.instance->m_bindings = bindings;
        entry.identifiers = {1, 2};
        entry.component = m_component;
        return entry;
    }

    RecognisedEntry recognised() const { return recognised({{"p", m_person}, {"z", m_zone}}); }

    std::shared_ptr<CSScenarioInstance> seed() { return seeding().seed(recognised(), m_now); }

    // Of what candidates bind, variable by variable.
    std::vector<int> identifiers()
    {
        const Seeding seeding = this->seeding();
        std::vector<int> found;
        for (std::size_t place = 0; place < seeding.variables().size(); ++place) {
            found.push_back(seeding.identifier(place, recognised()));
        }
        return found;
    }

    std::vector<std::string> m_variables{"p", "z"};
    std::shared_ptr<CSScenario> m_low;
    std::shared_ptr<CSScenario> m_parent;
    std::shared_ptr<CSAgent> m_person = std::make_shared<CSAgent>(1, false);
    std::shared_ptr<CSAgent> m_zone = std::make_shared<CSAgent>(2, true);
    std::shared_ptr<CSAgent> m_component = std::make_shared<CSAgent>(3, false);
    std::shared_ptr<CSTimeStamp> m_now = std::make_shared<CSTimeStamp>(7, 1.0, 0.0);
};

using ::testing::ElementsAre;

using Bindings = CConstraint::Bindings;

} // namespace

TEST_F(SeedingTest, BindsComponentAndItsArguments)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    EXPECT_EQ(seeding().filled(), 1);
    EXPECT_EQ(seeding().parent(), m_parent);
    const auto made = seed();
    EXPECT_EQ(made->m_bindings, (Bindings{{"a", m_person}, {"b", m_zone}, {"c", m_component}}));
    EXPECT_EQ(made->m_scenario, m_parent);
    EXPECT_EQ(made->m_start, m_now);
    EXPECT_EQ(made->m_end, m_now);
    EXPECT_EQ(made->m_id, 0);
    EXPECT_EQ(made->m_confidence, 1.0);
}

TEST_F(SeedingTest, KnowsWhomCandidatesBindBeforeTheyAreMade)
{
    addComponent(*m_parent, "b", "Low", {"c", "a"});
    EXPECT_THAT(seeding().variables(), ElementsAre("a", "b", "c"));
    EXPECT_THAT(identifiers(), ElementsAre(2, 3, 1));
    const RecognisedEntry entry = recognised();
    EXPECT_EQ(seeding().agent(0, entry), m_zone);
    EXPECT_EQ(seeding().agent(1, entry), m_component);
    EXPECT_EQ(seeding().agent(2, entry), m_person);
    EXPECT_EQ(*seeding().agentOf("c", entry), m_person);
    EXPECT_EQ(seeding().agentOf("d", entry), nullptr);
}

TEST_F(SeedingTest, IsTriggeredByTheComponentThatIsWaitedFor)
{
    addComponent(*m_parent, "c", "Low", {"a"});
    addComponent(*m_parent, "d", "Other", {"b"});
    m_parent->m_triggerIndex = 0;
    EXPECT_TRUE(seeding().isTriggered());
    m_parent->m_triggerIndex = 1;
    EXPECT_FALSE(seeding().isTriggered());
}

TEST_F(SeedingTest, BindsNothingForOtherComponentsAndArgumentsLeftOut)
{
    addComponent(*m_parent, "c", "Low", {"", "b"});
    addComponent(*m_parent, "d", "Other", {"a", "x"});
    addComponent(*m_parent, "e", "Low", {"f"});
    EXPECT_EQ(seeding().filled(), 2);
    EXPECT_EQ(
        seed()->m_bindings,
        (Bindings{{"b", m_zone}, {"c", m_component}, {"e", m_component}, {"f", m_person}}));
}

TEST_F(SeedingTest, LeavesOutTheComponentThatIsLookedUp)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    addComponent(*m_parent, "d", "Low", {"x", "b"});
    m_parent->m_skipIndex = 0;
    EXPECT_EQ(seeding().filled(), 1);
    EXPECT_EQ(seed()->m_bindings, (Bindings{{"b", m_zone}, {"d", m_component}, {"x", m_person}}));
}

TEST_F(SeedingTest, LetsTheLastBindingCountWhereTheSubModelComesTwice)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    addComponent(*m_parent, "d", "Low", {"b", "a"});
    EXPECT_EQ(seeding().filled(), 2);
    EXPECT_EQ(
        seed()->m_bindings,
        (Bindings{{"a", m_zone}, {"b", m_person}, {"c", m_component}, {"d", m_component}}));
    EXPECT_THAT(identifiers(), ElementsAre(2, 1, 3, 3));
}

TEST_F(SeedingTest, BindsNobodyWhereTheInstanceHasNobody)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    const Bindings expected{{"a", nullptr}, {"b", m_zone}, {"c", m_component}};
    EXPECT_EQ(seeding().seed(recognised({{"z", m_zone}}), m_now)->m_bindings, expected);
    EXPECT_EQ(
        seeding().seed(recognised({{"p", nullptr}, {"z", m_zone}}), m_now)->m_bindings, expected);
}

TEST_F(SeedingTest, FillsNothingOfAParentWithoutTheModel)
{
    addComponent(*m_parent, "d", "Other", {"a"});
    EXPECT_EQ(seeding().filled(), 0);
    EXPECT_TRUE(seed()->m_bindings.empty());
}

TEST_F(SeedingTest, MakesEachCandidateAnew)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    EXPECT_NE(seed(), seed());
}

} // namespace scenariomatch
