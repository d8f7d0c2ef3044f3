#include "lint/ConstraintParser.h"

#include "lint/Model.h"

#include <algorithm>
#include <fmt/format.h>
#include <string_view>
#include <utility>

namespace scenariomatch::lint
{

namespace
{

constexpr std::string_view kStops = "(),";
constexpr std::string_view kArrow = "->";

int precedenceOf(std::string_view op)
{
    if (op == "or") {
        return 1;
    }
    if (op == "and") {
        return 2;
    }
    if (op == "+" || op == "-") {
        return 4;
    }
    return op == "*" || op == "/" ? 5 : 3;
}

ConstraintNode leafOf(const Word& word)
{
    ConstraintNode node;
    node.name = word;
    node.range = word.range;
    const std::size_t arrow = word.text.find(kArrow);
    if (arrow != std::string::npos) {
        node.kind = ConstraintNode::Kind::Attribute;
        const Range& all = word.range;
        node.name = {word.text.substr(0, arrow), {all.source, all.begin, all.begin + arrow}};
        node.attribute = {
            word.text.substr(arrow + kArrow.size()),
            {all.source, all.begin + arrow + kArrow.size(), all.end}};
    }
    return node;
}

bool isPlainWord(const ConstraintNode& item)
{
    return item.kind != ConstraintNode::Kind::Call && !item.isGroup;
}

// "a<b": an operator made of signs inside a word; its position, or npos.
std::size_t signInside(std::string_view word)
{
    std::size_t position = word.find_first_of("<>=!");
    while (position != std::string_view::npos && position != 0 && word[position] == '>' &&
           word[position - 1] == '-') {
        position = word.find_first_of("<>=!", position + 1);
    }
    return position;
}

bool isSign(std::string_view word)
{
    return !word.empty() && word.find_first_not_of("<>=!+-*/") == std::string_view::npos;
}

} // namespace

ConstraintParser::ConstraintParser(
    Cursor& cursor, const std::set<std::string>& operators, Diagnostics& out)
    : m_cursor(cursor)
    , m_operators(operators)
    , m_out(out)
{
}

std::optional<ConstraintNode> ConstraintParser::parse()
{
    ConstraintNode node;
    m_depth = 0;
    if (!parseChain(node, false)) {
        return std::nullopt;
    }
    if (m_cursor.peek() == ',') {
        failUnopened(node.range);
        return std::nullopt;
    }
    return node;
}

bool ConstraintParser::fail(
    std::string_view rule, const Range& range, std::string message, std::string hint)
{
    m_out.add(rule, range, std::move(message), std::move(hint));
    return false;
}

bool ConstraintParser::failUnclosed(const Range& place, const Range& opening)
{
    const Place open = opening.place();
    m_isUnbalanced = true;
    return fail(
        "unclosed-parenthesis",
        m_missing.closing.value_or(place),
        "')' is missing",
        fmt::format("'(' was opened at {}:{}", open.line, open.column));
}

// A comma stands outside the arguments of a call: the parenthesis before them is missing.
bool ConstraintParser::failUnopened(const Range& place)
{
    m_isUnbalanced = true;
    return fail("missing-parenthesis", m_missing.opening.value_or(place), "'(' is missing");
}

bool ConstraintParser::parseChain(ConstraintNode& node, bool isArgument)
{
    if (++m_depth > kMaximumDepth) {
        return fail(
            "malformed",
            m_cursor.here(),
            fmt::format("the constraint nests more than {} deep", kMaximumDepth));
    }
    std::vector<ConstraintNode> items;
    const bool isParsed = parseItems(items, isArgument) && buildChain(node, items, isArgument);
    --m_depth;
    return isParsed;
}

bool ConstraintParser::parseItems(std::vector<ConstraintNode>& items, bool isArgument)
{
    while (true) {
        const std::size_t begin = m_cursor.position();
        const bool hasBlank = m_cursor.skipBlanks();
        if (m_cursor.atEnd() || m_cursor.peek() == ')' || m_cursor.peek() == ',') {
            if (hasBlank && m_cursor.peek() == ')' && !isArgument && !items.empty()) {
                m_out.add(
                    "blank-before-parenthesis",
                    m_cursor.since(begin),
                    "the blank before ')' belongs to the word before it",
                    "write no blank here");
            }
            return true;
        }
        if (!parseItem(items)) {
            return false;
        }
    }
}

bool ConstraintParser::parseItem(std::vector<ConstraintNode>& items)
{
    return m_cursor.peek() == '(' ? parseGroup(items) : parseWord(items);
}

bool ConstraintParser::parseGroup(std::vector<ConstraintNode>& items)
{
    const Range opening = m_cursor.here();
    if (items.size() % 2 == 1) {
        const ConstraintNode& before = items.back();
        const bool isName = items.size() == 1 || items.size() == 3;
        if (isName && isPlainWord(before) && m_operators.contains(before.name.text)) {
            return fail(
                "blank-before-call",
                before.name.range.after(),
                fmt::format("a blank before '(' makes '{}' a left side", before.name.text),
                fmt::format("write {}(", before.name.text));
        }
        return failUnclosed(m_cursor.behind(), opening);
    }
    m_cursor.skip();
    ConstraintNode& group = items.emplace_back();
    if (!parseChain(group, false)) {
        return false;
    }
    if (m_cursor.peek() == ',') {
        return failUnopened(group.range);
    }
    if (!m_cursor.take(')')) {
        return failUnclosed(m_cursor.behind(), opening);
    }
    group.isGroup = true;
    group.range = spanOf(opening, m_cursor.behind());
    return true;
}

bool ConstraintParser::parseWord(std::vector<ConstraintNode>& items)
{
    const Range before = m_cursor.behind();
    const Word word = m_cursor.takeWord(kStops);
    if (m_cursor.peek() != '(') {
        noteJoinedCall(word);
        items.push_back(leafOf(word));
        return true;
    }
    if (isSection(word.text) || (!items.empty() && isModelKind(word.text))) {
        return failUnclosed(before, word.range);
    }
    // A line break before "(" counts as nothing, so a word at the end of a line looks like a call.
    const bool isNextLine = m_cursor.here().place().line != word.range.place().line;
    if (isNextLine && !m_operators.contains(word.text)) {
        return failUnclosed(word.range.after(), m_cursor.here());
    }
    ConstraintNode call;
    call.kind = ConstraintNode::Kind::Call;
    call.isPrefix = true;
    call.name = word;
    if (items.size() % 2 == 1) {
        return isSign(word.text) ? fail(
                                       "missing-blank",
                                       word.range,
                                       fmt::format("'{}' needs a blank behind it", word.text))
                                 : failUnclosed(before, word.range);
    }
    if (!items.empty() && !m_missing.closing && !m_operators.contains(word.text)) {
        m_missing.closing = word.range.after();
    }
    if (!parseCall(call)) {
        return false;
    }
    items.push_back(std::move(call));
    return true;
}

// "distancep->Position": the name of an operator grown together with a variable.
void ConstraintParser::noteJoinedCall(const Word& word)
{
    const std::size_t arrow = word.text.find(kArrow);
    if (m_missing.opening || m_operators.contains(word.text)) {
        return;
    }
    const std::string head = word.text.substr(0, arrow);
    for (std::size_t length = head.size(); length > 1; --length) {
        if (m_operators.contains(head.substr(0, length - 1)) &&
            !isSign(head.substr(0, length - 1))) {
            const Range& range = word.range;
            m_missing.opening = {range.source, range.begin + length - 1, range.begin + length};
            return;
        }
    }
}

bool ConstraintParser::parseCall(ConstraintNode& call)
{
    const Range opening = m_cursor.here();
    m_cursor.skip();
    m_cursor.skipBlanks();
    const std::size_t begin = m_cursor.position();
    if (m_cursor.take(')')) {
        // An empty list is read as one empty word.
        call.children.push_back(leafOf({"", m_cursor.text().range(begin, begin)}));
        call.range = spanOf(call.name.range, m_cursor.behind());
        return true;
    }
    const bool isNegation = call.name.text == "!";
    do {
        ConstraintNode& child = call.children.emplace_back();
        if (!(isNegation ? parseChain(child, false) : parseArgument(child))) {
            return false;
        }
    } while (m_cursor.take(','));
    if (!m_cursor.take(')')) {
        return failUnclosed(m_cursor.behind(), opening);
    }
    call.range = spanOf(call.name.range, m_cursor.behind());
    return true;
}

bool ConstraintParser::parseArgument(ConstraintNode& node)
{
    m_cursor.skipBlanks();
    const std::size_t begin = m_cursor.position();
    if (!parseChain(node, true)) {
        return false;
    }
    if (node.kind == ConstraintNode::Kind::Call && !node.isPrefix && !node.isGroup &&
        !m_missing.closing && !node.children.empty()) {
        m_missing.closing = node.children.front().range.after();
    }
    if (node.range.source == nullptr) {
        node.range = m_cursor.since(begin);
    }
    return true;
}

// A right side of several words without an operator among them: a text.
bool ConstraintParser::isTextSide(const std::vector<ConstraintNode>& items) const
{
    for (std::size_t i = 2; i < items.size(); ++i) {
        const bool isOperator = i % 2 == 1 && m_operators.contains(items[i].name.text);
        if (!isPlainWord(items[i]) || isOperator || items[i].kind != ConstraintNode::Kind::Word) {
            return false;
        }
    }
    return items.size() > 3 && isPlainWord(items[0]) && isPlainWord(items[1]);
}

bool ConstraintParser::checkOperatorWord(const ConstraintNode& item)
{
    if (item.kind != ConstraintNode::Kind::Word || item.isGroup) {
        return fail("malformed", item.range, "an operator is expected here");
    }
    return true;
}

// "a<b" is one word.
bool ConstraintParser::checkBlanks(const std::vector<ConstraintNode>& items)
{
    for (const ConstraintNode& item : items) {
        if (!isPlainWord(item)) {
            continue;
        }
        const std::string written = m_cursor.text().lettersOf(item.range);
        const bool isOperator = isSign(written) || m_operators.contains(written);
        if (!isOperator && signInside(written) != std::string_view::npos) {
            return fail(
                "missing-blank",
                item.range,
                fmt::format("'{}' is one word: operators have blanks around them", written));
        }
    }
    return true;
}

// An even number of items is no chain.
bool ConstraintParser::failCount(const std::vector<ConstraintNode>& items, bool isArgument)
{
    if (isArgument) {
        return fail(
            "argument-cut",
            items[1].range,
            "an argument ends at its first blank: this is lost",
            "arguments are single words and attributes");
    }
    return fail(
        "malformed",
        items.back().range.after(),
        items.size() == 2 ? "an operator and a value are expected here"
                          : "a value is expected here");
}

void ConstraintParser::joinText(std::vector<ConstraintNode>& items) const
{
    ConstraintNode text;
    text.range = spanOf(items[2].range, items.back().range);
    text.name = {m_cursor.text().lettersOf(text.range), text.range};
    items.resize(2);
    items.push_back(std::move(text));
}

bool ConstraintParser::buildChain(
    ConstraintNode& node, std::vector<ConstraintNode>& items, bool isArgument)
{
    if (items.empty()) {
        return fail("malformed", m_cursor.here(), "a value is expected here");
    }
    if (!checkBlanks(items)) {
        return false;
    }
    if (items.size() == 1) {
        node = std::move(items.front());
        return true;
    }
    if (isTextSide(items)) {
        joinText(items);
    }
    if (items.size() % 2 == 0) {
        return failCount(items, isArgument);
    }
    for (std::size_t i = 1; i < items.size(); i += 2) {
        if (!checkOperatorWord(items[i])) {
            return false;
        }
    }
    std::size_t next = 0;
    node = climb(items, next, 1);
    return true;
}

ConstraintNode
ConstraintParser::climb(std::vector<ConstraintNode>& items, std::size_t& next, int least) const
{
    ConstraintNode left = std::move(items[next]);
    while (next + 2 < items.size()) {
        const Word op = items[next + 1].name;
        const int precedence = precedenceOf(op.text);
        if (precedence < least) {
            break;
        }
        next += 2;
        ConstraintNode call;
        call.kind = ConstraintNode::Kind::Call;
        call.name = op;
        ConstraintNode right = climb(items, next, precedence + 1);
        call.range = spanOf(left.range, right.range);
        call.children.push_back(std::move(left));
        call.children.push_back(std::move(right));
        left = std::move(call);
    }
    return left;
}

} // namespace scenariomatch::lint
