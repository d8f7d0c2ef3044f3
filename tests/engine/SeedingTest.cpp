#include "engine/Seeding.h"

#include "tests/engine/PlanMaterial.h"

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

    std::shared_ptr<CSScenarioInstance> seed(Seeding& seeding, std::uint64_t frame)
    {
        const std::vector<const std::shared_ptr<CSAgent>*> agents{&m_person, &m_zone};
        return seeding.seed(agents, m_component, m_now, frame);
    }

    Seeding seeding() { return {m_parent, *m_low, m_variables}; }

    std::vector<std::string> m_variables{"p", "z"};
    std::shared_ptr<CSScenario> m_low;
    std::shared_ptr<CSScenario> m_parent;
    std::shared_ptr<CSAgent> m_person = std::make_shared<CSAgent>(1, false);
    std::shared_ptr<CSAgent> m_zone = std::make_shared<CSAgent>(2, true);
    std::shared_ptr<CSAgent> m_component = std::make_shared<CSAgent>(3, false);
    std::shared_ptr<CSTimeStamp> m_now = std::make_shared<CSTimeStamp>(7, 1.0, 0.0);
};

using Bindings = CConstraint::Bindings;

} // namespace

TEST_F(SeedingTest, BindsComponentAndItsArguments)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    Seeding seeding = this->seeding();
    EXPECT_EQ(seeding.filled(), 1);
    EXPECT_EQ(seeding.parent(), m_parent);
    const auto made = seed(seeding, 1);
    EXPECT_EQ(made->m_bindings, (Bindings{{"a", m_person}, {"b", m_zone}, {"c", m_component}}));
    EXPECT_EQ(made->m_scenario, m_parent);
    EXPECT_EQ(made->m_start, m_now);
    EXPECT_EQ(made->m_end, m_now);
    EXPECT_EQ(made->m_id, 0);
    EXPECT_EQ(made->m_confidence, 1.0);
}

TEST_F(SeedingTest, BindsNothingForOtherComponentsAndArgumentsLeftOut)
{
    addComponent(*m_parent, "c", "Low", {"", "b"});
    addComponent(*m_parent, "d", "Other", {"a", "x"});
    addComponent(*m_parent, "e", "Low", {"f"});
    Seeding seeding = this->seeding();
    EXPECT_EQ(seeding.filled(), 2);
    EXPECT_EQ(
        seed(seeding, 1)->m_bindings,
        (Bindings{{"b", m_zone}, {"c", m_component}, {"e", m_component}, {"f", m_person}}));
}

TEST_F(SeedingTest, LeavesOutTheComponentThatIsLookedUp)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    addComponent(*m_parent, "d", "Low", {"x", "b"});
    m_parent->m_skipIndex = 0;
    Seeding seeding = this->seeding();
    EXPECT_EQ(seeding.filled(), 1);
    EXPECT_EQ(
        seed(seeding, 1)->m_bindings,
        (Bindings{{"b", m_zone}, {"d", m_component}, {"x", m_person}}));
}

TEST_F(SeedingTest, LetsTheLastBindingCountWhereTheSubModelComesTwice)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    addComponent(*m_parent, "d", "Low", {"b", "a"});
    Seeding seeding = this->seeding();
    EXPECT_EQ(seeding.filled(), 2);
    EXPECT_EQ(
        seed(seeding, 1)->m_bindings,
        (Bindings{{"a", m_zone}, {"b", m_person}, {"c", m_component}, {"d", m_component}}));
}

TEST_F(SeedingTest, BindsNobodyWhereTheInstanceHasNobody)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    Seeding seeding = this->seeding();
    const std::vector<const std::shared_ptr<CSAgent>*> agents{nullptr, &m_zone};
    const auto made = seeding.seed(agents, m_component, m_now, 1);
    EXPECT_EQ(made->m_bindings, (Bindings{{"a", nullptr}, {"b", m_zone}, {"c", m_component}}));
}

TEST_F(SeedingTest, BindsNobodyForAVariableThatInstancesDoNotBind)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    m_variables = {"p"};
    Seeding seeding = this->seeding();
    EXPECT_EQ(
        seed(seeding, 1)->m_bindings,
        (Bindings{{"a", m_person}, {"b", nullptr}, {"c", m_component}}));
}

TEST_F(SeedingTest, FillsNothingOfAParentWithoutTheModel)
{
    addComponent(*m_parent, "d", "Other", {"a"});
    Seeding seeding = this->seeding();
    EXPECT_EQ(seeding.filled(), 0);
    EXPECT_TRUE(seed(seeding, 1)->m_bindings.empty());
}

TEST_F(SeedingTest, MakesEachCandidateOfAFrameAnew)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    Seeding seeding = this->seeding();
    const CSScenarioInstance* first = seed(seeding, 1).get();
    const CSScenarioInstance* second = seed(seeding, 1).get();
    EXPECT_NE(first, second);
}

TEST_F(SeedingTest, TakesUpWhatNobodyHasKeptInAnotherFrame)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    Seeding seeding = this->seeding();
    const auto kept = seed(seeding, 1);
    const CSScenarioInstance* free = seed(seeding, 1).get();
    const Bindings before = kept->m_bindings;
    m_person = std::make_shared<CSAgent>(9, false);
    const auto first = seed(seeding, 2);
    const auto second = seed(seeding, 2);
    EXPECT_NE(first, kept);
    EXPECT_EQ(second.get(), free);
    EXPECT_EQ(kept->m_bindings, before);
    EXPECT_EQ(second->m_bindings.at("a"), m_person);
}

TEST_F(SeedingTest, ResetsWhatItTakesUp)
{
    addComponent(*m_parent, "c", "Low", {"a", "b"});
    Seeding seeding = this->seeding();
    CSScenarioInstance* used = nullptr;
    {
        const auto made = seed(seeding, 1);
        used = made.get();
        made->m_id = 5;
        made->m_confidence = 0.5;
        made->m_text = "text";
        made->m_end = nullptr;
        made->m_bindings["a"] = nullptr;
    }
    m_now = std::make_shared<CSTimeStamp>(9, 2.0, 0.0);
    const auto again = seed(seeding, 2);
    ASSERT_EQ(again.get(), used);
    EXPECT_EQ(again->m_id, 0);
    EXPECT_EQ(again->m_confidence, 1.0);
    EXPECT_EQ(again->m_text, "");
    EXPECT_EQ(again->m_start, m_now);
    EXPECT_EQ(again->m_end, m_now);
    EXPECT_EQ(again->m_bindings.at("a"), m_person);
}

} // namespace scenariomatch
