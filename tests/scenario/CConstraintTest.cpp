#include "scenario/CConstraint.h"

#include "tests/scenario/FakeOperators.h"
#include "tests/types/CapturedStream.h"

#include <gtest/gtest.h>

#include <clocale>
#include <iostream>
#include <string>

namespace
{

using scenariomatch::CapturedStream;
using scenariomatch::FakeOperator;
using scenariomatch::OperatorNames;
using scenariomatch::treeFrom;
using scenariomatch::treeOf;

// The trace on standard output while the tree is filled.
std::string tracedFill(CConstraint& root, const std::map<std::string, double>& constants)
{
    const CapturedStream output(std::cout);
    root.fillConstraintsConstants(constants);
    return output.text();
}

TEST(CConstraint, PrintsItsTree)
{
    const auto root = treeFrom("distance(c1->Position, z) < Limit");
    tracedFill(*root, {{"Limit", 2.5}});
    const CapturedStream output(std::cout);
    root->print();
    EXPECT_EQ(
        output.text(),
        "Operator: <\n"
        "Operator: distance\n"
        "Operator: ->\n"
        "Value: c1 -> Position\n"
        "Operator: NULL\n"
        "Value: z\n"
        "Operator: NULL\n"
        "Value: 2.5\n");
}

TEST(CConstraint, TakesTheTemporalFlagOfItsOwnOperator)
{
    FakeOperator before("before", true);
    FakeOperator conjunction("and");
    const OperatorNames names({&before, &conjunction});
    const auto root = treeFrom("(c1 before c2) and c3");
    root->m_children[0]->classifyConstraints({});
    EXPECT_TRUE(root->m_children[0]->m_isTemporal);
    root->m_isTemporal = true;
    root->m_children[0]->m_isTemporal = false;
    root->classifyConstraints({"ignored"});
    EXPECT_FALSE(root->m_isTemporal);
    EXPECT_FALSE(root->m_children[0]->m_isTemporal);
}

TEST(CConstraint, FillsANumberAndTracesIt)
{
    const auto leaf = treeFrom("3.5");
    EXPECT_EQ(tracedFill(*leaf, {}), "3.5\n");
    EXPECT_TRUE(leaf->m_isNumeric);
    EXPECT_EQ(leaf->m_numericValue, 3.5);
    EXPECT_EQ(leaf->m_value, "3.5");
}

TEST(CConstraint, FillsWhatAStreamReadsWholeOnly)
{
    const auto traceOf = [](const std::string& word) { return tracedFill(*treeFrom(word), {}); };
    EXPECT_EQ(traceOf("-2e3"), "-2000\n");
    EXPECT_EQ(traceOf("1234567"), "1.23457e+06\n");
    EXPECT_EQ(traceOf("3.5m"), "");
    EXPECT_EQ(traceOf("c1"), "");
    EXPECT_EQ(traceOf(""), "");
    EXPECT_EQ(traceOf("nan"), "");
    EXPECT_EQ(traceOf("1e999"), "");
}

TEST(CConstraint, ForgetsANumberThatIsNoneAnyMore)
{
    const auto leaf = treeFrom("c1");
    tracedFill(*leaf, {{"c1", 4.0}});
    ASSERT_TRUE(leaf->m_isNumeric);
    tracedFill(*leaf, {});
    EXPECT_FALSE(leaf->m_isNumeric);
}

TEST(CConstraint, PrefersAConstantAndDoesNotTraceIt)
{
    const auto word = treeFrom("c1");
    EXPECT_EQ(tracedFill(*word, {{"c1", 7.0}}), "");
    EXPECT_EQ(treeOf(*word), "#7.000000");
    const auto number = treeFrom("3");
    EXPECT_EQ(tracedFill(*number, {{"3", 4.0}}), "");
    EXPECT_EQ(number->m_numericValue, 4.0);
}

TEST(CConstraint, FillsWordsBelowOperatorsButNoAttributes)
{
    const auto root = treeFrom("f(Limit->X, 2) < Limit");
    EXPECT_EQ(tracedFill(*root, {{"Limit", 5.0}}), "2\n");
    EXPECT_EQ(treeOf(*root), "<[f[Limit->X, #2.000000], #5.000000]");
    EXPECT_FALSE(root->m_children[0]->m_children[0]->m_isNumeric);
}

TEST(CConstraint, FillsNumbersInAnyLocale)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    const auto leaf = treeFrom("1.5");
    EXPECT_EQ(tracedFill(*leaf, {}), "1.5\n");
    EXPECT_EQ(leaf->m_numericValue, 1.5);
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(CConstraint, PassesTheCheckOfItsOperators)
{
    FakeOperator less("<");
    FakeOperator distance("distance");
    const CConstraint::OperatorTable loaded = {{"<", &less}, {"distance", &distance}};
    const CapturedStream errors(std::cerr);
    EXPECT_TRUE(treeFrom("distance(c1->Position, c2) < 200")->checkOperator(loaded));
    EXPECT_TRUE(treeFrom("c1")->checkOperator({}));
    EXPECT_EQ(errors.text(), "");
}

TEST(CConstraint, ReportsAnUnknownOperatorAndGoesNoDeeper)
{
    const CapturedStream errors(std::cerr);
    EXPECT_FALSE(treeFrom("distance(a, b) < 200")->checkOperator({}));
    EXPECT_EQ(errors.text(), "Warning: Operator < is unknown!\n");
}

TEST(CConstraint, ChecksNoFurtherSiblingAfterAFailure)
{
    FakeOperator less("<");
    const CapturedStream errors(std::cerr);
    EXPECT_FALSE(treeFrom("f(a) < g(b)")->checkOperator({{"<", &less}}));
    EXPECT_EQ(errors.text(), "Warning: Operator f is unknown!\n");
}

TEST(CConstraint, ChecksTheNegationLikeAnyOperator)
{
    const CapturedStream errors(std::cerr);
    EXPECT_FALSE(treeFrom("!(a)")->checkOperator({}));
    EXPECT_EQ(errors.text(), "Warning: Operator ! is unknown!\n");
}

} // namespace
