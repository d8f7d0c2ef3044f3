#include "scenario/CConstraint.h"
#include "tests/scenario/FakeOperators.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using scenariomatch::FakeOperator;
using scenariomatch::OperatorNames;
using scenariomatch::treeFrom;
using scenariomatch::treeOf;

std::string read(const std::string& text)
{
    return treeOf(*treeFrom(text));
}

std::vector<std::string> operatorNames()
{
    std::vector<std::string> names;
    for (const auto& [name, op] : CConstraint::m_allOperators) {
        names.push_back(name);
    }
    return names;
}

TEST(CConstraint, IsEmptyWhenNew)
{
    const CConstraint node;
    EXPECT_EQ(node.m_operator, nullptr);
    EXPECT_EQ(node.m_operatorName, "");
    EXPECT_EQ(node.m_value, "");
    EXPECT_EQ(node.m_attribute, "");
    EXPECT_FALSE(node.m_isNumeric);
    EXPECT_FALSE(node.m_isTemporal);
    EXPECT_TRUE(node.m_children.empty());
    EXPECT_FALSE(node.isLeaf());
}

TEST(CConstraint, ReadsAWordAsLeaf)
{
    const OperatorNames names;
    const auto leaf = treeFrom("  c1");
    EXPECT_EQ(leaf->m_operatorName, "NULL");
    EXPECT_EQ(leaf->m_value, "c1");
    EXPECT_TRUE(leaf->m_children.empty());
    EXPECT_TRUE(leaf->isLeaf());
    EXPECT_EQ(treeFrom("")->m_operatorName, "NULL");
    EXPECT_EQ(treeFrom("")->m_value, "");
    EXPECT_TRUE(CConstraint::m_allOperators.empty());
}

TEST(CConstraint, ReadsANumberAsAWord)
{
    const auto leaf = treeFrom("3.5");
    EXPECT_EQ(leaf->m_operatorName, "NULL");
    EXPECT_EQ(leaf->m_value, "3.5");
    EXPECT_FALSE(leaf->m_isNumeric);
}

TEST(CConstraint, ReadsABinaryExpressionOfAttributes)
{
    const OperatorNames names;
    const auto root = treeFrom("c1->Position in z1->Vertices");
    EXPECT_EQ(root->m_operatorName, "in");
    EXPECT_FALSE(root->isLeaf());
    ASSERT_EQ(root->m_children.size(), 2U);
    EXPECT_EQ(root->m_children[0]->m_operatorName, "->");
    EXPECT_EQ(root->m_children[0]->m_value, "c1");
    EXPECT_EQ(root->m_children[0]->m_attribute, "Position");
    EXPECT_TRUE(root->m_children[0]->isLeaf());
    EXPECT_EQ(treeOf(*root->m_children[1]), "z1->Vertices");
}

TEST(CConstraint, DoesNotParseTheRightSideFurther)
{
    EXPECT_EQ(read("a < b and c"), "<[a, b and c]");
    EXPECT_EQ(read("a < b->X and c"), "<[a, b->X and c]");
    EXPECT_EQ(read("a  <   b"), "<[a, b]");
    EXPECT_EQ(read("a < b "), "<[a, b ]");
}

TEST(CConstraint, TakesTheWholeTextWhereABlankIsMissing)
{
    EXPECT_EQ(read("a <"), "<[a, <]");
    EXPECT_EQ(read("a "), "[a, ]");
}

TEST(CConstraint, ReadsABareAttributeAsOperator)
{
    const OperatorNames names;
    EXPECT_EQ(read("c1->Speed"), "c1->Speed[c1->Speed, c1->Speed]");
    EXPECT_EQ(operatorNames(), std::vector<std::string>{"c1->Speed"});
}

TEST(CConstraint, ReadsANegation)
{
    EXPECT_EQ(read("!(c1)"), "![c1]");
    EXPECT_EQ(read("!(a < b)"), "![<[a, b]]");
    EXPECT_EQ(read("!(c1->Moving)"), "![c1->Moving[c1->Moving, c1->Moving]]");
    EXPECT_EQ(read("!("), "![]");
}

TEST(CConstraint, ReadsACall)
{
    EXPECT_EQ(read("near(c1->Position, z, 2)"), "near[c1->Position, z, 2]");
    EXPECT_EQ(read("f()"), "f[]");
    EXPECT_EQ(treeFrom("f()")->m_children.size(), 1U);
    EXPECT_EQ(treeFrom("f(")->m_children.size(), 1U);
    EXPECT_EQ(read("f(  a)"), "f[a]");
}

TEST(CConstraint, KeepsTheFirstWordOfAnArgument)
{
    EXPECT_EQ(read("f(a b, c)"), "f[a, c]");
    EXPECT_EQ(read("f( a , b->X  y )"), "f[a, b->X]");
    EXPECT_EQ(read("f(a,,b,)"), "f[a, , b, ]");
}

TEST(CConstraint, ReadsACallWithSomethingAfterIt)
{
    const OperatorNames names;
    const auto root = treeFrom("distance(c1->Position, c2->Position) < 200");
    EXPECT_EQ(treeOf(*root), "<[distance[c1->Position, c2->Position], 200]");
    EXPECT_EQ(operatorNames(), (std::vector<std::string>{"<", "distance"}));
    EXPECT_EQ(read("f(a) < g(b)"), "<[f[a], g[b]]");
    EXPECT_EQ(read("f(a) and (b < c)"), "and[f[a], <[b, c]]");
}

TEST(CConstraint, CutsACallAtItsFirstClosingParenthesis)
{
    EXPECT_EQ(read("f(g(a), b)"), ",[f[g(a], b)]");
}

TEST(CConstraint, ReadsOnWhereAParenthesisIsMissing)
{
    EXPECT_EQ(read("f(a) x"), "x[f[a], x]");
    EXPECT_EQ(read("f(a b"), "a[f[], b]");
    EXPECT_EQ(read("f(a"), "a[f[], a]");
}

TEST(CConstraint, LeavesTheParenthesisOfARightSideOut)
{
    EXPECT_EQ(read("a < (b)"), "<[a, b)]");
    EXPECT_EQ(read("a < f(b)"), "<[a, fb)]");
    EXPECT_EQ(read("a->X < value(b)"), "<[a->X[a->X, a->X], valueb)]");
    EXPECT_EQ(read("a < f (  b)"), "<[a, b)[f, b)]]");
    EXPECT_EQ(read("a <(b c)"), "<[a, c)[<b, c)]]");
    EXPECT_EQ(read("f (a)"), "[f, a)]");
}

TEST(CConstraint, ReadsAGroupIntoTheSameNode)
{
    EXPECT_EQ(read("(c1 before c2)"), "before[c1, c2]");
    EXPECT_EQ(read(" ( ( c1 before c2))"), "before[c1, c2]");
    EXPECT_EQ(read("()"), "");
    EXPECT_EQ(read("("), "");
}

TEST(CConstraint, ReadsAGroupWithSomethingAfterIt)
{
    EXPECT_EQ(read("(c1 before c2) and c3"), "and[before[c1, c2], c3]");
    EXPECT_EQ(read("((a b) c d)"), "c[b[a, b], d]");
    EXPECT_EQ(read("(a) b"), "b[a, b]");
}

TEST(CConstraint, DoesNotSplitTwoGroupsAtTheOperatorBetweenThem)
{
    EXPECT_EQ(read("(c1 before c2) and (c2 before c3)"), "before[c1, and[c2), c2 before c3]]");
}

TEST(CConstraint, LooksOperatorsUpWhenItReads)
{
    FakeOperator before("before");
    const OperatorNames names({&before});
    const auto root = treeFrom("(c1 before c2) and c3");
    EXPECT_EQ(root->m_operator, nullptr);
    EXPECT_EQ(root->m_children[0]->m_operator, &before);
    EXPECT_EQ(root->m_children[1]->m_operator, nullptr);
    EXPECT_EQ(CConstraint::m_allOperators.size(), 2U);
    EXPECT_EQ(CConstraint::m_allOperators.at("and"), nullptr);
    FakeOperator conjunction("and");
    CConstraint::m_allOperators["and"] = &conjunction;
    EXPECT_EQ(root->m_operator, nullptr);
    EXPECT_EQ(treeFrom("a and b")->m_operator, &conjunction);
    EXPECT_EQ(CConstraint::m_allOperators.size(), 2U);
}

TEST(CConstraint, AppendsArgumentsToTheChildrenItHas)
{
    CConstraint node;
    node.readAttributes("a");
    node.readAttributes("b->X, c");
    EXPECT_EQ(treeOf(node), "[a, b->X, c]");
}

std::string nested(int depth)
{
    std::string text = "a";
    for (int i = 1; i < depth; ++i) {
        text.insert(0, "!(");
        text += ')';
    }
    return text;
}

std::string chained(int depth)
{
    std::string text;
    for (int i = 1; i < depth; ++i) {
        text += "f(a) + ";
    }
    return text + "b";
}

TEST(CConstraint, RefusesExpressionsThatNestTooDeeply)
{
    constexpr int kDeepest = CConstraint::kMaximumDepth;
    EXPECT_NO_THROW(treeFrom(chained(kDeepest)));
    EXPECT_THROW(treeFrom(chained(kDeepest + 1)), std::out_of_range);
    EXPECT_NO_THROW(treeFrom(std::string(kDeepest - 1, '(') + "a"));
    EXPECT_THROW(treeFrom(std::string(kDeepest, '(') + "a"), std::out_of_range);
    EXPECT_THROW(treeFrom(chained(100'000)), std::out_of_range);
    EXPECT_THROW(treeFrom(nested(100'000)), std::out_of_range);
}

TEST(CConstraint, RefusesANameOfAnOperatorThatIsTooLong)
{
    const OperatorNames names;
    const std::string longest(CConstraint::kMaximumNameLength, 'x');
    EXPECT_EQ(treeFrom("a " + longest + " b")->m_operatorName, longest);
    EXPECT_THROW(treeFrom("a " + longest + "x b"), std::out_of_range);
}

TEST(CConstraint, ReadsMegabytesWithoutLosingTime)
{
    constexpr std::size_t kBytes = 1U << 19U;
    EXPECT_THROW(treeFrom(std::string(kBytes, '(')), std::out_of_range);
    EXPECT_THROW(
        treeFrom(std::string(kBytes / 2, '(') + std::string(kBytes / 2, ')')), std::out_of_range);
    std::string open;
    for (std::size_t i = 0; i < kBytes / 5; ++i) {
        open += "a b (";
    }
    EXPECT_THROW(treeFrom(open), std::out_of_range);
    EXPECT_EQ(treeFrom("f" + std::string(kBytes, ')'))->m_value.size(), kBytes + 1);
    EXPECT_EQ(treeFrom("f(" + std::string(100'000, ',') + ")")->m_children.size(), 100'001U);
}

} // namespace
