#include "lint/Cursor.h"

#include <algorithm>
#include <string>

namespace scenariomatch::lint
{

namespace
{

bool isBlank(char letter)
{
    return letter == ' ' || letter == '\t';
}

} // namespace

char Cursor::peek(std::size_t ahead) const
{
    const std::size_t position = m_position + ahead;
    return position < m_text->size() ? m_text->text()[position] : '\0';
}

bool Cursor::skipBlanks()
{
    const std::size_t begin = m_position;
    while (!atEnd() && isBlank(peek())) {
        ++m_position;
    }
    return m_position != begin;
}

bool Cursor::take(char letter)
{
    if (atEnd() || peek() != letter) {
        return false;
    }
    ++m_position;
    return true;
}

Word Cursor::takeWord(std::string_view stops)
{
    return takeUntil(std::string(stops) + " \t").word();
}

PlacedText Cursor::takeUntil(std::string_view stops)
{
    const std::size_t begin = m_position;
    m_position = std::min(m_text->text().find_first_of(stops, begin), m_text->size());
    return m_text->part(begin, m_position);
}

Range Cursor::behind() const
{
    std::size_t end = m_position;
    while (end != 0 && isBlank(m_text->text()[end - 1])) {
        --end;
    }
    return end == 0 ? m_text->range(0, 1) : m_text->range(end - 1, end).after();
}

} // namespace scenariomatch::lint
