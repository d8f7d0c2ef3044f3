#pragma once

#include "lint/ConstraintTree.h"
#include "lint/Cursor.h"
#include "lint/Diagnostic.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch::lint
{

// Places at which a parenthesis may be missing, should the parentheses turn out not to balance.
struct MissingParentheses
{
    std::optional<Range> opening;
    std::optional<Range> closing;
};

// Parses a constraint as its writer means it, with the usual precedence:
//
//     chain = operand { OPERATOR operand } | operand OPERATOR text ;
//     operand = WORD | VARIABLE "->" ATTRIBUTE | NAME "(" chain { "," chain } ")" | "(" chain ")" ;
//
// "or" binds least, then "and", then comparisons and all other words, then + and -, then * and /.
// Reports what can be no constraint.
class ConstraintParser
{
public:
    // `operators` are the names that may join operands; a right side of several words that has none
    // of them is a text. All must outlive the parser.
    ConstraintParser(Cursor& cursor, const std::set<std::string>& operators, Diagnostics& out);

    // Up to the ")" that is not opened in it, or to the end. Nothing after a report.
    std::optional<ConstraintNode> parse();

    MissingParentheses& missing() { return m_missing; }

    // Whether what was reported last concerns the balance of parentheses.
    bool isUnbalanced() const { return m_isUnbalanced; }

    static constexpr int kMaximumDepth = 200;

private:
    bool parseChain(ConstraintNode& node, bool isArgument);
    bool parseItems(std::vector<ConstraintNode>& items, bool isArgument);
    bool parseItem(std::vector<ConstraintNode>& items);
    bool parseGroup(std::vector<ConstraintNode>& items);
    bool parseWord(std::vector<ConstraintNode>& items);
    bool parseCall(ConstraintNode& call);
    bool parseArgument(ConstraintNode& node);
    bool buildChain(ConstraintNode& node, std::vector<ConstraintNode>& items, bool isArgument);
    bool checkBlanks(const std::vector<ConstraintNode>& items);
    bool failCount(const std::vector<ConstraintNode>& items, bool isArgument);
    void joinText(std::vector<ConstraintNode>& items) const;
    bool isTextSide(const std::vector<ConstraintNode>& items) const;
    ConstraintNode climb(std::vector<ConstraintNode>& items, std::size_t& next, int least) const;
    bool checkOperatorWord(const ConstraintNode& item);
    void noteJoinedCall(const Word& word);
    bool failUnclosed(const Range& place, const Range& opening);
    bool failUnopened(const Range& place);
    bool
    fail(std::string_view rule, const Range& range, std::string message, std::string hint = "");

    Cursor& m_cursor;
    const std::set<std::string>& m_operators;
    Diagnostics& m_out;
    MissingParentheses m_missing;
    bool m_isUnbalanced = false;
    int m_depth = 0;
};

} // namespace scenariomatch::lint
