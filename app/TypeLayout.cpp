#include "app/TypeLayout.h"

#include "lint/PlacedText.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr const char* kBehind = "what stands behind \"}\" is lost: expected a line of its own";

// The lines of a block, joined without anything between them.
lint::PlacedText blockAt(const lint::Source& source, std::size_t line)
{
    lint::PlacedText block(source);
    for (;; ++line) {
        const std::size_t begin = source.lineStart(line);
        const std::string_view letters = source.lineText(line);
        block.append(lint::PlacedText(source, begin, begin + letters.size()));
        if (letters.find('}') != std::string_view::npos || line >= source.lineCount()) {
            return block;
        }
    }
}

// A part of the block: from the first position to before the second.
struct Part
{
    std::size_t begin;
    std::size_t end;
};

// Reads one block step by step as CClass::read does.
class LayoutReader
{
public:
    explicit LayoutReader(lint::PlacedText block)
        : m_block(std::move(block))
        , m_text(m_block.text())
    {
    }

    TypeLayout read();

private:
    void readHead();
    void readFlag();
    void readAttribute();
    void readEnd();

    void skipBlanks();
    Part takeUntil(char separator);
    Part trimmed(Part part) const;
    std::string_view textOf(Part part) const;

    lint::Range rangeOf(Part part) const { return m_block.range(part.begin, part.end); }

    void lose(const lint::Range& range, const std::string& reason);

    lint::PlacedText m_block;
    std::string_view m_text;
    std::size_t m_position = 0;
    TypeLayout m_layout;
};

void LayoutReader::skipBlanks()
{
    m_position = std::min(m_text.find_first_not_of(' ', m_position), m_text.size());
}

// What stands before the separator, or everything when there is none; goes on behind it.
Part LayoutReader::takeUntil(char separator)
{
    const Part part{m_position, std::min(m_text.find(separator, m_position), m_text.size())};
    m_position = std::min(part.end + 1, m_text.size());
    return part;
}

// Without the blanks and tabs at both ends.
Part LayoutReader::trimmed(Part part) const
{
    const std::string_view blanks = " \t";
    const std::string_view text = textOf(part);
    const std::size_t first = std::min(text.find_first_not_of(blanks), text.size());
    const std::size_t last = text.find_last_not_of(blanks);
    return {part.begin + first, last == std::string_view::npos ? part.end : part.begin + last + 1};
}

std::string_view LayoutReader::textOf(Part part) const
{
    return m_text.substr(part.begin, part.end - part.begin);
}

void LayoutReader::lose(const lint::Range& range, const std::string& reason)
{
    m_layout.losses.push_back({range, reason});
}

TypeLayout LayoutReader::read()
{
    skipBlanks();
    const Part word = takeUntil(' ');
    const bool isType = textOf(word) == "class";
    readHead();
    readFlag();
    while (m_text.substr(m_position) != "}" && m_text.find(';', m_position) < m_text.size()) {
        readAttribute();
    }
    readEnd();
    if (!isType) {
        m_layout.losses.clear();
        lose(
            rangeOf(word),
            "the line opens a type, for it contains \"class\": expected a line such as "
            "class Person {");
    }
    return m_layout;
}

void LayoutReader::readHead()
{
    const Part whole = takeUntil('{');
    const std::size_t blank = std::min(m_text.find(' ', whole.begin), whole.end);
    const std::size_t colon = std::min(m_text.find(':', whole.begin), blank);
    m_layout.name = rangeOf({whole.begin, colon});
    m_layout.parent = colon < blank ? rangeOf({colon + 1, blank}) : m_layout.name;
    const Part rest = trimmed({blank, whole.end});
    if (rest.begin < rest.end) {
        lose(
            rangeOf(rest),
            blank == whole.begin ? "a second blank before the name: expected class NAME:PARENT {"
                                 : "the head of a type ends at its first blank, the rest is lost: "
                                   "expected class NAME:PARENT {");
    }
}

void LayoutReader::readFlag()
{
    skipBlanks();
    const Part word = takeUntil(' ');
    skipBlanks();
    const Part value = takeUntil(';');
    if (textOf(word) == "constant" && (textOf(value) == "true" || textOf(value) == "false")) {
        return;
    }
    const Part statement{word.begin, std::max(word.end, value.end)};
    const bool isMissing = textOf(statement).empty() || textOf(statement).starts_with('}');
    lose(
        isMissing ? m_layout.name : rangeOf(statement),
        "the first statement says whether the type is constant: expected constant true; or "
        "constant false;");
}

void LayoutReader::readAttribute()
{
    skipBlanks();
    const std::size_t begin = m_position;
    const Part type = takeUntil(' ');
    skipBlanks();
    const Part name = takeUntil(';');
    const Part statement{begin, std::max(type.end, name.end)};
    if (textOf(type) == "}" || textOf(name) == "}") {
        lose(rangeOf(statement), kBehind);
        return;
    }
    m_layout.attributeTypes.push_back(rangeOf(type));
    m_layout.attributeNames.push_back(rangeOf(name));
    if (textOf(statement).find('{') != std::string_view::npos) {
        lose(rangeOf(statement), "the type before this does not end: expected \"}\"");
    }
}

// What no ";" follows.
void LayoutReader::readEnd()
{
    const std::size_t close = m_text.find('}');
    if (close == std::string_view::npos) {
        lose(m_block.range(m_text.size(), m_text.size()), "the type does not end: expected \"}\"");
        return;
    }
    const Part open = trimmed({m_position, std::max(m_position, close)});
    if (open.begin < open.end) {
        lose(rangeOf(open), "no \";\" follows, and this is lost: expected INT Age; for instance");
    }
    const Part behind = trimmed({std::max(m_position, close + 1), m_text.size()});
    if (textOf(behind).find("class") != std::string_view::npos) {
        lose(rangeOf(behind), kBehind);
    }
}

} // namespace

TypeLayout layoutOf(const lint::Source& source, std::size_t line)
{
    return LayoutReader(blockAt(source, line)).read();
}

} // namespace scenariomatch
