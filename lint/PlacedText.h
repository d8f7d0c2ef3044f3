#pragma once

#include "lint/Source.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch::lint
{

// Text that knows where in a file each of its characters stands: a declaration whose lines are
// joined, a part of it, or two parts put together.
class PlacedText
{
public:
    explicit PlacedText(const Source& source)
        : m_source(&source)
    {
    }

    PlacedText(const Source& source, std::size_t begin, std::size_t end);

    std::string_view text() const { return m_text; }

    bool empty() const { return m_text.empty(); }

    std::size_t size() const { return m_text.size(); }

    const Source& source() const { return *m_source; }

    // From one position to before another one.
    PlacedText part(std::size_t begin, std::size_t end) const;

    PlacedText from(std::size_t begin) const { return part(begin, m_text.size()); }

    // Where the characters from one position to before another one stand. An empty part stands
    // behind the character before it.
    Range range(std::size_t begin, std::size_t end) const;

    Range range() const { return range(0, m_text.size()); }

    Word word() const { return {m_text, range()}; }

    // The characters whose places lie in the range.
    std::string lettersOf(const Range& range) const;

    void append(const PlacedText& other);

    // Joins a line of the file, given by its ends, to the text in the way of the model reader: the
    // line break with the blanks around it counts as one blank, and as nothing at the start, after
    // "(", and before "(", ")", "," or "[".
    void joinLine(std::size_t begin, std::size_t end);

private:
    void dropTrailingBlanks();

    const Source* m_source;
    std::string m_text;
    std::vector<std::size_t> m_offsets;
};

// The model reader's text tools on such text.
PlacedText withoutLeadingBlanks(const PlacedText& text);
PlacedText firstWord(const PlacedText& text);
// What stands before and after the first such character; the whole text when there is none.
PlacedText textBefore(const PlacedText& text, char separator);
PlacedText textAfter(const PlacedText& text, char separator);

} // namespace scenariomatch::lint
