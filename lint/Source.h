#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch::lint
{

// Line and column, counted from 1; columns count bytes.
struct Place
{
    std::size_t line = 1;
    std::size_t column = 1;
};

// A file's name and text, and where its lines begin. Ranges point to it, so it outlives them and
// does not move.
class Source
{
public:
    Source(std::string name, std::string text);
    Source(const Source&) = delete;
    Source(Source&&) = delete;
    Source& operator=(const Source&) = delete;
    Source& operator=(Source&&) = delete;
    ~Source() = default;

    const std::string& name() const { return m_name; }

    const std::string& text() const { return m_text; }

    std::size_t lineCount() const { return m_lineStarts.size(); }

    Place placeOf(std::size_t offset) const;

    // Where a line begins; the end of the text for a line that there is not.
    std::size_t lineStart(std::size_t line) const;

    // Without its line break.
    std::string_view lineText(std::size_t line) const;

private:
    std::string m_name;
    std::string m_text;
    std::vector<std::size_t> m_lineStarts;
};

// A part of a file. Without a source it is no place at all.
struct Range
{
    const Source* source = nullptr;
    std::size_t begin = 0;
    std::size_t end = 0;

    Place place() const { return source == nullptr ? Place() : source->placeOf(begin); }

    // The empty part just behind.
    Range after() const { return {source, end, end}; }
};

// From the begin of one to the end of the other.
Range spanOf(const Range& first, const Range& last);

// A word and where it stands.
struct Word
{
    std::string text;
    Range range;
};

} // namespace scenariomatch::lint
