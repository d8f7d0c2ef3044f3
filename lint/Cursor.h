#pragma once

#include "lint/PlacedText.h"

#include <cstddef>
#include <string_view>

namespace scenariomatch::lint
{

// A position in a text that is read from left to right. The text must outlive it.
class Cursor
{
public:
    explicit Cursor(const PlacedText& text)
        : m_text(&text)
    {
    }

    const PlacedText& text() const { return *m_text; }

    std::size_t position() const { return m_position; }

    bool atEnd() const { return m_position >= m_text->size(); }

    // 0 at the end.
    char peek(std::size_t ahead = 0) const;

    void skip(std::size_t count = 1) { m_position += count; }

    // Goes back or forth.
    void skipTo(std::size_t position) { m_position = position; }

    // Skips blanks and tabs; whether there were any.
    bool skipBlanks();

    // Skips one such character. False where another one stands.
    bool take(char letter);

    // Takes what stands before the next blank, tab or one of the given characters.
    Word takeWord(std::string_view stops);

    // Takes what stands before the next of the given characters.
    PlacedText takeUntil(std::string_view stops);

    // The next character.
    Range here() const { return m_text->range(m_position, m_position + 1); }

    // Behind the last character that is no blank or tab.
    Range behind() const;

    // From a position to here.
    Range since(std::size_t begin) const { return m_text->range(begin, m_position); }

private:
    const PlacedText* m_text;
    std::size_t m_position = 0;
};

} // namespace scenariomatch::lint
