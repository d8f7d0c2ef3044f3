#include "scenario/AgentOperatorReader.h"
#include "scenario/CSAllScenarios.h"
#include "tests/scenario/FakeOperators.h"
#include "tests/types/CapturedStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using scenariomatch::AgentOperators;
using scenariomatch::CapturedStream;
using scenariomatch::endingFirst;
using scenariomatch::FakeOperator;
using scenariomatch::OperatorNames;
using Names = std::vector<std::string>;

// A set of used models built one by one.
class ModelTreeTest : public ::testing::Test
{
protected:
    ModelTreeTest()
        : m_names({&m_before, &m_after, &m_during, &m_and, &m_or, &m_not, &m_overlaps})
    {
        endingFirst(m_before, 0);
        endingFirst(m_after, 1);
        endingFirst(m_overlaps, 0);
        m_during.m_isTemporal = true;
        m_and.m_description.m_endsFirst = 0;
    }

    std::shared_ptr<CSScenario> add(const std::string& name, const Names& components = {})
    {
        return add("CompositeEvent", name, components, "");
    }

    std::shared_ptr<CSScenario>
    add(const std::string& kind,
        const std::string& name,
        const Names& components,
        const std::string& constraints)
    {
        std::string text = kind + "(" + name + ", Components(";
        for (std::size_t i = 0; i < components.size(); ++i) {
            text += "(c" + std::to_string(i + 1) + " : PrimitiveState " + components[i] + "(p))";
        }
        auto model = std::make_shared<CSScenario>();
        model->read(text + ") Constraints(" + constraints + "))", kind, {}, {});
        model->m_used = true;
        m_scenarios.m_scenariosByKind[kind].push_back(model);
        return model;
    }

    // Trigger and skip index of a model with so many components and the constraints.
    std::pair<int, int> chosen(
        std::size_t components, const std::string& constraints, const AgentOperators& declared = {})
    {
        const auto model = add("CompositeEvent", "M", Names(components, "S"), constraints);
        m_scenarios.createModelTree(declared);
        return {model->m_triggerIndex, model->m_skipIndex};
    }

    Names parentsOf(const std::string& name)
    {
        Names names;
        for (const auto& parent : m_scenarios.m_parents[name]) {
            names.push_back(parent->m_name);
        }
        return names;
    }

    std::string createAndListErrors()
    {
        const CapturedStream errors(std::cerr);
        m_scenarios.createModelTree();
        return errors.text();
    }

    FakeOperator m_before{"before"};
    FakeOperator m_after{"after"};
    FakeOperator m_during{"during"};
    FakeOperator m_overlaps{"overlaps"};
    FakeOperator m_and{"and"};
    FakeOperator m_or{"or"};
    FakeOperator m_not{"!"};
    OperatorNames m_names;
    CSAllScenarios m_scenarios;
};

using Chosen = std::pair<int, int>;

TEST_F(ModelTreeTest, ListsEachParentOnceInReadingOrder)
{
    add("CompositeState", "Z", {"A", "B", "A"}, "");
    add("CompositeEvent", "Y", {"B", "Z"}, "");
    add("PrimitiveState", "A", {}, "");
    add("CompositeState", "X", {"B"}, "");
    EXPECT_EQ(createAndListErrors(), "");
    EXPECT_EQ(parentsOf("A"), Names{"Z"});
    EXPECT_EQ(parentsOf("B"), (Names{"Z", "Y", "X"}));
    EXPECT_EQ(parentsOf("Z"), Names{"Y"});
    EXPECT_TRUE(m_scenarios.m_parents.contains("X"));
    EXPECT_TRUE(parentsOf("X").empty());
    createAndListErrors();
    EXPECT_EQ(parentsOf("B"), (Names{"Z", "Y", "X"}));
}

TEST_F(ModelTreeTest, KeepsParentsOfTheSameNameApart)
{
    const auto first = add("P", {"A"});
    const auto second = add("P", {"A"});
    createAndListErrors();
    EXPECT_EQ(
        m_scenarios.m_parents["A"], (std::vector<std::shared_ptr<CSScenario>>{first, second}));
}

TEST_F(ModelTreeTest, PassesOverModelsThatAreNotUsed)
{
    const auto unused = add("P", {"A", "B"});
    unused->m_used = false;
    EXPECT_EQ(createAndListErrors(), "");
    EXPECT_TRUE(parentsOf("A").empty());
    EXPECT_EQ(unused->m_triggerIndex, -1);
}

TEST_F(ModelTreeTest, HasNoSkipIndexWithOneComponentOrNone)
{
    EXPECT_EQ(chosen(0, ""), Chosen(-1, -1));
    EXPECT_EQ(chosen(1, ""), Chosen(0, -1));
}

TEST_F(ModelTreeTest, TakesComponentsAsWrittenInOrderOfTime)
{
    EXPECT_EQ(chosen(2, ""), Chosen(1, 0));
    EXPECT_EQ(chosen(4, ""), Chosen(3, 0));
    EXPECT_EQ(chosen(2, "(c1->Interval during c2->Interval)"), Chosen(1, 0));
}

TEST_F(ModelTreeTest, TriggersOnTheComponentThatEndsLast)
{
    EXPECT_EQ(chosen(2, "(c1->Interval before c2->Interval)"), Chosen(1, 0));
    EXPECT_EQ(chosen(2, "(c2->Interval before c1->Interval)"), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(c1->Interval after c2->Interval)"), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(c1 after c2)"), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(after(c1, c2->Interval, 3))"), Chosen(0, 1));
}

TEST_F(ModelTreeTest, TriggersOnTheLastWrittenThatNeverEndsFirst)
{
    EXPECT_EQ(chosen(3, "(c3 before c1)"), Chosen(1, 0));
    EXPECT_EQ(chosen(3, "(c3 before c1)(c2 before c1)"), Chosen(0, 1));
    EXPECT_EQ(chosen(3, "(c3 before c2)(c2 before c1)"), Chosen(0, 1));
    EXPECT_EQ(chosen(3, "(c1 before c2)"), Chosen(2, 0));
}

TEST_F(ModelTreeTest, TriggersOnTheLastWrittenWhereRelationsGoInACircle)
{
    EXPECT_EQ(chosen(2, "(c1 before c2)(c2 before c1)"), Chosen(1, 0));
}

TEST_F(ModelTreeTest, LooksThroughOperatorsButNotBelowNegationAndOr)
{
    EXPECT_EQ(chosen(2, "((c2 before c1) and x)"), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(!(c2 before c1))"), Chosen(1, 0));
    EXPECT_EQ(chosen(2, "((c2 before c1) or x)"), Chosen(1, 0));
}

TEST_F(ModelTreeTest, NeedsATemporalRelationBetweenTwoComponents)
{
    EXPECT_EQ(chosen(2, "(c2 and c1)"), Chosen(1, 0));
    EXPECT_EQ(chosen(2, "(c2->Start before c1->Start)"), Chosen(1, 0));
    EXPECT_EQ(chosen(2, "(c2 before p)"), Chosen(1, 0));
    EXPECT_EQ(chosen(2, "(c2 before c2)"), Chosen(1, 0));
    EXPECT_EQ(chosen(2, "(before(c2))"), Chosen(1, 0));
    EXPECT_EQ(chosen(2, "(c2 unknown c1)"), Chosen(1, 0));
}

TEST_F(ModelTreeTest, AsksAnOperatorThatThrowsForNothing)
{
    m_before.m_describeThrows = true;
    EXPECT_EQ(chosen(2, "(c2 before c1)"), Chosen(1, 0));
}

TEST_F(ModelTreeTest, ReadsACallAndItsReplacementAlike)
{
    CConstraint::OperatorTable table = {
        {"before", &m_before}, {"and", &m_and}, {"overlaps", &m_overlaps}};
    const AgentOperators declared = scenariomatch::readAgentOperators(
        "rules",
        "operator later(a : Component, b : Component) { b->Interval before a->Interval }\n"
        "operator overlaps(a : Component, b : Component) { b->Interval overlaps a->Interval }\n"
        "operator both(a : Component, b : Component) { (b->Interval before a->Interval) and 1 }",
        table);
    ASSERT_EQ(declared.size(), 3U);
    CConstraint::m_allOperators = table;
    EXPECT_EQ(chosen(2, "(c1 later c2)", declared), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(c1 later c2)"), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(c1 overlaps c2)", declared), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(c1 both c2)", declared), Chosen(0, 1));
    EXPECT_EQ(chosen(2, "(c2 both c1)", declared), Chosen(1, 0));
    const auto& models = m_scenarios.m_scenariosByKind["CompositeEvent"];
    EXPECT_EQ(scenariomatch::treeOf(*models.back()->m_constraints[0]), "both[c2, c1]");
    for (const auto& model : models) {
        model->m_triggerIndex = -1;
    }
    const CapturedStream output(std::cout);
    m_scenarios.rewriteAgentOperator(declared);
    m_scenarios.createModelTree();
    EXPECT_EQ(models[0]->m_triggerIndex, 0);
    EXPECT_EQ(models[2]->m_triggerIndex, 0);
    EXPECT_EQ(models[3]->m_triggerIndex, 0);
    EXPECT_EQ(models[4]->m_triggerIndex, 1);
}

TEST_F(ModelTreeTest, ReportsModelsThatContainThemselves)
{
    const auto a = add("a", {"p", "b"});
    const auto b = add("b", {"c"});
    const auto c = add("c", {"a"});
    const auto above = add("above", {"a"});
    const auto below = add("PrimitiveState", "p", {}, "");
    EXPECT_EQ(
        createAndListErrors(),
        "Warning: the scenario model a contains itself: a -> b -> c -> a. It will not be used!\n"
        "Warning: the scenario model b contains itself: b -> c -> a -> b. It will not be used!\n"
        "Warning: the scenario model c contains itself: c -> a -> b -> c. It will not be used!\n");
    EXPECT_FALSE(a->m_used);
    EXPECT_FALSE(b->m_used);
    EXPECT_FALSE(c->m_used);
    EXPECT_TRUE(above->m_used);
    EXPECT_TRUE(below->m_used);
    EXPECT_TRUE(parentsOf("p").empty());
    EXPECT_EQ(parentsOf("a"), Names{"above"});
    EXPECT_EQ(m_scenarios.m_scenariosByKind["CompositeEvent"].size(), 4U);
    EXPECT_EQ(createAndListErrors(), "");
}

TEST_F(ModelTreeTest, ReportsAModelThatIsItsOwnComponent)
{
    add("a", {"a", "a"});
    EXPECT_EQ(
        createAndListErrors(),
        "Warning: the scenario model a contains itself: a -> a. It will not be used!\n");
}

TEST_F(ModelTreeTest, SpellsOutTheShortestCircleOfEachModel)
{
    add("a", {"b"});
    add("b", {"c", "a"});
    add("c", {"b"});
    EXPECT_EQ(
        createAndListErrors(),
        "Warning: the scenario model a contains itself: a -> b -> a. It will not be used!\n"
        "Warning: the scenario model b contains itself: b -> a -> b. It will not be used!\n"
        "Warning: the scenario model c contains itself: c -> b -> c. It will not be used!\n");
}

TEST_F(ModelTreeTest, SpellsOutTheCircleThroughTheNameThatIsReadFirst)
{
    add("above", {"b"});
    add("a", {"c", "b"});
    add("b", {"a"});
    add("c", {"a"});
    EXPECT_EQ(
        createAndListErrors(),
        "Warning: the scenario model a contains itself: a -> b -> a. It will not be used!\n"
        "Warning: the scenario model b contains itself: b -> a -> b. It will not be used!\n"
        "Warning: the scenario model c contains itself: c -> a -> c. It will not be used!\n");
}

TEST_F(ModelTreeTest, TellsModelsOfOneNameApartInCircles)
{
    const auto circular = add("a", {"b"});
    const auto harmless = add("PrimitiveState", "a", {}, "");
    const auto between = add("b", {"a"});
    createAndListErrors();
    EXPECT_FALSE(circular->m_used);
    EXPECT_TRUE(harmless->m_used);
    EXPECT_FALSE(between->m_used);
}

TEST_F(ModelTreeTest, SeesNoCircleThroughModelsThatAreNotUsed)
{
    add("a", {"b"});
    add("b", {"a"})->m_used = false;
    EXPECT_EQ(createAndListErrors(), "");
}

TEST_F(ModelTreeTest, LeavesModelsBetweenCirclesInUse)
{
    add("a", {"a", "between"});
    const auto between = add("between", {"z"});
    add("z", {"z"});
    EXPECT_EQ(
        createAndListErrors(),
        "Warning: the scenario model a contains itself: a -> a. It will not be used!\n"
        "Warning: the scenario model z contains itself: z -> z. It will not be used!\n");
    EXPECT_TRUE(between->m_used);
}

TEST_F(ModelTreeTest, HandlesVeryLongChainsAndCircles)
{
    constexpr int kModels = 20'000;
    for (int i = 0; i < kModels; ++i) {
        add("m" + std::to_string(i), {"m" + std::to_string(i + 1)});
    }
    EXPECT_EQ(createAndListErrors(), "");
    add("m" + std::to_string(kModels), {"m0"});
    const std::string errors = createAndListErrors();
    EXPECT_EQ(
        errors.substr(0, errors.find('\n')),
        "Warning: the scenario model m0 contains itself: m0 -> m1 -> m2 -> m3 -> m4 -> m5 -> m6 "
        "-> m7 -> m8 -> m9 -> m10 -> m11 -> m12 -> m13 -> m14 -> m15 -> m16 -> m17 -> m18 -> m19 "
        "-> ... -> m0. It will not be used!");
    EXPECT_LT(errors.size(), 300U * (kModels + 1));
}

// A walk over all models for each model would take minutes.
TEST_F(ModelTreeTest, HandlesManyModelsAroundOneHub)
{
    constexpr int kModels = 20'000;
    Names leaves;
    for (int i = 0; i < kModels; ++i) {
        leaves.push_back("m" + std::to_string(i));
    }
    add("hub", leaves);
    std::string expected = "Warning: the scenario model hub contains itself: hub -> m0 -> hub. It "
                           "will not be used!\n";
    for (const std::string& leaf : leaves) {
        add(leaf, {"hub"});
        for (const std::string& piece :
             {std::string("Warning: the scenario model "),
              leaf,
              std::string(" contains itself: "),
              leaf,
              std::string(" -> hub -> "),
              leaf,
              std::string(". It will not be used!\n")}) {
            expected += piece;
        }
    }
    EXPECT_TRUE(createAndListErrors() == expected);
}

TEST_F(ModelTreeTest, HandlesManyModelsBetweenTwoHubs)
{
    constexpr int kModels = 10'000;
    Names down;
    Names up;
    for (int i = 0; i < kModels; ++i) {
        down.push_back("d" + std::to_string(i));
        up.push_back("u" + std::to_string(i));
        add(down.back(), {"low"});
        add(up.back(), {"high"});
    }
    add("high", down);
    add("low", up);
    const std::string errors = createAndListErrors();
    std::istringstream lines(errors);
    int reported = 0;
    for (std::string line; std::getline(lines, line); ++reported) {
        const std::size_t begin = line.find(": ", line.find("contains itself")) + 2;
        const std::string circle = line.substr(begin, line.find(". It") - begin);
        // Both hubs, a model on the way up and one on the way down; the first one twice.
        const std::string twice = circle + circle.substr(circle.find(" -> "));
        const std::size_t low = twice.find("low -> u");
        ASSERT_NE(low, std::string::npos) << line;
        ASSERT_NE(twice.find(" -> high -> d", low), std::string::npos) << line;
        ASSERT_EQ(circle.substr(0, circle.find(' ')), circle.substr(circle.rfind(' ') + 1)) << line;
        ASSERT_EQ(std::count(circle.begin(), circle.end(), '>'), 4) << line;
    }
    EXPECT_EQ(reported, 2 * kModels + 2);
}

} // namespace
