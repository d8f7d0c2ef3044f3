#include "app/TrackProblems.h"

#include "app/PrintableText.h"

#include <algorithm>
#include <fmt/format.h>
#include <ostream>
#include <utility>

namespace scenariomatch
{

namespace
{

bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

TrackProblems::TrackProblems(std::string name, std::ostream& talk, TrackProblemOptions options)
    : m_name(std::move(name))
    , m_talk(talk)
    , m_options(options)
{
}

void TrackProblems::report(Oddity kind, const TrackPlace& place, std::string_view reason)
{
    if (isStopped()) {
        return;
    }
    m_counts.add(kind);
    ++m_total;
    if (m_total > m_options.mostPrinted) {
        if (m_total == m_options.mostPrinted + 1) {
            m_talk << m_name << ": further problems are counted and not printed\n";
        }
        return;
    }
    m_talk << m_name;
    if (place.line > 0) {
        m_talk << ':' << place.line;
    }
    if (place.line > 0 && place.column > 0) {
        m_talk << ':' << place.column;
    }
    m_talk << ": " << reason << '\n';
    printSource(place);
}

void TrackProblems::printSummary() const
{
    if (m_total == 0) {
        return;
    }
    std::string text;
    m_counts.visit([&text](Oddity kind, std::uint64_t count) {
        const OddityText& of = textOf(kind);
        if (of.severity != Severity::Note) {
            text += text.empty() ? "" : ", ";
            text += fmt::format("{} {}", count, count == 1 ? of.one : of.many);
        }
    });
    m_talk << m_name << ": " << text << '\n';
}

// Prints the part of the line around the column, cut at whole characters, and a caret below the
// column.
void TrackProblems::printSource(const TrackPlace& place) const
{
    const std::string_view line = place.sourceLine;
    if (line.empty()) {
        return;
    }
    const std::size_t column = std::min(place.column > 0 ? place.column - 1 : 0, line.size());
    std::size_t begin = 0;
    if (line.size() > m_options.longestExcerpt && column > m_options.longestExcerpt / 2) {
        begin =
            std::min(column - m_options.longestExcerpt / 2, line.size() - m_options.longestExcerpt);
    }
    while (begin > 0 && isContinuationByte(line[begin])) {
        --begin;
    }
    std::size_t end = std::min(begin + m_options.longestExcerpt, line.size());
    while (end < line.size() && isContinuationByte(line[end])) {
        ++end;
    }
    std::string excerpt = begin > 0 ? "..." : "";
    std::size_t caret = excerpt.size();
    for (std::size_t i = begin; i < end; ++i) {
        caret += i < column && !isContinuationByte(line[i]) ? 1U : 0U;
        excerpt += isControl(line[i]) ? ' ' : line[i];
    }
    m_talk << excerpt << (end < line.size() ? "..." : "") << '\n';
    if (place.column > 0) {
        m_talk << std::string(caret, ' ') << "^\n";
    }
}

} // namespace scenariomatch
