// The groups in the sections of a model.

#include "lint/ConstraintReader.h"
#include "lint/ModelParser.h"
#include "lint/NearNames.h"

#include <fmt/format.h>
#include <string>
#include <utility>
#include <vector>

namespace scenariomatch::lint
{

bool ModelParser::parseObject(const Range& opening)
{
    Variable object;
    if (!takeName(object.name, ":()", "the variable")) {
        return false;
    }
    if (!m_cursor.take(':')) {
        return fail("malformed", m_cursor.here(), "':' and a type are expected here");
    }
    if (!takeName(object.type, ":(),", "the type")) {
        return false;
    }
    object.isRead = !m_isUnread;
    m_model.objects.push_back(std::move(object));
    return close(opening) || failUnclosed(m_cursor.behind(), opening);
}

bool ModelParser::parseComponent(const Range& opening)
{
    ModelComponent component;
    if (!takeName(component.variable, ":()", "the variable")) {
        return false;
    }
    if (!m_cursor.take(':')) {
        return fail("malformed", m_cursor.here(), "':', a kind and a model are expected here");
    }
    m_cursor.skipBlanks();
    component.kind = m_cursor.takeWord("()[,");
    m_cursor.skipBlanks();
    if (m_cursor.peek() == '(') {
        return fail("malformed", component.kind.range, "a kind and a model are expected here");
    }
    component.model = m_cursor.takeWord("()[,");
    m_cursor.skipBlanks();
    const Range calls = m_cursor.here();
    if (!m_cursor.take('(')) {
        const Range place = m_cursor.peek() == ',' || m_cursor.peek() == ')' ? component.model.range
                                                                             : m_cursor.here();
        return fail("missing-parenthesis", place, "'(' is missing");
    }
    if (!parseArguments(component)) {
        return false;
    }
    if (!m_cursor.take(')')) {
        return failUnclosed(m_cursor.behind(), calls);
    }
    m_cursor.skipBlanks();
    if (m_cursor.peek() == '[' && !parseBounds(component)) {
        return false;
    }
    if (!close(opening)) {
        return failUnclosed(m_cursor.behind(), opening);
    }
    component.isRead = !m_isUnread;
    component.range = spanOf(opening, m_cursor.behind());
    m_model.components.push_back(std::move(component));
    return true;
}

bool ModelParser::parseArguments(ModelComponent& component)
{
    m_cursor.skipBlanks();
    if (m_cursor.peek() == ')') {
        return true;
    }
    do {
        m_cursor.skipBlanks();
        component.arguments.push_back(m_cursor.takeWord("(),"));
        m_cursor.skipBlanks();
        const PlacedText more = m_cursor.takeUntil("(),");
        if (!more.empty()) {
            return fail(
                "argument-cut",
                firstWord(more).range(),
                "an argument ends at its first blank: this is lost",
                "arguments are single words, with commas between them");
        }
    } while (m_cursor.take(','));
    return true;
}

bool ModelParser::parseBounds(ModelComponent& component)
{
    const std::size_t begin = m_cursor.position();
    m_cursor.skip();
    const std::string bounds(m_cursor.takeUntil("]()").text());
    if (!m_cursor.take(']')) {
        return fail("malformed", m_cursor.since(begin), "']' is missing");
    }
    component.bounds = Word{"[" + bounds + "]", m_cursor.since(begin)};
    return true;
}

bool ModelParser::parseConstraint(const Range& opening)
{
    const std::size_t begin = m_cursor.position();
    const std::size_t reported = m_out.all().size();
    const std::optional<ConstraintNode> meant = m_constraints.parse();
    if (!meant) {
        if (m_constraints.isUnbalanced()) {
            return false;
        }
        m_cursor.skipTo(begin);
        if (!skipGroup()) {
            return false;
        }
    }
    const std::size_t end = m_cursor.position();
    if (!close(opening)) {
        return failUnclosed(m_cursor.behind(), opening);
    }
    ModelConstraint constraint;
    constraint.range = m_cursor.text().range(begin, end);
    constraint.meant = meant;
    constraint.isRead = !m_isUnread;
    constraint.read = readConstraint(m_cursor.text().part(begin, end));
    constraint.isReported = m_out.all().size() != reported;
    m_model.constraints.push_back(std::move(constraint));
    return true;
}

// To the ")" of a group whose "(" is taken.
bool ModelParser::skipGroup()
{
    for (std::size_t depth = 0;; m_cursor.skip()) {
        m_cursor.takeUntil("()");
        if (m_cursor.atEnd() || (m_cursor.peek() == ')' && depth == 0)) {
            return !m_cursor.atEnd();
        }
        depth = m_cursor.peek() == '(' ? depth + 1 : depth - 1;
    }
}

bool ModelParser::parseAlarm(const Range& opening)
{
    Word key;
    if (!takeName(key, ":()", "the key")) {
        return false;
    }
    if (!m_cursor.take(':')) {
        return fail("malformed", m_cursor.here(), "':' and a value are expected here");
    }
    m_cursor.skipBlanks();
    const std::size_t begin = m_cursor.position();
    for (std::size_t depth = 0; m_cursor.peek() != ')' || depth != 0;) {
        if (m_cursor.atEnd() || (m_cursor.peek() == '(' && key.text != "Text")) {
            return failUnclosed(m_cursor.behind(), opening);
        }
        depth += m_cursor.peek() == '(' ? 1U : 0U;
        depth -= m_cursor.peek() == ')' ? 1U : 0U;
        m_cursor.skip();
    }
    const Word value = m_cursor.text().part(begin, m_cursor.position()).word();
    if (m_isUnread) {
        return close(opening);
    }
    if (key.text == "Level") {
        m_model.alarmLevel = value;
    } else if (key.text == "Text") {
        m_model.alarmText = value;
    } else {
        const std::vector<std::string> keys = {"Level", "Text"};
        const std::string near = nearestName(key.text, keys);
        m_out
            .add(
                "unknown-keyword",
                key.range,
                fmt::format("'{}' is no key of an alarm", key.text),
                didYouMean(near))
            .suggestion = near;
    }
    return close(opening);
}

bool ModelParser::parseClause(const Range& opening)
{
    MergeClause clause;
    if (!takeName(clause.name, ",()", "the clause")) {
        return false;
    }
    if (!m_cursor.take(',')) {
        return m_cursor.peek() == '('
                   ? fail(
                         "missing-comma",
                         clause.name.range.after(),
                         "a comma is missing after the name")
                   : fail("malformed", m_cursor.here(), "a comma is expected here");
    }
    while (true) {
        m_cursor.skipBlanks();
        const Range here = m_cursor.here();
        if (m_cursor.peek() == ')') {
            m_model.clauses.push_back(std::move(clause));
            return close(opening);
        }
        if (!m_cursor.take('(')) {
            return m_cursor.atEnd() ? failUnclosed(m_cursor.behind(), opening)
                                    : fail("missing-parenthesis", here, "'(' is missing");
        }
        if (!parsePair(clause, here)) {
            return false;
        }
    }
}

bool ModelParser::parsePair(MergeClause& clause, const Range& opening)
{
    m_cursor.skipBlanks();
    const Word key = m_cursor.takeWord("()");
    m_cursor.skipBlanks();
    Word value;
    if (m_cursor.peek() == '(') {
        return failUnclosed(m_cursor.behind(), opening);
    }
    if (!takeName(value, "()", "the value")) {
        return false;
    }
    clause.pairs.emplace_back(key, value);
    return close(opening) || failUnclosed(m_cursor.behind(), opening);
}

} // namespace scenariomatch::lint
