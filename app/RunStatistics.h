#pragma once

#include "app/EventWriter.h"
#include "app/Oddities.h"
#include "app/TrackFrame.h"
#include "app/TrackProblems.h"
#include "plugin/RecognitionView.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace scenariomatch
{

// One number of what a run did, under its name.
struct RunFigure
{
    std::string name;
    std::uint64_t number = 0;
};

// What a run did, for people.
class RunStatistics
{
public:
    void addFrame(const TrackFrame& frame, const RecognitionCounters& counters);

    void countReported() { ++m_reported; }

    // How often the engine has begun anew.
    void setRestarts(std::uint64_t count) { m_restarts = count; }

    // How many frames are not in the event file.
    void setLostFrames(std::uint64_t count) { m_lostFrames = count; }

    std::size_t frames() const { return m_frames; }

    // What does not depend on the machine; oddities only where recognition met some.
    std::vector<RunFigure> figures() const;

    // Writes one figure a line, then each oddity that was met, with its severity and what to do
    // about it.
    void print(std::ostream& out, const TrackProblems& problems) const;

    // What is wrong with the books: every actor that was read was used or dropped. Empty when they
    // add up.
    std::string imbalance(const TrackProblems& problems) const;

private:
    using Clock = std::chrono::steady_clock;

    void addOwnOddities(OddityCounts& counts) const;

    Clock::time_point m_start = Clock::now();
    std::size_t m_frames = 0;
    std::uint64_t m_actors = 0;
    std::uint64_t m_missingSizes = 0;
    std::uint64_t m_tested = 0;
    std::uint64_t m_accepted = 0;
    std::uint64_t m_completions = 0;
    std::size_t m_live = 0;
    std::size_t m_mostLive = 0;
    // As the process tells them after the last frame.
    RecognitionCounters m_last;
    std::uint64_t m_lostFrames = 0;
    std::uint64_t m_restarts = 0;
    std::uint64_t m_reported = 0;
};

// Counts the events that a writer writes.
//
// Writer and statistics must outlive it.
class CountingEventWriter : public EventWriter
{
public:
    CountingEventWriter(EventWriter& writer, RunStatistics& statistics)
        : m_writer(writer)
        , m_statistics(statistics)
    {
    }

    void write(const ReportedEvent& event) override;
    void finish() override;

private:
    EventWriter& m_writer;
    RunStatistics& m_statistics;
};

} // namespace scenariomatch
