#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scenariomatch
{

// What can be odd about what comes in, or go wrong with it; each kind follows one rule and has one
// counter. What is said of them stands in the table of Oddities.cpp.
enum class Oddity : std::size_t {
    // A line, row or element that does not follow the format is left out.
    Malformed,
    // A line longer than the limit is left out.
    TooLong,
    // A frame whose number is not greater than the one before is left out.
    FrameGoesBack,
    // A frame whose clock is earlier than the one before is kept and gets the clock of the one
    // before.
    ClockGoesBack,
    // A frame more than an hour later than the one before is used as it stands.
    ClockJumps,
    // A date or time of day that no calendar has is carried over to the one that it comes to.
    BadClock,
    // Of objects with one identifier in one frame the first is kept, the others are left out.
    DuplicateId,
    // An object with a number that is not finite is left out.
    NotFinite,
    // An object or frame with a number outside the limits is left out.
    OutOfRange,
    // An object whose box has a negative width or height is left out.
    NegativeBox,
    // Objects of a frame that has too many are left out from there on.
    TooManyObjects,
    // An object whose class is not one of the format's is left out.
    UnknownClass,
    // An object with a negative identifier is left out.
    Untracked,
    // An object that the tracks themselves say not to consider is left out.
    NotConsidered,
    // What follows a place where compressed data or XML is damaged is left out.
    Damaged,
    // An object of a type that has no meaning of its own is a Mobile.
    UnknownType,
    // An object without a size is taken for one of size 0.
    MissingSize,
    // A place in a platform's list of objects that holds none is passed over.
    MissingActor,
    // An operator that throws is false.
    OperatorFailure,
    // Candidates of a model that has too many in a frame are left out.
    CandidateCut,
    // An engine in a process of its own that has ended begins anew with the next frame.
    EngineRestart,
    // A frame that cannot be written is left out of the XML event file.
    FrameNotInFile,
};

inline constexpr std::size_t kOddities = 22;

// How much an oddity harms: nothing is lost by a note; a warning says that something was left out
// or changed; after an error the events cannot be trusted.
enum class Severity { Note, Warning, Error };

// What is said of one kind.
struct OddityText
{
    // As the statistics name it.
    std::string_view name;
    Severity severity = Severity::Note;
    // What happened, for a count of one and for others.
    std::string_view one;
    std::string_view many;
    // A sentence.
    std::string_view advice;
};

const OddityText& textOf(Oddity oddity);

std::string_view nameOf(Severity severity);

// How often each kind was met.
class OddityCounts
{
public:
    void add(Oddity oddity, std::uint64_t count = 1)
    {
        m_counts.at(static_cast<std::size_t>(oddity)) += count;
    }

    std::uint64_t of(Oddity oddity) const { return m_counts.at(static_cast<std::size_t>(oddity)); }

    // Calls visit(oddity, count) for each kind that was met, in the order of the kinds.
    template <typename Visit>
    void visit(Visit visit) const
    {
        for (std::size_t i = 0; i < kOddities; ++i) {
            if (m_counts.at(i) > 0) {
                visit(static_cast<Oddity>(i), m_counts.at(i));
            }
        }
    }

private:
    std::array<std::uint64_t, kOddities> m_counts{};
};

} // namespace scenariomatch
