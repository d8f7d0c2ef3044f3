#include "engine/CompositePlan.h"

#include "engine/Candidate.h"
#include "engine/ComponentAttributes.h"
#include "tests/engine/PlanMaterial.h"

#include <gtest/gtest.h>

#include <sstream>

namespace scenariomatch
{

namespace
{

// A composite of two components, with a pure, plain "before", a pure "same" on value objects and
// an impure "note", each of which writes down its calls.
class CompositePlanTest : public ::testing::Test
{
protected:
    CompositePlanTest()
        : m_before(
              "before",
              [this](const auto& arguments) {
                  m_calls += "before ";
                  const bool known = arguments.at(0).isInterval() && arguments.at(1).isInterval();
                  return CSPlainValue::boolean(
                      known && *arguments[0].m_interval.end < *arguments[1].m_interval.start, 0.5);
              })
        , m_named(
              "named",
              [this](const auto& arguments) {
                  m_calls += "named ";
                  const bool isName = arguments.at(0).m_kind == CSPlainValue::Kind::Text;
                  return CSPlainValue::boolean(
                      isName && toString(arguments[0].m_object) == toString(arguments[1].m_object));
              })
        , m_known(
              "known",
              [this](const auto& arguments) {
                  m_calls += "known ";
                  return CSPlainValue::boolean(!arguments.at(0).isNone(), 0.25);
              })
        , m_note(
              "note",
              [this](const auto& arguments) {
                  m_calls += "note ";
                  return CSPlainValue::boolean(m_noteHolds && !arguments.empty());
              })
        , m_model(modelWith("High", {{"p", "Person"}}))
        , m_instance(m_model, nullptr, nullptr)
    {
        m_known.m_description.m_plain = false;
        m_note.m_description.m_pure = false;
        for (const char* variable : {"c1", "c2"}) {
            auto component = std::make_unique<CComponent>();
            component->m_variable = variable;
            component->m_modelName = "Low";
            component->m_arguments = {"p"};
            m_model->m_components.push_back(std::move(component));
            m_instance.m_bindings[variable] = std::make_shared<CSAgent>(1, false);
        }
        m_instance.m_bindings["p"] = std::make_shared<CSAgent>(2, false);
        happen("c1", 1, 2);
        happen("c2", 3, 4);
    }

    // Renews the pseudo-agent's attributes; they are not made yet.
    void happen(const std::string& variable, int start, int end)
    {
        CSAgent& agent = *m_instance.m_bindings.at(variable);
        auto late = std::make_unique<ComponentAttributes>("Low");
        late->renew(
            agent,
            std::make_shared<CSTimeStamp>(start, start, 0.0),
            std::make_shared<CSTimeStamp>(end, end, 0.0),
            end);
        agent.m_late.hold(std::move(late));
    }

    void require(Constraint constraint) { m_model->m_constraints.push_back(std::move(constraint)); }

    Constraint before(const std::string& first, const std::string& second)
    {
        return call(m_before, attributeOf(first, "Interval"), attributeOf(second, "Interval"));
    }

    std::size_t verify()
    {
        m_calls.clear();
        CompositePlan plan(*m_model, m_promises);
        return plan.verify(m_instance);
    }

    std::string m_calls;
    bool m_noteHolds = true;
    PlainOperator m_before;
    PlainOperator m_named;
    PlainOperator m_known;
    PlainOperator m_note;
    std::shared_ptr<CSScenario> m_model;
    CSScenarioInstance m_instance;
    OperatorPromises m_promises;
};

} // namespace

TEST_F(CompositePlanTest, ReadsIntervalsThatHaveNotBeenMade)
{
    require(before("c1", "c2"));
    EXPECT_EQ(verify(), 1U);
    EXPECT_EQ(m_instance.m_confidence, 0.5);
    EXPECT_TRUE(m_instance.m_bindings["c1"]->m_attributes.empty());
    EXPECT_EQ(m_before.m_objectCalls, 0);
}

TEST_F(CompositePlanTest, ReadsIntervalsThatHaveBeenMade)
{
    require(before("c1", "c2"));
    m_instance.m_bindings["c1"]->makeUp();
    EXPECT_EQ(verify(), 1U);
    m_instance.m_bindings["c2"]->makeUp();
    EXPECT_EQ(verify(), 1U);
    happen("c1", 1, 5);
    EXPECT_EQ(verify(), 0U);
}

TEST_F(CompositePlanTest, ReadsOtherAttributesOfComponentsWhetherMadeOrNot)
{
    require(call(m_named, attributeOf("c1", "Name"), word("Low")));
    EXPECT_EQ(verify(), 1U);
    EXPECT_FALSE(m_instance.m_bindings["c1"]->m_attributes.empty());
    EXPECT_EQ(verify(), 1U);
    m_model->m_constraints.clear();
    require(call(m_named, attributeOf("c2", "Name"), word("High")));
    EXPECT_EQ(verify(), 0U);
}

TEST_F(CompositePlanTest, ReadsAttributesOfObjectsAndSeesNewOnes)
{
    require(call(m_named, attributeOf("p", "Colour"), word("red")));
    CompositePlan plan(*m_model, m_promises);
    EXPECT_EQ(plan.verify(m_instance), 0U);
    CSAgent& person = *m_instance.m_bindings["p"];
    person.set("Colour", std::make_shared<CSString>("red"), 1);
    EXPECT_EQ(plan.verify(m_instance), 1U);
    person.set("Colour", std::make_shared<CSString>("blue"), 2);
    EXPECT_EQ(plan.verify(m_instance), 0U);
}

TEST_F(CompositePlanTest, TestsInOrderUpToTheFirstThatIsFalse)
{
    require(before("c1", "c2"));
    require(call(m_note, attributeOf("c1", "Name")));
    require(call(m_known, attributeOf("c1", "Name")));
    require(before("c2", "c1"));
    require(call(m_note, attributeOf("c1", "Name")));
    EXPECT_EQ(verify(), 3U);
    EXPECT_EQ(m_calls, "before note known before ");
    EXPECT_EQ(m_instance.m_confidence, 1.0);
    m_noteHolds = false;
    EXPECT_EQ(verify(), 1U);
    EXPECT_EQ(m_calls, "before note ");
}

TEST_F(CompositePlanTest, MultipliesConfidences)
{
    require(before("c1", "c2"));
    require(call(m_known, attributeOf("c1", "Interval")));
    require(call(m_note, attributeOf("c1", "Name")));
    m_instance.m_confidence = 0.125;
    EXPECT_EQ(verify(), 3U);
    EXPECT_EQ(m_instance.m_confidence, 0.125);
    EXPECT_EQ(m_note.m_plainCalls, 0);
    EXPECT_EQ(m_known.m_plainCalls, 0);
}

TEST_F(CompositePlanTest, HoldsWithoutConstraints)
{
    m_instance.m_confidence = 0.5;
    EXPECT_EQ(verify(), 0U);
    EXPECT_EQ(m_instance.m_confidence, 1.0);
}

TEST_F(CompositePlanTest, HasNoValuesForVariablesThatAreNotBound)
{
    require(call(m_known, attributeOf("p", "Colour")));
    m_instance.m_bindings["p"]->set("Colour", std::make_shared<CSString>("red"), 1);
    EXPECT_EQ(verify(), 1U);
    m_instance.m_bindings["p"] = nullptr;
    EXPECT_EQ(verify(), 0U);
    m_instance.m_bindings.erase("p");
    EXPECT_EQ(verify(), 0U);
    m_model->m_constraints.clear();
    require(call(m_known, attributeOf("stranger", "Colour")));
    m_instance.m_bindings["stranger"] = std::make_shared<CSAgent>(4, false);
    m_instance.m_bindings["stranger"]->set("Colour", std::make_shared<CSString>("red"), 1);
    // A stranger to the model: constraints cannot name it.
    EXPECT_EQ(verify(), 0U);
}

TEST_F(CompositePlanTest, ForgetsTheAgentsOfTheInstanceBefore)
{
    require(before("c1", "c2"));
    CompositePlan plan(*m_model, m_promises);
    EXPECT_EQ(plan.verify(m_instance), 1U);
    CSScenarioInstance other(m_model, nullptr, nullptr);
    other.m_bindings["c1"] = m_instance.m_bindings["c1"];
    EXPECT_EQ(plan.verify(other), 0U);
    other.m_bindings["c2"] = m_instance.m_bindings["c2"];
    EXPECT_EQ(plan.verify(other), 1U);
}

TEST_F(CompositePlanTest, VerifiesCandidatesThatHaveNoInstancesYet)
{
    const auto low = modelWith("Low", {{"x", "Person"}});
    const std::vector<std::string> variables{"x"};
    const Seeding seeding(m_model, *low, variables);
    const auto recognised = std::make_shared<RecognisedEntry>();
    recognised->instance = std::make_shared<CSScenarioInstance>(low, nullptr, nullptr);
    recognised->instance->m_bindings["x"] = m_instance.m_bindings["p"];
    recognised->component = m_instance.m_bindings["c1"];
    Candidate candidate(recognised, seeding);
    require(call(m_known, attributeOf("c2", "Interval")));
    require(call(m_named, attributeOf("p", "Colour"), word("red")));
    CompositePlan plan(*m_model, m_promises);
    EXPECT_EQ(plan.verify(candidate), 1U);
    EXPECT_EQ(candidate.confidence(), 1.0);
    m_instance.m_bindings["p"]->set("Colour", std::make_shared<CSString>("red"), 1);
    EXPECT_EQ(plan.verify(candidate), 2U);
    EXPECT_EQ(candidate.confidence(), 0.25);
    EXPECT_EQ(candidate.instance, nullptr);
    EXPECT_EQ(candidate.made(nullptr)->m_confidence, 0.25);
    EXPECT_EQ(plan.verify(candidate), 2U);
    require(before("c1", "c2"));
    CompositePlan longer(*m_model, m_promises);
    EXPECT_EQ(longer.verify(candidate), 2U);
    EXPECT_EQ(candidate.confidence(), 1.0);
}

TEST_F(CompositePlanTest, IsFalseWhereAnOperatorIsNotLoaded)
{
    require(before("c1", "c2"));
    require(unloaded("lost", attributeOf("c1", "Interval")));
    EXPECT_EQ(verify(), 1U);
    EXPECT_EQ(m_instance.m_confidence, 1.0);
}

// The same as the plain evaluation of the instance, whatever the constraints.
TEST_F(CompositePlanTest, AgreesWithTheInstance)
{
    for (int choice = 0; choice < 64; ++choice) {
        m_model->m_constraints.clear();
        if ((choice & 1) != 0) {
            require(before("c1", "c2"));
        }
        if ((choice & 2) != 0) {
            require(call(m_known, attributeOf("c2", "Interval")));
        }
        if ((choice & 4) != 0) {
            require(call(m_note, attributeOf("c2", "Name")));
        }
        if ((choice & 8) != 0) {
            require(call(m_named, attributeOf("c2", "Name"), word("Low")));
        }
        if ((choice & 16) != 0) {
            require(call(m_known, attributeOf("p", "Colour")));
        }
        m_noteHolds = (choice & 32) == 0;
        const std::size_t held = verify();
        const double confidence = m_instance.m_confidence;
        EXPECT_EQ(m_instance.verifyConstraints(), held) << choice;
        EXPECT_EQ(m_instance.m_confidence, confidence) << choice;
    }
}

TEST_F(CompositePlanTest, PrintsTriggerLookUpsAndConstraints)
{
    m_model->m_kind = "CompositeEvent";
    auto third = std::make_unique<CComponent>();
    third->m_variable = "c3";
    third->m_modelName = "Other";
    m_model->m_components.push_back(std::move(third));
    m_model->m_triggerIndex = 1;
    m_model->m_skipIndex = 0;
    require(before("c1", "c2"));
    auto low = modelWith("Low", {{"x", "Person"}});
    CSAllScenarios scenarios;
    scenarios.m_scenariosByKind["PrimitiveState"] = {low};
    scenarios.m_parents["Low"] = {m_model};

    const CompositePlan plan(*m_model, m_promises);
    std::ostringstream text;
    plan.print(text, ComponentLookups(scenarios));
    EXPECT_EQ(
        text.str(),
        "CompositeEvent High\n"
        "    when c2, a Low, is recognised\n"
        "    look up c1, a Low on p\n"
        "    look up c3, a Other\n"
        "    then test before(c1->Interval, c2->Interval)\n");
}

} // namespace scenariomatch
