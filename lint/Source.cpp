#include "lint/Source.h"

#include <algorithm>
#include <utility>

namespace scenariomatch::lint
{

Source::Source(std::string name, std::string text)
    : m_name(std::move(name))
    , m_text(std::move(text))
    , m_lineStarts{0}
{
    for (std::size_t i = m_text.find('\n'); i != std::string::npos; i = m_text.find('\n', i + 1)) {
        m_lineStarts.push_back(i + 1);
    }
}

Place Source::placeOf(std::size_t offset) const
{
    const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    const auto line = static_cast<std::size_t>(next - m_lineStarts.begin());
    return {line, offset - m_lineStarts[line - 1] + 1};
}

std::size_t Source::lineStart(std::size_t line) const
{
    return line == 0 || line > m_lineStarts.size() ? m_text.size() : m_lineStarts[line - 1];
}

std::string_view Source::lineText(std::size_t line) const
{
    const std::size_t begin = lineStart(line);
    std::string_view text = std::string_view(m_text).substr(begin);
    text = text.substr(0, text.find('\n'));
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    return text;
}

Range spanOf(const Range& first, const Range& last)
{
    return {first.source, first.begin, std::max(first.end, last.end)};
}

} // namespace scenariomatch::lint
