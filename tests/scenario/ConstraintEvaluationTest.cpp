#include "scenario/ConstraintEvaluation.h"

#include "tests/scenario/FakeOperators.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using scenariomatch::callOperator;
using scenariomatch::describeOperator;
using scenariomatch::FakeOperator;
using scenariomatch::OperatorNames;
using scenariomatch::setOperatorFailureHandler;
using scenariomatch::treeFrom;
using Bindings = CConstraint::Bindings;

std::shared_ptr<CSAgent> agentWith(const std::string& attribute, double value)
{
    auto agent = std::make_shared<CSAgent>(1, false);
    agent->set(attribute, std::make_shared<CSDouble>(value), 1);
    return agent;
}

// Collects what operators throw while it lives.
class Failures
{
public:
    Failures()
    {
        setOperatorFailureHandler(
            [this](const CSOperatorInterfaceAbstract& op, const std::string& what) {
                m_texts.push_back(op.m_name + ": " + what);
            });
    }

    Failures(const Failures&) = delete;
    Failures(Failures&&) = delete;
    Failures& operator=(const Failures&) = delete;
    Failures& operator=(Failures&&) = delete;

    ~Failures() { setOperatorFailureHandler({}); }

    std::vector<std::string> m_texts;
};

bool isFalse(const std::shared_ptr<CSBasicType>& value)
{
    const auto* truth = dynamic_cast<const CSBool*>(value.get());
    return truth != nullptr && !truth->m_value;
}

TEST(CConstraint, EvaluatesANumberToANewDouble)
{
    const auto leaf = treeFrom("Limit");
    leaf->fillConstraintsConstants({{"Limit", 3.5}});
    Bindings bindings;
    const auto value = std::dynamic_pointer_cast<CSDouble>(CConstraint::check(*leaf, bindings));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->m_value, 3.5);
    EXPECT_EQ(value->m_type, "DOUBLE");
    EXPECT_NE(CConstraint::check(*leaf, bindings), value);
}

TEST(CConstraint, EvaluatesAWordToANewString)
{
    const auto leaf = treeFrom("Zone1");
    Bindings bindings = {{"Zone1", agentWith("Speed", 1.0)}};
    const auto value = std::dynamic_pointer_cast<CSString>(CConstraint::check(*leaf, bindings));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->m_value, "Zone1");
    EXPECT_NE(CConstraint::check(*leaf, bindings), value);
}

std::unique_ptr<CConstraint>
attributeLeaf(const std::string& variable, const std::string& attribute)
{
    auto leaf = std::make_unique<CConstraint>();
    leaf->m_operatorName = "->";
    leaf->m_value = variable;
    leaf->m_attribute = attribute;
    return leaf;
}

TEST(CConstraint, EvaluatesAnAttributeToTheAgentsOwnPointer)
{
    const auto agent = agentWith("Speed", 2.0);
    Bindings bindings = {{"p", agent}};
    EXPECT_EQ(CConstraint::check(*attributeLeaf("p", "Speed"), bindings), agent->get("Speed"));
}

TEST(CConstraint, EntersAMissingAttributeIntoTheAgent)
{
    const auto agent = agentWith("Speed", 2.0);
    Bindings bindings = {{"p", agent}};
    EXPECT_EQ(CConstraint::check(*attributeLeaf("p", "Colour"), bindings), nullptr);
    EXPECT_TRUE(agent->m_attributes.contains("Colour"));
}

TEST(CConstraint, EntersAMissingVariableOfTheRoot)
{
    Bindings bindings;
    EXPECT_EQ(CConstraint::check(*attributeLeaf("p", "Speed"), bindings), nullptr);
    ASSERT_TRUE(bindings.contains("p"));
    EXPECT_EQ(bindings.at("p"), nullptr);
}

TEST(CConstraint, GivesAnEmptyValueForAnEmptyAgent)
{
    Bindings bindings = {{"p", nullptr}};
    EXPECT_EQ(CConstraint::check(*attributeLeaf("p", "Speed"), bindings), nullptr);
}

TEST(CConstraint, EntersNoVariableBelowAnOperator)
{
    FakeOperator in("in");
    const OperatorNames names({&in});
    Bindings bindings;
    CConstraint::check(*treeFrom("p->Position in z->Vertices"), bindings);
    EXPECT_TRUE(bindings.empty());
    ASSERT_EQ(in.m_arguments.size(), 2U);
    EXPECT_EQ(in.m_arguments[0], nullptr);
    EXPECT_EQ(in.m_arguments[1], nullptr);
}

TEST(CConstraint, LeavesTheCallersBindingsAsTheyAreWhenVerifying)
{
    const Bindings bindings;
    EXPECT_EQ(CConstraint::verify(*attributeLeaf("p", "Speed"), bindings), nullptr);
    EXPECT_TRUE(bindings.empty());
}

TEST(CConstraint, HandsAnOperatorItsArgumentsInOrder)
{
    FakeOperator op("f");
    const auto result = std::make_shared<CSDouble>(42.0);
    op.m_action = [&](const FakeOperator::Arguments&) { return result; };
    const OperatorNames names({&op});
    const auto root = treeFrom("f(p->Speed, Word, 7)");
    root->m_children[2]->m_isNumeric = true;
    root->m_children[2]->m_numericValue = 7.0;
    const auto agent = agentWith("Speed", 2.0);
    EXPECT_EQ(CConstraint::verify(*root, {{"p", agent}}), result);
    ASSERT_EQ(op.m_arguments.size(), 3U);
    EXPECT_EQ(op.m_arguments[0], agent->get("Speed"));
    EXPECT_EQ(toString(op.m_arguments[1].get()), "Word");
    EXPECT_EQ(toString(op.m_arguments[2].get()), "7");
}

TEST(CConstraint, EvaluatesDepthFirstAndCachesNothing)
{
    FakeOperator f("f");
    FakeOperator negation("!");
    const OperatorNames names({&f, &negation});
    const auto root = treeFrom("!(f(a))");
    CConstraint::verify(*root, {});
    CConstraint::verify(*root, {});
    EXPECT_EQ(f.m_calls, 2);
    EXPECT_EQ(negation.m_calls, 2);
    ASSERT_EQ(negation.m_arguments.size(), 1U);
    EXPECT_EQ(negation.m_arguments[0]->m_type, "BOOL");
}

TEST(CConstraint, CallsTheOperatorOfTheNodeNotTheOneOfTheName)
{
    FakeOperator old("f");
    FakeOperator replacement("f");
    const OperatorNames names({&old});
    const auto root = treeFrom("f(a)");
    CConstraint::m_allOperators["f"] = &replacement;
    CConstraint::verify(*root, {});
    EXPECT_EQ(old.m_calls, 1);
    EXPECT_EQ(replacement.m_calls, 0);
}

TEST(CConstraint, IsFalseWithoutAnOperatorObject)
{
    const OperatorNames names;
    const auto value = CConstraint::verify(*treeFrom("a < b"), {});
    EXPECT_TRUE(isFalse(value));
    EXPECT_EQ(value->m_confidence, 1.0);
}

TEST(ConstraintEvaluation, AsksForTheAgentOfEachAttributeLeaf)
{
    FakeOperator op("in");
    const OperatorNames names({&op});
    const auto root = treeFrom("p->Position in z->Vertices");
    const auto agent = agentWith("Vertices", 1.0);
    std::vector<std::string> asked;
    scenariomatch::evaluateConstraint(
        *root, [&](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
            asked.push_back(leaf.m_value);
            return agent;
        });
    EXPECT_EQ(asked, (std::vector<std::string>{"p", "z"}));
    EXPECT_EQ(op.m_arguments[1], agent->get("Vertices"));
}

TEST(OperatorCall, MakesAnExceptionAFalseValueAndReportsIt)
{
    const Failures failures;
    FakeOperator op("f");
    op.m_action = [](const FakeOperator::Arguments&) -> std::shared_ptr<CSBasicType> {
        throw std::runtime_error("broken");
    };
    EXPECT_TRUE(isFalse(callOperator(op, {})));
    EXPECT_TRUE(isFalse(callOperator(op, {})));
    EXPECT_EQ(failures.m_texts, (std::vector<std::string>{"f: broken", "f: broken"}));
}

TEST(OperatorCall, CatchesWhatIsNoException)
{
    const Failures failures;
    FakeOperator op("f");
    op.m_action = [](const FakeOperator::Arguments&) -> std::shared_ptr<CSBasicType> {
        throw 7; // NOLINT(hicpp-exception-baseclass): strangers may throw anything
    };
    EXPECT_TRUE(isFalse(callOperator(op, {})));
    EXPECT_EQ(failures.m_texts, std::vector<std::string>{"f: unknown exception"});
}

TEST(OperatorCall, LetsAFailedAllocationPass)
{
    const Failures failures;
    FakeOperator op("f");
    op.m_action = [](const FakeOperator::Arguments&) -> std::shared_ptr<CSBasicType> {
        throw std::bad_alloc();
    };
    EXPECT_THROW(callOperator(op, {}), std::bad_alloc);
    EXPECT_TRUE(failures.m_texts.empty());
}

TEST(OperatorCall, NeedsNoHandler)
{
    FakeOperator op("f");
    op.m_action = [](const FakeOperator::Arguments&) -> std::shared_ptr<CSBasicType> {
        throw std::runtime_error("broken");
    };
    EXPECT_TRUE(isFalse(callOperator(op, {})));
}

TEST(OperatorCall, MakesAThrowingDescriptionAnEmptyOne)
{
    const Failures failures;
    FakeOperator op("f");
    op.m_description.m_endsFirst = 1;
    EXPECT_EQ(describeOperator(op).m_endsFirst, std::optional<std::size_t>(1));
    op.m_describeThrows = true;
    EXPECT_FALSE(describeOperator(op).m_endsFirst.has_value());
    EXPECT_EQ(failures.m_texts, std::vector<std::string>{"f: no description"});
}

TEST(CConstraint, IsFalseWhereAnOperatorInsideThrows)
{
    const Failures failures;
    FakeOperator f("f");
    f.m_action = [](const FakeOperator::Arguments&) -> std::shared_ptr<CSBasicType> {
        throw std::out_of_range("at");
    };
    FakeOperator negation("!");
    const OperatorNames names({&f, &negation});
    CConstraint::verify(*treeFrom("!(f(a))"), {});
    ASSERT_EQ(negation.m_arguments.size(), 1U);
    EXPECT_TRUE(isFalse(negation.m_arguments[0]));
    EXPECT_EQ(failures.m_texts.size(), 1U);
}

TEST(CConstraint, EvaluatesTheDeepestTreeThatCanBeRead)
{
    std::string text;
    for (int i = 1; i < CConstraint::kMaximumDepth; ++i) {
        text += "f(a) + ";
    }
    FakeOperator plus("+");
    FakeOperator f("f");
    const OperatorNames names({&plus, &f});
    CConstraint::verify(*treeFrom(text + "b"), {});
    EXPECT_EQ(plus.m_calls, CConstraint::kMaximumDepth - 1);
}

} // namespace
