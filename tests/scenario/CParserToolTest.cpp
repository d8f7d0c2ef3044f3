#include "scenario/CParserTool.h"

#include "scenario/TextPieces.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace
{

std::string withoutBegin(std::string text)
{
    removeBeginSpaces(text);
    return text;
}

std::string firstWordOf(std::string text)
{
    removeAllSpaces(text);
    return text;
}

std::string firstTabPieceOf(std::string text)
{
    removeAllTabulation(text);
    return text;
}

// Group and rest, with a bar between them.
std::string groupOf(std::string text)
{
    const std::string group = getBetweenParentheses(text);
    return group + "|" + text;
}

std::string joined(std::initializer_list<std::string_view> lines)
{
    std::string declaration;
    for (const std::string_view line : lines) {
        scenariomatch::appendLine(declaration, line);
    }
    return declaration;
}

TEST(CParserTool, RemovesLeadingBlanksOnly)
{
    EXPECT_EQ(withoutBegin("  a b "), "a b ");
    EXPECT_EQ(withoutBegin(""), "");
    EXPECT_EQ(withoutBegin("   "), "");
    EXPECT_EQ(withoutBegin("\t a"), "\t a");
    EXPECT_EQ(withoutBegin(" \ta"), "\ta");
    EXPECT_EQ(withoutBegin("\r a"), "\r a");
}

TEST(CParserTool, KeepsTheFirstBlankFreeWord)
{
    EXPECT_EQ(firstWordOf("  ab cd"), "ab");
    EXPECT_EQ(firstWordOf("x->y , z"), "x->y");
    EXPECT_EQ(firstWordOf("word"), "word");
    EXPECT_EQ(firstWordOf("word "), "word");
    EXPECT_EQ(firstWordOf("   "), "");
    EXPECT_EQ(firstWordOf(""), "");
    EXPECT_EQ(firstWordOf("a\tb c"), "a\tb");
}

TEST(CParserTool, KeepsTheFirstTabFreePiece)
{
    EXPECT_EQ(firstTabPieceOf("\t\tab\tcd"), "ab");
    EXPECT_EQ(firstTabPieceOf("a b"), "a b");
    EXPECT_EQ(firstTabPieceOf(" \tb"), " ");
    EXPECT_EQ(firstTabPieceOf("\t\t"), "");
    EXPECT_EQ(firstTabPieceOf(""), "");
}

TEST(CParserTool, TakesTheGroupUpToItsClosingParenthesis)
{
    EXPECT_EQ(groupOf("a (b) c) rest"), "a (b) c| rest");
    EXPECT_EQ(groupOf(") rest"), "| rest");
    EXPECT_EQ(groupOf("a)b)"), "a|b)");
}

TEST(CParserTool, CountsOneLevelMoreWhenTheTextKeepsItsParenthesis)
{
    EXPECT_EQ(groupOf("(a b) op c"), "(a b| op c");
    EXPECT_EQ(groupOf("(x) and (y)"), "(x) and (y|");
    EXPECT_EQ(groupOf("(x) in c) rest"), "(x) in c| rest");
}

TEST(CParserTool, EndsTheGroupWithTheLastParenthesisWhenTheyDoNotBalance)
{
    EXPECT_EQ(groupOf("no parenthesis"), "|no parenthesis");
    EXPECT_EQ(groupOf(""), "|");
    EXPECT_EQ(groupOf("a (b"), "a (|b");
    EXPECT_EQ(groupOf("a (b) c (d"), "a (b|d");
    EXPECT_EQ(groupOf("((("), "(((|");
}

TEST(CParserTool, TakesMegabytesOfParenthesesInOneWalk)
{
    std::string opening(4U << 20U, '(');
    EXPECT_EQ(getBetweenParentheses(opening).size(), 4U << 20U);
    EXPECT_EQ(opening, "");

    const std::string nested = std::string(2U << 20U, '(') + std::string(2U << 20U, ')');
    std::string balanced = nested + ") rest";
    EXPECT_EQ(getBetweenParentheses(balanced), nested);
    EXPECT_EQ(balanced, " rest");
}

TEST(TextPieces, GivesTheWholeTextWhenTheSeparatorIsMissing)
{
    EXPECT_EQ(scenariomatch::textBefore("a:b:c", ':'), "a");
    EXPECT_EQ(scenariomatch::textAfter("a:b:c", ':'), "b:c");
    EXPECT_EQ(scenariomatch::textBefore("abc", ':'), "abc");
    EXPECT_EQ(scenariomatch::textAfter("abc", ':'), "abc");
    EXPECT_EQ(scenariomatch::textAfter("abc:", ':'), "");
}

TEST(TextPieces, DropsTheCarriageReturnAtTheEndOfALineOnly)
{
    std::string_view text = "a\rb\r\n\nlast\r";
    std::string_view line;
    ASSERT_TRUE(scenariomatch::takeLine(text, line));
    EXPECT_EQ(line, "a\rb");
    ASSERT_TRUE(scenariomatch::takeLine(text, line));
    EXPECT_EQ(line, "");
    ASSERT_TRUE(scenariomatch::takeLine(text, line));
    EXPECT_EQ(line, "last");
    EXPECT_FALSE(scenariomatch::takeLine(text, line));
}

TEST(TextPieces, CountsALineBreakAsOneBlank)
{
    EXPECT_EQ(joined({"a  ", "   b"}), "a b");
    EXPECT_EQ(joined({"a", "", "   ", "b"}), "a b");
    EXPECT_EQ(joined({"a)", "b"}), "a) b");
    EXPECT_EQ(joined({"a,", "b"}), "a, b");
}

TEST(TextPieces, CountsALineBreakAsNothingBesideParenthesesCommasAndBrackets)
{
    EXPECT_EQ(joined({"", "   a"}), "a");
    EXPECT_EQ(joined({"f( ", " a"}), "f(a");
    EXPECT_EQ(joined({"f", "(a", ", b", "[2]", ")"}), "f(a, b[2])");
}

TEST(TextPieces, KeepsATabWhereLinesMeet)
{
    EXPECT_EQ(joined({"a", "\tb"}), "a \tb");
}

} // namespace
