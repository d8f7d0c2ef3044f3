#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace scenariomatch
{

// What can be wrong with tracks; each kind follows one rule.
enum class TrackProblemKind {
    // A line, row or element that does not follow the format is left out.
    Malformed,
    // A line longer than the limit is left out.
    TooLong,
    // A frame whose number is not greater than the one before is left out.
    FrameGoesBack,
    // A frame whose clock is earlier than the one before is kept and gets the clock of the one
    // before.
    ClockGoesBack,
    // Of objects with one identifier in one frame the first is kept, the others are left out.
    DuplicateId,
    // An object with a number that is not finite is left out.
    NotFinite,
    // An object or frame with a number outside the limits is left out.
    OutOfRange,
    // An object with a negative identifier is left out.
    Untracked,
    // What follows a place where compressed data or XML is damaged is left out.
    Damaged,
};

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
// and caret, and counts all of them by kind.
//
// The stream must outlive the object. One thread.
//
// Example:
//     TrackProblems problems("hall.txt", std::cerr, {});
//     problems.report(TrackProblemKind::Untracked, {12, 1, "1,-1,4"}, "the identifier is
//     negative"); problems.printSummary();
class TrackProblems
{
public:
    // The name stands in front of every message.
    TrackProblems(std::string name, std::ostream& talk, TrackProblemOptions options);

    void report(TrackProblemKind kind, const TrackPlace& place, std::string_view reason);

    // True after the first problem when reading is strict; readers then go no further.
    bool isStopped() const { return m_options.isStrict && m_total > 0; }

    std::size_t count(TrackProblemKind kind) const;

    std::size_t total() const { return m_total; }

    // One line that says what was left out and how often; nothing without problems.
    void printSummary() const;

private:
    void printSource(const TrackPlace& place) const;

    static constexpr std::size_t kKinds = 9;

    std::string m_name;
    std::ostream& m_talk;
    TrackProblemOptions m_options;
    std::array<std::size_t, kKinds> m_counts{};
    std::size_t m_total = 0;
};

} // namespace scenariomatch
