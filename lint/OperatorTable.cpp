#include "lint/OperatorTable.h"

#include "lint/ConstraintParser.h"
#include "lint/ConstraintReader.h"
#include "lint/NearNames.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <utility>

namespace scenariomatch::lint
{

namespace
{

constexpr std::string_view kKeyword = "operator";
constexpr std::string_view kWhiteSpace = " \t\n\r\f\v";

PlacedText trimmed(const PlacedText& text)
{
    const std::size_t begin = text.text().find_first_not_of(kWhiteSpace);
    if (begin == std::string_view::npos) {
        return text.part(0, 0);
    }
    return text.part(begin, text.text().find_last_not_of(kWhiteSpace) + 1);
}

bool isWord(const PlacedText& text)
{
    return !text.empty() && text.text().find_first_of(kWhiteSpace) == std::string_view::npos;
}

PlacedText withoutComments(const Source& source)
{
    PlacedText text(source);
    for (std::size_t line = 1; line <= source.lineCount(); ++line) {
        const std::size_t begin = source.lineStart(line);
        const std::string_view letters = source.lineText(line);
        const std::size_t end = begin + std::min(letters.find('#'), letters.size());
        text.append(PlacedText(source, begin, end));
        if (line != source.lineCount()) {
            const std::size_t next = source.lineStart(line + 1);
            text.append(PlacedText(source, next - 1, next));
        }
    }
    return text;
}

// A body on one line, in the way of the engine's reader.
PlacedText onOneLine(const Source& source, const PlacedText& text)
{
    PlacedText result(source);
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.text().find('\n', begin), text.size());
        const Range line = trimmed(text.part(begin, end)).range();
        result.joinLine(line.begin, line.end);
        begin = end + 1;
    }
    return result;
}

// Reads declarations; after a mistake it goes on with the next word "operator".
class Reader
{
public:
    Reader(const Source& source, const std::set<std::string>& names, Diagnostics& out)
        : m_source(source)
        , m_rest(trimmed(withoutComments(source)))
        , m_names(names)
        , m_out(out)
    {
    }

    std::vector<DeclaredOperator> read()
    {
        while (!m_rest.empty()) {
            const std::size_t end = m_rest.text().find_first_of(kWhiteSpace);
            const PlacedText word = m_rest.part(0, end);
            if (word.text() != kKeyword) {
                reportWord(word);
            }
            m_rest = m_rest.from(word.size());
            const bool isNear = nearKeyword(word) == kKeyword;
            if ((word.text() != kKeyword && !isNear) || !readDeclaration()) {
                skipToKeyword();
            }
            m_rest = trimmed(m_rest);
        }
        return std::move(m_found);
    }

private:
    static std::string nearKeyword(const PlacedText& word)
    {
        const std::vector<std::string> keywords = {std::string(kKeyword)};
        return nearestName(word.text(), keywords);
    }

    void reportWord(const PlacedText& word)
    {
        const std::string near = nearKeyword(word);
        m_out
            .add(
                "unknown-keyword",
                word.range(),
                fmt::format("'{}' is no declaration of an operator", word.text()),
                didYouMean(near))
            .suggestion = near;
    }

    void skipToKeyword()
    {
        while (!m_rest.empty() &&
               m_rest.part(0, m_rest.text().find_first_of(kWhiteSpace)).text() != kKeyword) {
            const std::size_t end = m_rest.text().find_first_of(kWhiteSpace);
            m_rest = trimmed(m_rest.from(end == std::string_view::npos ? m_rest.size() : end));
        }
    }

    bool fail(std::string_view rule, const Range& range, std::string message)
    {
        m_out.add(rule, range, std::move(message));
        return false;
    }

    std::optional<PlacedText> takeBefore(char delimiter)
    {
        const std::size_t end = m_rest.text().find_first_of("(){}");
        if (end == std::string_view::npos || m_rest.text()[end] != delimiter) {
            const std::size_t place = std::min(end, m_rest.size());
            fail(
                delimiter == ')'   ? "unclosed-parenthesis"
                : delimiter == '(' ? "missing-parenthesis"
                                   : "malformed",
                trimmed(m_rest.part(0, place)).range().after(),
                fmt::format("'{}' is missing", delimiter));
            return std::nullopt;
        }
        const PlacedText text = trimmed(m_rest.part(0, end));
        m_rest = m_rest.from(end + 1);
        return text;
    }

    bool readDeclaration();
    bool readParameters(DeclaredOperator& op, PlacedText list);
    bool readBody(DeclaredOperator& op, const PlacedText& text);

    const Source& m_source;
    PlacedText m_rest;
    const std::set<std::string>& m_names;
    Diagnostics& m_out;
    std::vector<DeclaredOperator> m_found;
};

bool Reader::readDeclaration()
{
    DeclaredOperator op;
    const std::optional<PlacedText> name = takeBefore('(');
    const std::optional<PlacedText> list = name ? takeBefore(')') : name;
    const std::optional<PlacedText> between = list ? takeBefore('{') : list;
    if (!between) {
        return false;
    }
    const std::size_t end = m_rest.text().find_first_of("{}");
    if (end == std::string_view::npos || m_rest.text()[end] == '{') {
        return fail("unclosed-block", between->range().after(), "'}' is missing behind this body");
    }
    const PlacedText body = trimmed(m_rest.part(0, end));
    m_rest = m_rest.from(end + 1);
    if (!isWord(*name) || !between->empty() || body.empty()) {
        return fail("malformed", name->range(), "an operator needs a name of one word and a body");
    }
    op.name = name->word();
    if (readParameters(op, *list) && readBody(op, body)) {
        m_found.push_back(std::move(op));
    }
    return true;
}

bool Reader::readParameters(DeclaredOperator& op, PlacedText list)
{
    while (!list.empty()) {
        const PlacedText item = textBefore(list, ',');
        list = list.from(item.size() + 1);
        const bool hasType = item.text().find(':') != std::string_view::npos;
        const PlacedText name = trimmed(textBefore(item, ':'));
        const PlacedText type = trimmed(textAfter(item, ':'));
        if (!hasType || !isWord(name) || !isWord(type)) {
            return fail("malformed", item.range(), "a parameter is written NAME : TYPE");
        }
        op.parameters.push_back({name.word(), type.word()});
    }
    return true;
}

bool Reader::readBody(DeclaredOperator& op, const PlacedText& text)
{
    const PlacedText body = onOneLine(m_source, text);
    const std::size_t reported = m_out.all().size();
    Cursor cursor(body);
    op.body.range = body.range();
    op.body.meant = ConstraintParser(cursor, m_names, m_out).parse();
    op.body.read = readConstraint(body);
    if (op.body.meant && !cursor.atEnd()) {
        fail("stray-parenthesis", cursor.here(), "there is one ')' too many");
    }
    op.body.isReported = m_out.all().size() != reported;
    return true;
}

} // namespace

void OperatorTable::addLoaded(const std::string& name, LoadedOperator op)
{
    m_names.insert(name);
    m_loaded[name] = std::move(op);
}

void OperatorTable::read(const Source& source, Diagnostics& out)
{
    const std::set<std::string> loaded = m_names;
    for (DeclaredOperator& op : Reader(source, loaded, out).read()) {
        m_names.insert(op.name.text);
        m_declared.push_back(std::move(op));
    }
}

const LoadedOperator* OperatorTable::findLoaded(std::string_view name) const
{
    const auto found = m_loaded.find(name);
    return found == m_loaded.end() ? nullptr : &found->second;
}

bool OperatorTable::isDeclared(std::string_view name) const
{
    return std::any_of(m_declared.begin(), m_declared.end(), [&](const DeclaredOperator& op) {
        return op.name.text == name;
    });
}

const DeclaredOperator* OperatorTable::findDeclared(
    std::string_view name,
    const std::vector<std::string>& types,
    const ObjectTypes& objectTypes) const
{
    const auto matches = [&](const DeclaredOperator& op) {
        return op.name.text == name &&
               std::equal(
                   op.parameters.begin(),
                   op.parameters.end(),
                   types.begin(),
                   types.end(),
                   [&](const Variable& parameter, const std::string& type) {
                       return type == parameter.type.text ||
                              objectTypes.derives(type, parameter.type.text);
                   });
    };
    const auto found = std::find_if(m_declared.begin(), m_declared.end(), matches);
    return found == m_declared.end() ? nullptr : &*found;
}

} // namespace scenariomatch::lint
