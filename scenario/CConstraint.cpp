#include "scenario/CConstraint.h"

#include "scenario/ConstraintEvaluation.h"
#include "scenario/TextPieces.h"
#include "types/NumberText.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace
{

using scenariomatch::firstWord;
using scenariomatch::takeGroup;
using scenariomatch::textAfter;
using scenariomatch::textBefore;
using scenariomatch::withoutLeadingBlanks;

constexpr std::string_view kArrow = "->";

// Makes the node a leaf: an attribute access when the text has an arrow, a word otherwise.
void setTerm(CConstraint& node, std::string_view text)
{
    const std::size_t arrow = text.find(kArrow);
    if (arrow == std::string_view::npos) {
        node.m_operatorName = "NULL";
        node.m_value = text;
        return;
    }
    node.m_operatorName = kArrow;
    node.m_value = text.substr(0, arrow);
    node.m_attribute = text.substr(arrow + kArrow.size());
}

void setOperator(CConstraint& node, std::string_view name)
{
    // Where a blank is missing all that follows is a name, on every level of nesting.
    if (name.size() > CConstraint::kMaximumNameLength) {
        throw std::out_of_range(
            "CConstraint::read: the name of an operator is longer than " +
            std::to_string(CConstraint::kMaximumNameLength) + " bytes");
    }
    node.m_operatorName = name;
    node.m_operator = CConstraint::m_allOperators[node.m_operatorName];
}

CConstraint& appendChild(CConstraint& node)
{
    return *node.m_children.emplace_back(std::make_unique<CConstraint>());
}

// Reads one constraint. All nodes read from parts of one text, which is changed in place where a
// parenthesis is left out of a right side; parts that are read apart never overlap.
class Reader
{
public:
    explicit Reader(std::string text)
        : m_text(std::move(text))
    {
    }

    void read(CConstraint& root) { readConstraint(root, m_text, 1); }

private:
    void readConstraint(CConstraint& node, std::string_view text, int depth);
    void readFlat(CConstraint& node, std::string_view text);
    void readCall(CConstraint& node, std::string_view text, std::size_t open, int depth);
    void readCallThenRest(CConstraint& node, std::string_view text, std::size_t end, int depth);
    void readOpenRight(CConstraint& node, std::string_view text, std::size_t open, int depth);
    void readGroup(CConstraint& node, std::string_view text, int depth);
    std::string_view joined(std::string_view left, std::string_view right);

    std::string m_text;
};

void Reader::readConstraint(CConstraint& node, std::string_view text, int depth)
{
    if (depth > CConstraint::kMaximumDepth) {
        throw std::out_of_range(
            "CConstraint::read: the constraint nests more than " +
            std::to_string(CConstraint::kMaximumDepth) + " deep");
    }
    text = withoutLeadingBlanks(text);
    const std::size_t open = text.find('(');
    if (open == std::string_view::npos) {
        readFlat(node, text);
    } else if (open == 0) {
        readGroup(node, text, depth);
    } else if (text.substr(0, open).find(' ') == std::string_view::npos) {
        readCall(node, text, open, depth);
    } else {
        readOpenRight(node, text, open, depth);
    }
}

// LEFT OP RIGHT without parentheses, or one word.
void Reader::readFlat(CConstraint& node, std::string_view text)
{
    if (text.find(' ') == std::string_view::npos && text.find(kArrow) == std::string_view::npos) {
        node.m_operatorName = "NULL";
        node.m_value = text;
        return;
    }
    const std::string_view rest = withoutLeadingBlanks(textAfter(text, ' '));
    setTerm(appendChild(node), textBefore(text, ' '));
    setOperator(node, textBefore(rest, ' '));
    setTerm(appendChild(node), withoutLeadingBlanks(textAfter(rest, ' ')));
}

// NAME(...) alone, or with something after its first closing parenthesis.
void Reader::readCall(CConstraint& node, std::string_view text, std::size_t open, int depth)
{
    const std::size_t close = text.find(')', open);
    const std::string_view tail = withoutLeadingBlanks(text.substr(open + 1));
    if (!tail.empty() && close != text.size() - 1) {
        readCallThenRest(node, text, close == std::string_view::npos ? open : close, depth);
        return;
    }
    const std::string_view name = text.substr(0, open);
    const std::string_view arguments = tail.substr(0, tail.empty() ? 0 : tail.size() - 1);
    setOperator(node, name);
    if (name == "!") {
        readConstraint(appendChild(node), arguments, depth + 1);
    } else {
        node.readAttributes(std::string(arguments));
    }
}

// NAME(...) OP RIGHT; the call ends at `end`.
void Reader::readCallThenRest(CConstraint& node, std::string_view text, std::size_t end, int depth)
{
    const std::string_view rest = withoutLeadingBlanks(text.substr(end + 1));
    setOperator(node, textBefore(rest, ' '));
    readConstraint(appendChild(node), text.substr(0, end + 1), depth + 1);
    readConstraint(appendChild(node), textAfter(rest, ' '), depth + 1);
}

// LEFT OP ...(...: the right side goes on after the parenthesis, which is left out.
void Reader::readOpenRight(CConstraint& node, std::string_view text, std::size_t open, int depth)
{
    const std::string_view head = text.substr(0, open);
    const std::string_view rest = withoutLeadingBlanks(textAfter(head, ' '));
    setOperator(node, textBefore(rest, ' '));
    readConstraint(appendChild(node), textBefore(head, ' '), depth + 1);
    const std::string_view right =
        joined(textAfter(rest, ' '), withoutLeadingBlanks(text.substr(open + 1)));
    readConstraint(appendChild(node), right, depth + 1);
}

// (...) alone, or (...) OP RIGHT. The group's own opening parenthesis is counted once more, so that
// the group runs on to the last closing one when there is no enclosing pair.
void Reader::readGroup(CConstraint& node, std::string_view text, int depth)
{
    std::string_view rest = text;
    const std::string_view group = takeGroup(rest).substr(1);
    rest = withoutLeadingBlanks(rest);
    if (rest.empty()) {
        readConstraint(node, group, depth + 1);
        return;
    }
    setOperator(node, textBefore(rest, ' '));
    readConstraint(appendChild(node), group, depth + 1);
    readConstraint(appendChild(node), textAfter(rest, ' '), depth + 1);
}

// The two parts of m_text as one: the left one is moved up to the right one.
std::string_view Reader::joined(std::string_view left, std::string_view right)
{
    const auto offset = [this](std::string_view part) { return part.data() - m_text.data(); };
    const auto leftBegin = m_text.begin() + offset(left);
    const auto rightBegin = m_text.begin() + offset(right);
    const auto leftEnd = leftBegin + static_cast<std::ptrdiff_t>(left.size());
    const auto begin = std::move_backward(leftBegin, leftEnd, rightBegin);
    return {std::to_address(begin), left.size() + right.size()};
}

} // namespace

CConstraint::OperatorTable CConstraint::m_allOperators;

CConstraint::~CConstraint() = default;

void CConstraint::read(std::string text)
{
    Reader(std::move(text)).read(*this);
}

void CConstraint::readAttributes(std::string text)
{
    std::string_view rest = text;
    std::size_t comma = 0;
    while (comma != std::string_view::npos) {
        comma = rest.find(',');
        setTerm(appendChild(*this), firstWord(rest.substr(0, comma)));
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
}

void CConstraint::print() const
{
    std::cout << "Operator: " << m_operatorName << std::endl;
    if (m_operatorName == "NULL") {
        std::cout << "Value: ";
        if (m_isNumeric) {
            std::cout << m_numericValue << std::endl;
        } else {
            std::cout << m_value << std::endl;
        }
    } else if (m_operatorName == kArrow) {
        std::cout << "Value: " << m_value << " -> " << m_attribute << std::endl;
    } else {
        for (const std::unique_ptr<CConstraint>& child : m_children) {
            child->print();
        }
    }
}

void CConstraint::classifyConstraints(const std::vector<std::string>&)
{
    assert(m_operator != nullptr);
    m_isTemporal = m_operator != nullptr && m_operator->m_isTemporal;
}

void CConstraint::fillConstraintsConstants(const std::map<std::string, double>& constants)
{
    if (m_operatorName != "NULL") {
        for (const std::unique_ptr<CConstraint>& child : m_children) {
            child->fillConstraintsConstants(constants);
        }
        return;
    }
    if (const auto constant = constants.find(m_value); constant != constants.end()) {
        m_isNumeric = true;
        m_numericValue = constant->second;
        return;
    }
    const std::optional<double> number = scenariomatch::wholeNumber(m_value);
    m_isNumeric = number.has_value();
    if (number) {
        m_numericValue = *number;
        std::cout << *number << std::endl;
    }
}

bool CConstraint::checkOperator(const OperatorTable& loaded) const
{
    if (isLeaf()) {
        return true;
    }
    if (!loaded.contains(m_operatorName)) {
        std::cerr << "Warning: Operator " << m_operatorName << " is unknown!" << std::endl;
        return false;
    }
    return std::all_of(
        m_children.begin(), m_children.end(), [&](const std::unique_ptr<CConstraint>& child) {
            return child->checkOperator(loaded);
        });
}

std::shared_ptr<CSBasicType> CConstraint::verify(const CConstraint& root, Bindings bindings)
{
    return check(root, bindings);
}

std::shared_ptr<CSBasicType> CConstraint::check(const CConstraint& node, Bindings& bindings)
{
    static const std::shared_ptr<CSAgent> kNoAgent;
    return scenariomatch::evaluateConstraint(
        node, [&](const CConstraint& leaf) -> const std::shared_ptr<CSAgent>& {
            if (&leaf == &node) {
                return bindings[leaf.m_value];
            }
            const auto bound = bindings.find(leaf.m_value);
            return bound == bindings.end() ? kNoAgent : bound->second;
        });
}

bool CConstraint::isLeaf() const
{
    return m_operatorName == "NULL" || m_operatorName == kArrow;
}
