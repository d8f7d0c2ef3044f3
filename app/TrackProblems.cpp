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

struct Wording
{
    const char* one;
    const char* many;
};

// What the summary says, in the order of the kinds.
constexpr std::array<Wording, 9> kWordings{{
    {"malformed line left out", "malformed lines left out"},
    {"line too long left out", "lines too long left out"},
    {"frame out of order left out", "frames out of order left out"},
    {"clock that goes back replaced", "clocks that go back replaced"},
    {"repeated identifier left out", "repeated identifiers left out"},
    {"object with a number that is not finite left out",
     "objects with a number that is not finite left out"},
    {"number out of range left out", "numbers out of range left out"},
    {"untracked object left out", "untracked objects left out"},
    {"damaged end left out", "damaged ends left out"},
}};

std::size_t indexOf(TrackProblemKind kind)
{
    return static_cast<std::size_t>(kind);
}

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

void TrackProblems::report(TrackProblemKind kind, const TrackPlace& place, std::string_view reason)
{
    if (isStopped()) {
        return;
    }
    ++m_counts.at(indexOf(kind));
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

std::size_t TrackProblems::count(TrackProblemKind kind) const
{
    return m_counts.at(indexOf(kind));
}

void TrackProblems::printSummary() const
{
    if (m_total == 0) {
        return;
    }
    std::string text;
    for (std::size_t i = 0; i < kKinds; ++i) {
        const std::size_t count = m_counts.at(i);
        if (count > 0) {
            text += text.empty() ? "" : ", ";
            text += fmt::format(
                "{} {}", count, count == 1 ? kWordings.at(i).one : kWordings.at(i).many);
        }
    }
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
