#include "lint/PlacedText.h"

#include <algorithm>

namespace scenariomatch::lint
{

PlacedText::PlacedText(const Source& source, std::size_t begin, std::size_t end)
    : m_source(&source)
    , m_text(source.text().substr(begin, end - begin))
{
    m_offsets.reserve(m_text.size());
    for (std::size_t i = begin; i < end; ++i) {
        m_offsets.push_back(i);
    }
}

PlacedText PlacedText::part(std::size_t begin, std::size_t end) const
{
    PlacedText result(*m_source);
    const std::size_t last = std::min(end, m_text.size());
    const std::size_t first = std::min(begin, last);
    result.m_text = m_text.substr(first, last - first);
    using Difference = std::vector<std::size_t>::difference_type;
    result.m_offsets.assign(
        m_offsets.begin() + static_cast<Difference>(first),
        m_offsets.begin() + static_cast<Difference>(last));
    return result;
}

Range PlacedText::range(std::size_t begin, std::size_t end) const
{
    const std::size_t last = std::min(end, m_text.size());
    if (begin < last) {
        return {m_source, m_offsets[begin], m_offsets[last - 1] + 1};
    }
    if (last == 0) {
        const std::size_t offset = m_offsets.empty() ? 0 : m_offsets.front();
        return {m_source, offset, offset};
    }
    return {m_source, m_offsets[last - 1] + 1, m_offsets[last - 1] + 1};
}

std::string PlacedText::lettersOf(const Range& range) const
{
    const auto first = std::lower_bound(m_offsets.begin(), m_offsets.end(), range.begin);
    const auto last = std::lower_bound(first, m_offsets.end(), range.end);
    return m_text.substr(
        static_cast<std::size_t>(first - m_offsets.begin()),
        static_cast<std::size_t>(last - first));
}

void PlacedText::append(const PlacedText& other)
{
    m_text += other.m_text;
    m_offsets.insert(m_offsets.end(), other.m_offsets.begin(), other.m_offsets.end());
}

void PlacedText::dropTrailingBlanks()
{
    m_text.erase(m_text.find_last_not_of(' ') + 1);
    m_offsets.resize(m_text.size());
}

void PlacedText::joinLine(std::size_t begin, std::size_t end)
{
    const std::string& file = m_source->text();
    begin = std::min(file.find_first_not_of(' ', begin), end);
    if (begin == end) {
        return;
    }
    dropTrailingBlanks();
    const bool isTight = m_text.empty() || m_text.back() == '(' ||
                         std::string_view("(),[").find(file[begin]) != std::string_view::npos;
    if (!isTight) {
        m_text += ' ';
        m_offsets.push_back(m_offsets.back() + 1);
    }
    append(PlacedText(*m_source, begin, end));
}

PlacedText withoutLeadingBlanks(const PlacedText& text)
{
    return text.from(text.text().find_first_not_of(' '));
}

PlacedText firstWord(const PlacedText& text)
{
    return textBefore(withoutLeadingBlanks(text), ' ');
}

PlacedText textBefore(const PlacedText& text, char separator)
{
    return text.part(0, text.text().find(separator));
}

PlacedText textAfter(const PlacedText& text, char separator)
{
    const std::size_t position = text.text().find(separator);
    return position == std::string_view::npos ? text : text.from(position + 1);
}

} // namespace scenariomatch::lint
