#pragma once

#include "app/EventWriter.h"
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
    void addFrame(std::size_t actors, const RecognitionCounters& counters);

    void countReported() { ++m_reported; }

    // How often the engine has begun anew, and what it had counted before.
    void setRestarts(std::uint64_t count, std::uint64_t earlierFailures)
    {
        m_restarts = count;
        m_earlierFailures = earlierFailures;
    }

    // How many frames are not in the event file.
    void setLostFrames(std::uint64_t count) { m_lostFrames = count; }

    std::size_t frames() const { return m_frames; }

    // What does not depend on the machine; troubles only where there were some.
    std::vector<RunFigure> figures() const;

    // Writes one figure a line; troubles only where there were some.
    void print(std::ostream& out) const;

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_start = Clock::now();
    std::size_t m_frames = 0;
    std::size_t m_actors = 0;
    std::uint64_t m_tested = 0;
    std::uint64_t m_accepted = 0;
    std::uint64_t m_completions = 0;
    std::size_t m_live = 0;
    std::size_t m_mostLive = 0;
    std::uint64_t m_operatorFailures = 0;
    std::uint64_t m_candidateCuts = 0;
    std::uint64_t m_lostFrames = 0;
    std::uint64_t m_restarts = 0;
    std::uint64_t m_earlierFailures = 0;
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
