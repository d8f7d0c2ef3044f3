#include "scenario/AgentOperator.h"

#include "scenario/AgentOperatorReader.h"
#include "scenario/CSAllScenarios.h"
#include "tests/scenario/FakeOperators.h"
#include "tests/types/CapturedStream.h"

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using scenariomatch::AgentOperators;
using scenariomatch::CapturedStream;
using scenariomatch::endingFirst;
using scenariomatch::FakeOperator;
using scenariomatch::OperatorNames;
using scenariomatch::treeFrom;
using scenariomatch::treeOf;
using Types = std::map<std::string, std::string>;

// Operators to declare others with, and a catalogue of object types.
class AgentOperatorTest : public ::testing::Test
{
protected:
    AgentOperatorTest()
    {
        m_less.m_description.m_result = "BOOL";
        for (FakeOperator* op : {&m_less, &m_distance, &m_before, &m_and, &m_not}) {
            m_table[op->m_name] = op;
        }
        CSAgent::m_allObjectTypes = {
            {"Mobile", {"Mobile", "Person", "Thief"}},
            {"Person", {"Person", "Thief"}},
            {"Thief", {"Thief"}},
            {"Zone", {"Zone"}}};
    }

    ~AgentOperatorTest() override { CSAgent::m_allObjectTypes.clear(); }

    AgentOperators declare(const std::string& text)
    {
        const CapturedStream errors(std::cerr);
        AgentOperators declared = scenariomatch::readAgentOperators("rules.txt", text, m_table);
        m_errors = errors.text();
        CConstraint::m_allOperators = m_table;
        return declared;
    }

    std::string
    rewritten(const AgentOperators& declared, const std::string& constraint, const Types& types)
    {
        const auto root = treeFrom(constraint);
        scenariomatch::rewriteCalls(*root, declared, types);
        return treeOf(*root);
    }

    OperatorNames m_names;
    FakeOperator m_less{"<"};
    FakeOperator m_distance{"distance"};
    FakeOperator m_before{"before"};
    FakeOperator m_and{"and"};
    FakeOperator m_not{"!"};
    CConstraint::OperatorTable m_table;
    std::string m_errors;
};

constexpr const char* kClose =
    "operator close(p : Person, q : Person) { distance(p->Position, q->Position) < 2 }";

using AgentOperatorReaderTest = AgentOperatorTest;

TEST_F(AgentOperatorReaderTest, ReadsADeclaration)
{
    const AgentOperators declared = declare(kClose);
    ASSERT_EQ(declared.size(), 1U);
    EXPECT_EQ(declared[0]->m_name, "close");
    ASSERT_EQ(declared[0]->parameters().size(), 2U);
    EXPECT_EQ(declared[0]->parameters()[1].name, "q");
    EXPECT_EQ(declared[0]->parameters()[1].type, "Person");
    EXPECT_EQ(treeOf(declared[0]->body()), "<[distance[p->Position, q->Position], 2]");
    EXPECT_EQ(declared[0]->body().m_operator, &m_less);
    EXPECT_EQ(declared[0]->body().m_children[0]->m_operator, &m_distance);
    EXPECT_EQ(m_table.at("close"), declared[0].get());
    EXPECT_EQ(m_errors, "");
}

TEST_F(AgentOperatorReaderTest, HoldsAttributeArgumentsAsAccessors)
{
    const AgentOperators declared = declare(kClose);
    ASSERT_EQ(declared[0]->accessors().size(), 2U);
    EXPECT_EQ(declared[0]->accessors()[0], CSAccessorAgent("p", "Position"));
    EXPECT_EQ(declared[0]->accessors()[1], CSAccessorAgent("q", "Position"));
    EXPECT_EQ(declared[0]->accessors()[0].m_type, "ACCESSORAGENT");
}

TEST_F(AgentOperatorReaderTest, IsFreeInItsLayout)
{
    const AgentOperators declared = declare("# operator none(a:A){ a }\r\n"
                                            "operator\tclose\n(p:Person ,\n q : Person)#{\n{\r\n"
                                            "\tdistance(\n p->Position # first\n"
                                            " , q->Position )\n\t<\n 2\n\n}operator\r\n"
                                            "same(p : Zone){p->A < p->B}");
    EXPECT_EQ(m_errors, "");
    ASSERT_EQ(declared.size(), 2U);
    EXPECT_EQ(treeOf(declared[0]->body()), "<[distance[p->Position, q->Position], 2]");
    EXPECT_EQ(declared[1]->m_name, "same");
    EXPECT_EQ(treeOf(declared[1]->body()), "<[p->A, p->B]");
}

TEST_F(AgentOperatorReaderTest, ReadsNothingFromAnEmptyText)
{
    EXPECT_TRUE(declare("").empty());
    EXPECT_TRUE(declare(" \n# nothing\n").empty());
    EXPECT_EQ(m_errors, "");
}

TEST_F(AgentOperatorReaderTest, DropsADeclarationWhoseOperatorIsNotLoaded)
{
    const AgentOperators declared =
        declare("operator far(p : Person) { gap(p->X, 1) > gap(p->X, 2) }\n" + std::string(kClose));
    EXPECT_EQ(
        m_errors,
        "Warning: Operator > is not loaded, you can't use it (in the rules file)\n"
        "Warning: Operator gap is not loaded, you can't use it (in the rules file)\n");
    ASSERT_EQ(declared.size(), 1U);
    EXPECT_EQ(declared[0]->m_name, "close");
    EXPECT_FALSE(m_table.contains("far"));
}

TEST_F(AgentOperatorReaderTest, DropsADeclarationThatUsesItself)
{
    EXPECT_TRUE(declare("operator f(p : Person) { f(p) and 1 }").empty());
    EXPECT_EQ(
        m_errors, "Warning: Operator f is not loaded, you can't use it (in the rules file)\n");
}

TEST_F(AgentOperatorReaderTest, KeepsTheLoadedOperatorOfTheSameNameInTheTable)
{
    const AgentOperators declared =
        declare("operator before(a : Component, b : Component) { a->Interval before b->Interval }");
    ASSERT_EQ(declared.size(), 1U);
    EXPECT_EQ(m_table.at("before"), &m_before);
}

TEST_F(AgentOperatorReaderTest, KeepsTheFirstOfSeveralDeclarationsInTheTable)
{
    const AgentOperators declared = declare("operator f(a : Person) { a->X < 1 }\n"
                                            "operator f(a : Zone) { a->X < 2 }");
    ASSERT_EQ(declared.size(), 2U);
    EXPECT_EQ(m_table.at("f"), declared[0].get());
}

TEST_F(AgentOperatorReaderTest, ReportsTextThatIsNoDeclaration)
{
    const AgentOperators declared =
        declare("operators f(a : A) { a }\nmore words " + std::string(kClose));
    EXPECT_EQ(
        m_errors,
        "Error reading file: rules.txt. The word operators is not recognised. Check it!\n");
    EXPECT_EQ(declared.size(), 1U);
}

TEST_F(AgentOperatorReaderTest, ReportsADeclarationThatIsNotClosed)
{
    const std::string message =
        "Error reading file: rules.txt. The declaration operator is not closed. Check it!\n";
    for (const char* text :
         {"operator",
          "operator f",
          "operator f(a : Person",
          "operator f(a : Person) ",
          "operator f(a : Person) { a->X < 1"}) {
        EXPECT_TRUE(declare(text).empty());
        EXPECT_EQ(m_errors, message) << text;
    }
    EXPECT_EQ(declare("operator f(a : A) { a->X < 1\n" + std::string(kClose)).size(), 1U);
    EXPECT_EQ(m_errors, message);
}

TEST_F(AgentOperatorReaderTest, ReportsADeclarationThatIsNotWellFormed)
{
    const std::string message =
        "Error reading file: rules.txt. The declaration operator is not well formed. Check it!\n";
    for (const char* text :
         {"operator f a : Person) { a->X < 1 }",
          "operator f(a : Person( { a->X < 1 }",
          "operator f(a : Person) as { a->X < 1 }",
          "operator (a : Person) { a->X < 1 }",
          "operator two words(a : Person) { a->X < 1 }"}) {
        EXPECT_EQ(declare(text + ("\n" + std::string(kClose))).size(), 1U) << text;
        EXPECT_EQ(m_errors, message) << text;
    }
}

TEST_F(AgentOperatorReaderTest, ReportsParametersAndBodiesThatAreNotWellFormed)
{
    for (const char* text :
         {"operator f(a) { a->X < 1 }",
          "operator f(a : Person,) { a->X < 1 }",
          "operator f(a : Person, a : Zone) { a->X < 1 }",
          "operator f(a b : Person) { a->X < 1 }",
          "operator f(a : ) { a->X < 1 }",
          "operator f(a : Person) { }"}) {
        EXPECT_EQ(declare(text + ("\n" + std::string(kClose))).size(), 1U) << text;
        EXPECT_EQ(
            m_errors,
            "Error reading file: rules.txt. The declaration operator f is not well formed. "
            "Check it!\n")
            << text;
    }
}

TEST_F(AgentOperatorReaderTest, ReportsAnAttributeOfWhatIsNoParameter)
{
    EXPECT_TRUE(declare("operator f(a : Person) { a->X < b->Y }").empty());
    EXPECT_EQ(
        m_errors,
        "Error reading file: rules.txt. The declaration operator f uses b->Y, but b is no "
        "parameter of it. Check it!\n");
}

TEST_F(AgentOperatorReaderTest, PassesOnThatABodyNestsTooDeeply)
{
    const CapturedStream errors(std::cerr);
    const std::string text =
        "operator f(a : A) {" + std::string(300, '(') + std::string(300, ')') + "}";
    EXPECT_THROW(scenariomatch::readAgentOperators("rules.txt", text, m_table), std::out_of_range);
}

TEST_F(AgentOperatorReaderTest, PutsEarlierDeclarationsInWhereTypesFit)
{
    const AgentOperators declared = declare(
        std::string(kClose) + "operator apart(a : Thief, b : Person) { close(a, b) and 1 }");
    ASSERT_EQ(declared.size(), 2U);
    EXPECT_EQ(treeOf(declared[1]->body()), "and[<[distance[a->Position, b->Position], 2], 1]");
    EXPECT_EQ(declared[1]->accessors().size(), 2U);
}

TEST_F(AgentOperatorReaderTest, LeavesACallWhereTypesDoNotFitForTheRewriting)
{
    const AgentOperators declared = declare(
        std::string(kClose) + "operator apart(a : Mobile, b : Mobile) { close(a, b) and 1 }");
    ASSERT_EQ(declared.size(), 2U);
    EXPECT_EQ(treeOf(declared[1]->body()), "and[close[a, b], 1]");
    EXPECT_EQ(
        rewritten(declared, "apart(x, y)", {{"x", "Person"}, {"y", "Thief"}}),
        "and[<[distance[x->Position, y->Position], 2], 1]");
    EXPECT_EQ(
        rewritten(declared, "apart(x, y)", {{"x", "Mobile"}, {"y", "Thief"}}),
        "and[close[x, y], 1]");
}

TEST_F(AgentOperatorReaderTest, RefusesBodiesThatGrowTooLarge)
{
    std::string text = "operator f0(a : Person, b : Person) { a->X < b->X }\n";
    for (int i = 1; i < 20; ++i) {
        const std::string before = "f" + std::to_string(i - 1) + "(a, b)";
        text += "operator f" + std::to_string(i) + "(a : Person, b : Person) { " + before +
                " and " + before + " }\n";
    }
    EXPECT_EQ(declare(text).size(), 9U);
    const std::string first = m_errors.substr(0, m_errors.find('\n'));
    EXPECT_EQ(
        first,
        "Error reading file: rules.txt. The declaration operator f9 grows too large. Check it!");
}

TEST_F(AgentOperatorReaderTest, ReadsMegabytesWithoutLosingTime)
{
    for (const char* piece :
         {"operator f(", "operator f(a){", "operator f(a:b){ ", "operator ", "}"}) {
        std::string text;
        while (text.size() < (1U << 20U)) {
            text += piece;
        }
        EXPECT_TRUE(declare(text).empty()) << piece;
        EXPECT_NE(m_errors, "") << piece;
    }
}

TEST_F(AgentOperatorTest, IsFalseWhenEvaluated)
{
    const AgentOperators declared = declare(kClose);
    const auto value =
        std::dynamic_pointer_cast<CSBool>(declared[0]->evaluate({std::make_shared<CSBool>(true)}));
    ASSERT_NE(value, nullptr);
    EXPECT_FALSE(value->m_value);
}

TEST_F(AgentOperatorTest, DescribesItsBodysOutermostOperator)
{
    endingFirst(m_before, 0);
    m_before.m_description.m_result = "BOOL";
    const AgentOperators declared =
        declare("operator after(a : Component, b : Component) { b->Interval before a->Interval }\n"
                "operator first(a : Component, b : Component) { a->Interval before b->Interval }\n"
                "operator early(a : Component) { Now before a->Interval }\n"
                "operator not(a : Component) { !(a) }");
    ASSERT_EQ(declared.size(), 4U);
    EXPECT_TRUE(declared[0]->m_isTemporal);
    EXPECT_EQ(declared[0]->describe().m_endsFirst, std::optional<std::size_t>(1));
    EXPECT_EQ(declared[0]->describe().m_result, "BOOL");
    EXPECT_EQ(declared[0]->describe().m_requiredArguments, 2U);
    EXPECT_EQ(declared[1]->describe().m_endsFirst, std::optional<std::size_t>(0));
    EXPECT_TRUE(declared[2]->m_isTemporal);
    EXPECT_FALSE(declared[2]->describe().m_endsFirst.has_value());
    EXPECT_FALSE(declared[3]->m_isTemporal);
    EXPECT_FALSE(declared[3]->describe().m_endsFirst.has_value());
}

TEST_F(AgentOperatorTest, DescribesABodyWithoutOperator)
{
    const AgentOperators declared = declare("operator name(a : Person) { a }");
    ASSERT_EQ(declared.size(), 1U);
    EXPECT_FALSE(declared[0]->m_isTemporal);
    EXPECT_EQ(declared[0]->describe().m_requiredArguments, 1U);
    EXPECT_EQ(rewritten(declared, "name(x)", {{"x", "Person"}}), "x");
}

TEST_F(AgentOperatorTest, MatchesBareVariablesOfTheTypeOrASubtype)
{
    const AgentOperators declared = declare(kClose);
    const auto matches = [&](const std::string& call, const Types& types) {
        return declared[0]->matches(*treeFrom(call), types);
    };
    EXPECT_TRUE(matches("close(a, b)", {{"a", "Person"}, {"b", "Thief"}}));
    EXPECT_TRUE(matches("a close b", {{"a", "Person"}, {"b", "Thief"}}));
    EXPECT_FALSE(matches("close(a, b)", {{"a", "Person"}, {"b", "Mobile"}}));
    EXPECT_FALSE(matches("close(a, b)", {{"a", "Person"}}));
    EXPECT_FALSE(matches("close(a)", {{"a", "Person"}}));
    EXPECT_FALSE(matches("close(a, a, a)", {{"a", "Person"}}));
    EXPECT_FALSE(matches("close(a, a->X)", {{"a", "Person"}}));
    EXPECT_FALSE(matches("near(a, a)", {{"a", "Person"}}));
    EXPECT_FALSE(matches("close", {}));
    const auto filled = treeFrom("close(a, a)");
    filled->m_children[1]->m_isNumeric = true;
    EXPECT_FALSE(declared[0]->matches(*filled, {{"a", "Person"}}));
}

TEST_F(AgentOperatorTest, MatchesATypeWithoutCatalogueEntryByItsName)
{
    const AgentOperators declared = declare("operator f(a : Component, b : Robot) { a < b }");
    const auto call = treeFrom("f(c, r)");
    EXPECT_TRUE(declared[0]->matches(*call, {{"c", "Component"}, {"r", "Robot"}}));
    EXPECT_FALSE(declared[0]->matches(*call, {{"c", "Component"}, {"r", "Person"}}));
    EXPECT_FALSE(CSAgent::m_allObjectTypes.contains("Robot"));
}

TEST_F(AgentOperatorTest, MatchesACallWithoutArguments)
{
    const AgentOperators declared = declare("operator always() { 1 < 2 }");
    EXPECT_EQ(rewritten(declared, "always()", {}), "<[1, 2]");
    EXPECT_EQ(rewritten(declared, "always(a)", {{"a", "Person"}}), "always[a]");
}

TEST_F(AgentOperatorTest, TriesDeclarationsInOrder)
{
    const AgentOperators declared = declare("operator f(a : Person) { a->X < 1 }\n"
                                            "operator f(a : Mobile) { a->X < 2 }\n"
                                            "operator f(a : Person) { a->X < 3 }");
    EXPECT_EQ(rewritten(declared, "f(x)", {{"x", "Thief"}}), "<[x->X, 1]");
    EXPECT_EQ(rewritten(declared, "f(x)", {{"x", "Mobile"}}), "<[x->X, 2]");
}

TEST_F(AgentOperatorTest, RewritesInPlaceAndSetsOperatorsAndFlags)
{
    m_before.m_isTemporal = true;
    const AgentOperators declared =
        declare("operator before(a : Component, b : Component) { a->Interval before b->Interval }");
    const auto root = treeFrom("!(c2 before c1)");
    const CConstraint* call = root->m_children[0].get();
    const auto calls =
        scenariomatch::rewriteCalls(*root, declared, {{"c1", "Component"}, {"c2", "Component"}});
    EXPECT_EQ(treeOf(*root), "![before[c2->Interval, c1->Interval]]");
    EXPECT_EQ(root->m_children[0].get(), call);
    EXPECT_EQ(call->m_operator, &m_before);
    EXPECT_TRUE(call->m_isTemporal);
    EXPECT_EQ(call->m_children.size(), 2U);
    EXPECT_EQ(calls.m_nodes, std::vector<CConstraint*>{root->m_children[0].get()});
    EXPECT_EQ(calls.m_tooLarge, "");
}

TEST_F(AgentOperatorTest, LeavesTheLoadedFormWhereArgumentsAreNoBareVariables)
{
    const AgentOperators declared =
        declare("operator before(a : Component, b : Component) { a->Interval before b->Interval }");
    const Types types = {{"c1", "Component"}, {"c2", "Component"}};
    EXPECT_EQ(rewritten(declared, "c1->Interval before c2", types), "before[c1->Interval, c2]");
}

TEST_F(AgentOperatorTest, DoesNotRewriteALoadedOperatorInItsOwnBody)
{
    const AgentOperators declared = declare("operator distance(a : Zone) { distance(a) < 2 }");
    EXPECT_EQ(rewritten(declared, "distance(z)", {{"z", "Zone"}}), "<[distance[z], 2]");
}

TEST_F(AgentOperatorTest, PutsVariablesInAllAtOnce)
{
    const AgentOperators declared = declare("operator f(a : Person, b : Person) { a->X < b }");
    EXPECT_EQ(rewritten(declared, "b f a", {{"a", "Person"}, {"b", "Person"}}), "<[b->X, a]");
}

TEST_F(AgentOperatorTest, RewritesAllModelsAndFillsWhatItPutsIn)
{
    const AgentOperators declared = declare(
        "operator close(p : Person, q : Person) { distance(p->Position, q->Position) < Reach }\n"
        "operator slow(p : Person) { p->Speed < 2 }");
    CSAllScenarios scenarios;
    auto model = std::make_shared<CSScenario>();
    model->read(
        "PrimitiveState(A, PhysicalObjects((a : Person)(b : Thief)) "
        "Constraints((a close b)(slow(a) and 3)(b close Reach)))",
        "PrimitiveState",
        {{"Reach", 7.0}},
        {});
    scenarios.m_scenariosByKind["PrimitiveState"].push_back(model);
    const CapturedStream output(std::cout);
    scenarios.fillConstraintsConstants();
    EXPECT_EQ(output.text(), "3\n");
    scenarios.rewriteAgentOperator(declared);
    EXPECT_EQ(output.text(), "3\n2\n");
    EXPECT_EQ(treeOf(*model->m_constraints[0]), "<[distance[a->Position, b->Position], #7.000000]");
    EXPECT_EQ(treeOf(*model->m_constraints[1]), "and[<[a->Speed, #2.000000], #3.000000]");
    EXPECT_EQ(treeOf(*model->m_constraints[2]), "close[b, #7.000000]");
}

TEST_F(AgentOperatorTest, ReportsAModelThatGrowsTooLarge)
{
    std::string text = "operator f0(a : Person) { a->X < 1 }\n";
    for (int i = 1; i < 9; ++i) {
        const std::string before = "f" + std::to_string(i - 1) + "(a)";
        text += "operator f" + std::to_string(i) + "(a : Person) { " + before + " and " + before +
                " }\n";
    }
    const AgentOperators declared = declare(text);
    ASSERT_EQ(declared.size(), 9U);
    CSAllScenarios scenarios;
    auto model = std::make_shared<CSScenario>();
    model->read(
        "PrimitiveState(A, PhysicalObjects((a : Person)) "
        "Constraints((f8(a) and f8(a) and f8(a))(f0(a))))",
        "PrimitiveState",
        {},
        {});
    scenarios.m_scenariosByKind["PrimitiveState"].push_back(model);
    const CapturedStream output(std::cout);
    const CapturedStream errors(std::cerr);
    scenarios.rewriteAgentOperator(declared);
    EXPECT_EQ(
        errors.text(),
        "Warning: Operator f8 is left as it is in scenario model A, whose constraint grows too "
        "large.\n");
    EXPECT_EQ(treeOf(*model->m_constraints[1]), "<[a->X, #1.000000]");
    const CConstraint& root = *model->m_constraints[0];
    EXPECT_EQ(treeOf(*root.m_children[1]->m_children[1]), "f8[a]");
}

} // namespace
