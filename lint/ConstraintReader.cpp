#include "lint/ConstraintReader.h"

#include "scenario/CConstraint.h"

#include <string_view>
#include <utility>

namespace scenariomatch::lint
{

namespace
{

constexpr std::string_view kArrow = "->";

ConstraintNode termOf(const PlacedText& text)
{
    ConstraintNode node;
    node.range = text.range();
    const std::size_t arrow = text.text().find(kArrow);
    if (arrow == std::string_view::npos) {
        node.name = text.word();
        return node;
    }
    node.kind = ConstraintNode::Kind::Attribute;
    node.name = text.part(0, arrow).word();
    node.attribute = text.from(arrow + kArrow.size()).word();
    return node;
}

// One constraint; the functions are those of the engine's reader. Each returns false where that one
// throws.
class Reader
{
public:
    bool readConstraint(ConstraintNode& node, const PlacedText& whole, int depth);

private:
    bool setOperator(ConstraintNode& node, const PlacedText& name) const;
    bool readFlat(ConstraintNode& node, const PlacedText& text) const;
    bool readCall(ConstraintNode& node, const PlacedText& text, std::size_t open, int depth);
    bool readOpenRight(ConstraintNode& node, const PlacedText& text, std::size_t open, int depth);
    bool readGroup(ConstraintNode& node, const PlacedText& text, int depth);
    bool readSides(
        ConstraintNode& node,
        const PlacedText& op,
        const PlacedText& left,
        const PlacedText& right,
        int depth);
    static void readAttributes(ConstraintNode& node, const PlacedText& text);
};

bool Reader::setOperator(ConstraintNode& node, const PlacedText& name) const
{
    node.kind = ConstraintNode::Kind::Call;
    node.name = name.word();
    return name.size() <= CConstraint::kMaximumNameLength;
}

bool Reader::readConstraint(ConstraintNode& node, const PlacedText& whole, int depth)
{
    if (depth > CConstraint::kMaximumDepth) {
        return false;
    }
    const PlacedText text = withoutLeadingBlanks(whole);
    node.range = text.range();
    const std::size_t open = text.text().find('(');
    if (open == std::string_view::npos) {
        return readFlat(node, text);
    }
    if (open == 0) {
        return readGroup(node, text, depth);
    }
    const bool isCall = text.text().substr(0, open).find(' ') == std::string_view::npos;
    return isCall ? readCall(node, text, open, depth) : readOpenRight(node, text, open, depth);
}

bool Reader::readFlat(ConstraintNode& node, const PlacedText& text) const
{
    const std::string_view letters = text.text();
    if (letters.find(' ') == std::string_view::npos &&
        letters.find(kArrow) == std::string_view::npos) {
        node.name = text.word();
        return true;
    }
    const PlacedText rest = withoutLeadingBlanks(textAfter(text, ' '));
    node.children.push_back(termOf(textBefore(text, ' ')));
    node.children.push_back(termOf(withoutLeadingBlanks(textAfter(rest, ' '))));
    return setOperator(node, textBefore(rest, ' '));
}

bool Reader::readCall(ConstraintNode& node, const PlacedText& text, std::size_t open, int depth)
{
    const std::size_t close = text.text().find(')', open);
    const PlacedText tail = withoutLeadingBlanks(text.from(open + 1));
    if (!tail.empty() && close != text.size() - 1) {
        const std::size_t end = close == std::string_view::npos ? open : close;
        const PlacedText rest = withoutLeadingBlanks(text.from(end + 1));
        return readSides(
            node, textBefore(rest, ' '), text.part(0, end + 1), textAfter(rest, ' '), depth);
    }
    const PlacedText arguments = tail.part(0, tail.empty() ? 0 : tail.size() - 1);
    if (!setOperator(node, text.part(0, open))) {
        return false;
    }
    if (node.name.text == "!") {
        return readConstraint(node.children.emplace_back(), arguments, depth + 1);
    }
    readAttributes(node, arguments);
    return true;
}

bool Reader::readOpenRight(
    ConstraintNode& node, const PlacedText& text, std::size_t open, int depth)
{
    const PlacedText head = text.part(0, open);
    const PlacedText rest = withoutLeadingBlanks(textAfter(head, ' '));
    PlacedText right = textAfter(rest, ' ');
    right.append(withoutLeadingBlanks(text.from(open + 1)));
    return readSides(node, textBefore(rest, ' '), textBefore(head, ' '), right, depth);
}

bool Reader::readGroup(ConstraintNode& node, const PlacedText& text, int depth)
{
    // The group's own opening parenthesis is counted once more.
    std::size_t level = 1;
    std::size_t end = 0;
    for (std::size_t i = 0; i < text.size() && level != 0; ++i) {
        const char letter = text.text()[i];
        if (letter == '(' || letter == ')') {
            level = letter == '(' ? level + 1 : level - 1;
            end = i + 1;
        }
    }
    const std::size_t close = text.text().substr(0, end).rfind(')');
    const PlacedText group = text.part(1, close == std::string_view::npos ? end : close);
    const PlacedText rest = withoutLeadingBlanks(text.from(end));
    if (rest.empty()) {
        return readConstraint(node, group, depth + 1);
    }
    return readSides(node, textBefore(rest, ' '), group, textAfter(rest, ' '), depth);
}

bool Reader::readSides(
    ConstraintNode& node,
    const PlacedText& op,
    const PlacedText& left,
    const PlacedText& right,
    int depth)
{
    return setOperator(node, op) && readConstraint(node.children.emplace_back(), left, depth + 1) &&
           readConstraint(node.children.emplace_back(), right, depth + 1);
}

void Reader::readAttributes(ConstraintNode& node, const PlacedText& text)
{
    PlacedText rest = text;
    std::size_t comma = 0;
    while (comma != std::string_view::npos) {
        comma = rest.text().find(',');
        node.children.push_back(termOf(firstWord(rest.part(0, comma))));
        rest = comma == std::string_view::npos ? rest : rest.from(comma + 1);
    }
}

} // namespace

std::optional<ConstraintNode> readConstraint(const PlacedText& text)
{
    ConstraintNode node;
    if (!Reader().readConstraint(node, text, 1)) {
        return std::nullopt;
    }
    return node;
}

} // namespace scenariomatch::lint
