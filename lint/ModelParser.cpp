#include "lint/ModelParser.h"

#include "lint/NearNames.h"

#include <algorithm>
#include <fmt/format.h>
#include <string_view>
#include <utility>
#include <vector>

namespace scenariomatch::lint
{

namespace
{

std::string nearestOf(std::string_view word, std::span<const std::string_view> names)
{
    const std::vector<std::string> candidates(names.begin(), names.end());
    return nearestName(word, candidates);
}

// Columns before the first character of the line that is no blank.
std::size_t indentOf(const Range& range)
{
    const std::string_view line = range.source->lineText(range.place().line);
    return std::min(line.find_first_not_of(" \t"), line.size());
}

} // namespace

ModelParser::ModelParser(
    const PlacedText& text, const std::set<std::string>& operators, Diagnostics& out)
    : m_cursor(text)
    , m_out(out)
    , m_constraints(m_cursor, operators, out)
{
}

Model ModelParser::parse()
{
    reportTabs();
    m_model.isBroken = !(parseKind() && parseName() && parseSections() && checkEnd());
    return std::move(m_model);
}

bool ModelParser::fail(
    std::string_view rule, const Range& range, std::string message, std::string hint)
{
    m_out.add(rule, range, std::move(message), std::move(hint));
    return false;
}

bool ModelParser::failUnclosed(const Range& place, const Range& opening)
{
    const MissingParentheses& missing = m_constraints.missing();
    const Range found = m_cursor.atEnd() && m_layoutGap ? *m_layoutGap : place;
    const Place open = opening.place();
    return fail(
        "unclosed-parenthesis",
        missing.closing.value_or(found),
        "')' is missing",
        fmt::format("'(' was opened at {}:{}", open.line, open.column));
}

// A ")" at the begin of a line that is less indented than the line of its "(" closes in fact
// another one.
void ModelParser::noteLayout(const Range& opening, const Range& closing)
{
    const std::string_view line = closing.source->lineText(closing.place().line);
    const bool isFirst = line.find_first_not_of(" \t") + 1 == closing.place().column;
    if (isFirst && !m_layoutGap && indentOf(opening) > indentOf(closing)) {
        const std::string& file = closing.source->text();
        const std::size_t last = file.find_last_not_of(" \t\r\n", closing.begin - 1);
        m_layoutGap = Range{closing.source, last + 1, last + 1};
    }
}

bool ModelParser::close(const Range& opening)
{
    m_cursor.skipBlanks();
    const Range here = m_cursor.here();
    if (!m_cursor.take(')')) {
        return false;
    }
    noteLayout(opening, here);
    return true;
}

bool ModelParser::parseKind()
{
    m_cursor.skipBlanks();
    m_model.kind = m_cursor.takeWord("(");
    const std::string& kind = m_model.kind.text;
    const auto* const joined =
        std::find_if(kModelKinds.begin(), kModelKinds.end(), [&](std::string_view known) {
            return kind.size() > known.size() && kind.starts_with(known);
        });
    if (joined != kModelKinds.end() && kind.find(',') != std::string::npos) {
        const Range& range = m_model.kind.range;
        const std::size_t place = range.begin + joined->size();
        m_out.add("missing-parenthesis", {range.source, place, place + 1}, "'(' is missing");
        m_cursor.skipTo(m_cursor.position() - kind.size() + joined->size());
        m_model.kind = {std::string(*joined), {range.source, range.begin, place}};
        return true;
    }
    if (!isModelKind(kind)) {
        const std::string near = nearestOf(kind, kModelKinds);
        m_out
            .add(
                "unknown-kind",
                m_model.kind.range,
                fmt::format("'{}' is no kind of declaration", kind),
                didYouMean(near))
            .suggestion = near;
    }
    m_cursor.skipBlanks();
    if (m_cursor.take('(')) {
        return true;
    }
    if (isModelKind(kind)) {
        // What follows is read as if it were there.
        m_out.add("missing-parenthesis", m_cursor.here(), "'(' is missing");
    }
    return isModelKind(kind);
}

bool ModelParser::parseName()
{
    m_cursor.skipBlanks();
    const PlacedText name = m_cursor.takeUntil(",[()");
    const bool isSectionNext = m_cursor.peek() == '(';
    if (isSectionNext || m_cursor.peek() == ')' || m_cursor.atEnd()) {
        const PlacedText first = firstWord(name);
        if (isSectionNext && first.size() == name.size()) {
            return fail("malformed", name.range(), "a name and a comma are expected here");
        }
        m_model.name = first.word();
        m_out.add(
            "missing-comma",
            first.range().after(),
            "a comma is missing after the name",
            fmt::format("write {},", first.text()));
        Cursor again(m_cursor.text());
        again.skip(m_cursor.position() - name.size() + first.size());
        m_cursor = again;
        return true;
    }
    finishName(name);
    if (m_cursor.peek() == '[' && !parseThreshold()) {
        return false;
    }
    m_cursor.skipBlanks();
    if (!m_cursor.take(',')) {
        m_out.add(
            "missing-comma", m_cursor.behind(), "a comma is missing after the name", "write ,");
    }
    return true;
}

void ModelParser::finishName(const PlacedText& name)
{
    const PlacedText first = firstWord(name);
    m_model.name = first.word();
    if (first.size() == name.size()) {
        return;
    }
    m_out.add(
        "name-cut",
        name.from(first.size()).range(),
        fmt::format("the name of the model is '{}', with the blank", name.text()),
        "components cannot name it: write one word");
}

bool ModelParser::parseThreshold()
{
    const Range opening = m_cursor.here();
    m_cursor.skip();
    const PlacedText number = m_cursor.takeUntil("],()");
    if (!m_cursor.take(']')) {
        return fail("malformed", opening, "']' is missing");
    }
    m_model.threshold = number.word();
    return true;
}

bool ModelParser::parseSections()
{
    while (true) {
        m_cursor.skipBlanks();
        if (m_cursor.atEnd()) {
            return failUnclosed(m_cursor.behind(), m_model.kind.range.after());
        }
        const Range before = m_cursor.behind();
        if (m_cursor.peek() == ')') {
            return close(m_model.kind.range);
        }
        const Word key = m_cursor.takeWord("(),");
        m_cursor.skipBlanks();
        const Range here = m_cursor.here();
        if (key.text.empty() && m_cursor.peek() == '(') {
            const std::optional<Range>& joined = m_constraints.missing().opening;
            return joined ? fail("missing-parenthesis", *joined, "'(' is missing")
                          : fail(
                                "stray-parenthesis",
                                {before.source, before.begin - 1, before.begin},
                                "this ')' closes too much");
        }
        if (!m_cursor.take('(')) {
            return isSection(key.text)
                       ? fail("missing-parenthesis", key.range.after(), "'(' is missing")
                       : fail(
                             "malformed",
                             key.text.empty() ? here : key.range,
                             "a section is expected here");
        }
        if (!parseSection(key, here)) {
            return false;
        }
    }
}

bool ModelParser::parseSection(const Word& key, const Range& opening)
{
    if (key.text == "PhysicalObjects") {
        return parseList(key, opening, &ModelParser::parseObject);
    }
    if (key.text == "Components") {
        return parseList(key, opening, &ModelParser::parseComponent);
    }
    if (key.text == "Constraints") {
        return parseList(key, opening, &ModelParser::parseConstraint);
    }
    if (key.text == "Alarm") {
        return parseList(key, opening, &ModelParser::parseAlarm);
    }
    if (key.text == "Miscellaneous") {
        const std::size_t known = m_model.clauses.size();
        if (!parseList(key, opening, &ModelParser::parseClause)) {
            return false;
        }
        for (std::size_t i = known + 1; i < m_model.clauses.size(); ++i) {
            m_model.clauses[i].isRead = false;
            m_out.add(
                "ignored-clause",
                m_model.clauses[i].name.range,
                "only the first clause of a section is read",
                "write a second section Miscellaneous");
        }
        return true;
    }
    const auto* const joined = std::find_if(kSections.begin(), kSections.end(), [&](auto known) {
        return key.text.size() > known.size() && key.text.starts_with(known);
    });
    if (joined != kSections.end() && key.text.size() > joined->size() + 2) {
        const Range& range = key.range;
        const std::size_t place = range.begin + joined->size();
        return fail("missing-parenthesis", {range.source, place, place + 1}, "'(' is missing");
    }
    const std::string near = nearestOf(key.text, kSections);
    m_out
        .add(
            "unknown-section",
            key.range,
            fmt::format("'{}' is no section of a model", key.text),
            didYouMean(near))
        .suggestion = near;
    const auto* const meant = std::find(kSections.begin(), kSections.end(), near);
    m_isUnread = true;
    const bool isParsed =
        meant != kSections.end() ? parseSection({near, key.range}, opening) : skipSection(opening);
    m_isUnread = false;
    return isParsed;
}

bool ModelParser::skipSection(const Range& opening)
{
    return (skipGroup() && close(opening)) || failUnclosed(m_cursor.behind(), opening);
}

bool ModelParser::parseList(const Word& key, const Range& opening, ItemParser parseItem)
{
    for (bool isFirst = true;; isFirst = false) {
        m_cursor.skipBlanks();
        while (!isFirst && m_cursor.take(',')) {
            m_cursor.skipBlanks();
        }
        const Range here = m_cursor.here();
        if (m_cursor.peek() == ')') {
            return close(opening);
        }
        if (!m_cursor.take('(')) {
            return failInList(key, opening, isFirst);
        }
        if (!(this->*parseItem)(here)) {
            return false;
        }
    }
}

// A word stands where a list's next "(" or its ")" is expected.
bool ModelParser::failInList(const Word& key, const Range& opening, bool isFirst)
{
    const Range before = m_cursor.behind();
    if (m_cursor.atEnd()) {
        return failUnclosed(before, opening);
    }
    const Word word = m_cursor.takeWord("(),");
    const bool isConjunction = word.text == "and" || word.text == "or";
    if (isSection(word.text) || isModelKind(word.text)) {
        return failUnclosed(before, opening);
    }
    if (isConjunction && !isFirst) {
        return fail(
            "split-conjunction",
            word.range,
            fmt::format("'{}' between constraints is not read: all of them must hold", word.text),
            "write or inside one constraint: call(...) or (...)");
    }
    if (const std::optional<Range>& joined = m_constraints.missing().opening) {
        return fail("missing-parenthesis", *joined, "'(' is missing");
    }
    if (isFirst && key.range.place().line != opening.place().line) {
        return fail("missing-parenthesis", key.range.after(), "'(' is missing");
    }
    return fail(
        "missing-parenthesis",
        {before.source, word.range.begin, word.range.begin + 1},
        "'(' is missing");
}

bool ModelParser::takeName(Word& name, std::string_view stops, std::string_view what)
{
    m_cursor.skipBlanks();
    name = m_cursor.takeWord(stops);
    if (name.text.empty()) {
        return fail("malformed", m_cursor.here(), fmt::format("{} is expected here", what));
    }
    m_cursor.skipBlanks();
    const PlacedText more = m_cursor.takeUntil(stops);
    if (!more.empty()) {
        return fail(
            "name-cut",
            firstWord(more).range(),
            fmt::format("{} ends at its first blank: it is '{}'", what, name.text),
            "names are single words");
    }
    return true;
}

bool ModelParser::checkEnd()
{
    const Range closing = m_cursor.behind();
    m_cursor.skipBlanks();
    if (m_cursor.atEnd()) {
        return true;
    }
    const std::optional<Range>& joined = m_constraints.missing().opening;
    if (joined) {
        return fail("missing-parenthesis", *joined, "'(' is missing");
    }
    // One that stands alone in its line closes the model; the one before it is too many.
    const bool isSameLine = m_cursor.here().place().line == closing.place().line;
    const Range last = {closing.source, closing.begin - 1, closing.begin};
    return fail(
        "stray-parenthesis",
        isSameLine && m_cursor.peek() == ')' ? m_cursor.here() : last,
        "there is one ')' too many");
}

// A tab is a letter to the reader. Between parentheses it does no harm, nor in a text.
bool ModelParser::isHarmlessTab(std::size_t position) const
{
    const std::string_view text = m_cursor.text().text();
    const std::size_t before = text.find_last_not_of(" \t", position);
    const std::size_t after = text.find_first_not_of(" \t", position);
    const auto isParenthesis = [&](std::size_t i) {
        return i == std::string_view::npos || text[i] == '(' || text[i] == ')';
    };
    const std::size_t open = text.rfind('(', position);
    const bool isText = open != std::string_view::npos && text.substr(open + 1).starts_with("Text");
    return isText || (isParenthesis(before) && isParenthesis(after));
}

void ModelParser::reportTabs()
{
    const std::string_view text = m_cursor.text().text();
    std::size_t line = 0;
    for (std::size_t i = text.find('\t'); i != std::string_view::npos; i = text.find('\t', i + 1)) {
        const Range range = m_cursor.text().range(i, i + 1);
        const std::size_t here = range.place().line;
        if (here != line && !isHarmlessTab(i)) {
            m_out.add("tab", range, "a tab is a letter here, no blank", "write blanks");
            line = here;
        }
    }
}

} // namespace scenariomatch::lint
