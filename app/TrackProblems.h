#pragma once

#include "app/Oddities.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Where a problem is. A line or column of 0 is not known; columns count bytes from 1. The source
// line is the text of the line, empty when it is no longer there.
struct TrackPlace
{
    std::size_t line = 0;
    std::size_t column = 0;
    std::string_view sourceLine;
};

struct TrackProblemOptions
{
    // Problems printed in full; the ones after them are only counted.
    std::size_t mostPrinted = 20;
    // Longest part of a source line that is printed, in bytes.
    std::size_t longestExcerpt = 120;
    // Whether reading stops at the first problem.
    bool isStrict = false;
};

// Collects what is wrong with one file of tracks: prints the first problems with place, source line
// and caret, and counts all of them by kind. Keeps the books of the file's objects as well: each
// that a reader has read is handed out or counted as dropped.
//
// The stream must outlive the object. One thread.
//
// Example:
//     TrackProblems problems("hall.txt", std::cerr, {});
//     problems.report(Oddity::Untracked, {12, 1, "1,-1,4"}, "the identifier is
//     negative"); problems.printSummary();
class TrackProblems
{
public:
    // The name stands in front of every message.
    TrackProblems(std::string name, std::ostream& talk, TrackProblemOptions options);

    void report(Oddity kind, const TrackPlace& place, std::string_view reason);

    // Counts what is no problem: nothing is printed, and reading never stops for it.
    void note(Oddity kind) { m_counts.add(kind); }

    // Of the tracks' objects, each in each of its frames.
    void countRead() { ++m_actorsRead; }

    void countDropped(std::size_t actors) { m_actorsDropped += actors; }

    std::uint64_t actorsRead() const { return m_actorsRead; }

    std::uint64_t actorsDropped() const { return m_actorsDropped; }

    // True after the first problem when reading is strict; readers then go no further.
    bool isStopped() const { return m_options.isStrict && m_total > 0; }

    const OddityCounts& counts() const { return m_counts; }

    // Problems of all kinds.
    std::size_t total() const { return m_total; }

    // One line that says what was left out and how often; nothing without problems.
    void printSummary() const;

private:
    void printSource(const TrackPlace& place) const;

    std::string m_name;
    std::ostream& m_talk;
    TrackProblemOptions m_options;
    OddityCounts m_counts;
    std::size_t m_total = 0;
    std::uint64_t m_actorsRead = 0;
    std::uint64_t m_actorsDropped = 0;
};

} // namespace scenariomatch
