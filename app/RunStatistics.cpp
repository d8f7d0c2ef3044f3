#include "app/RunStatistics.h"

#include <algorithm>
#include <fmt/format.h>
#include <ostream>
#include <sys/resource.h>

namespace scenariomatch
{

namespace
{

constexpr double kKibibytesPerMebibyte = 1024.0;

double peakMebibytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / kKibibytesPerMebibyte;
}

} // namespace

void RunStatistics::addFrame(const TrackFrame& frame, const RecognitionCounters& counters)
{
    ++m_frames;
    m_actors += frame.actors.size();
    m_missingSizes += static_cast<std::uint64_t>(
        std::count_if(frame.actors.begin(), frame.actors.end(), [](const TrackedActor& actor) {
            return !actor.size;
        }));
    m_tested += static_cast<std::uint64_t>(std::max(counters.tested, 0));
    m_accepted += static_cast<std::uint64_t>(std::max(counters.accepted, 0));
    m_completions += static_cast<std::uint64_t>(std::max(counters.completions, 0));
    m_live = counters.liveInstances;
    m_mostLive = std::max(m_mostLive, m_live);
    m_last = counters;
}

std::vector<RunFigure> RunStatistics::figures() const
{
    std::vector<RunFigure> figures{
        {"frames", m_frames},
        {"actors used", m_actors},
        {"candidates tested", m_tested},
        {"candidates accepted", m_accepted},
        {"completions", m_completions},
        {"most live instances", m_mostLive},
        {"reported instances", m_reported}};
    OddityCounts counts;
    addOwnOddities(counts);
    counts.visit([&figures](Oddity oddity, std::uint64_t count) {
        figures.push_back({std::string(textOf(oddity).name), count});
    });
    return figures;
}

// What was met in spite of the readers.
void RunStatistics::addOwnOddities(OddityCounts& counts) const
{
    const FeedCounters& feed = m_last.feed;
    counts.add(Oddity::FrameGoesBack, feed.framesGoBack);
    counts.add(Oddity::ClockGoesBack, feed.clocksGoBack);
    counts.add(Oddity::ClockJumps, feed.clockJumps);
    counts.add(Oddity::BadClock, feed.badClocks);
    counts.add(Oddity::DuplicateId, feed.duplicateIds);
    counts.add(Oddity::NotFinite, feed.notFinite);
    counts.add(Oddity::NegativeBox, feed.negativeBoxes);
    counts.add(Oddity::Untracked, feed.untracked);
    counts.add(Oddity::UnknownType, feed.unknownTypes);
    counts.add(Oddity::MissingActor, feed.missingActors);
    counts.add(Oddity::MissingSize, m_missingSizes);
    counts.add(Oddity::OperatorFailure, m_last.operatorFailures);
    counts.add(Oddity::CandidateCut, m_last.candidateCuts);
    counts.add(Oddity::EngineRestart, m_restarts);
    counts.add(Oddity::FrameNotInFile, m_lostFrames);
}

std::string RunStatistics::imbalance(const TrackProblems& problems) const
{
    if (problems.actorsRead() == m_actors + problems.actorsDropped()) {
        return {};
    }
    return fmt::format(
        "{} actors were read, {} used and {} dropped, which does not add up: please report it",
        problems.actorsRead(),
        m_actors,
        problems.actorsDropped());
}

void RunStatistics::print(std::ostream& out, const TrackProblems& problems) const
{
    const double seconds = std::chrono::duration<double>(Clock::now() - m_start).count();
    const double rate = seconds > 0.0 ? static_cast<double>(m_frames) / seconds : 0.0;
    out << fmt::format("frames               {}\n", m_frames)
        << fmt::format("actors read          {}\n", problems.actorsRead())
        << fmt::format("actors used          {}\n", m_actors)
        << fmt::format("actors dropped       {}\n", problems.actorsDropped())
        << fmt::format("candidates tested    {}\n", m_tested)
        << fmt::format("candidates accepted  {}\n", m_accepted)
        << fmt::format("completions          {}\n", m_completions)
        << fmt::format("live instances       {} (at most {})\n", m_live, m_mostLive)
        << fmt::format("reported instances   {}\n", m_reported)
        << fmt::format("frames per second    {:.1f}\n", rate)
        << fmt::format("peak memory          {:.1f} MiB\n", peakMebibytes());
    OddityCounts counts = problems.counts();
    addOwnOddities(counts);
    counts.visit([&out](Oddity oddity, std::uint64_t count) {
        const OddityText& text = textOf(oddity);
        out << fmt::format(
            "{:<20} {}  {}: {}\n", text.name, count, nameOf(text.severity), text.advice);
    });
}

void CountingEventWriter::write(const ReportedEvent& event)
{
    m_statistics.countReported();
    m_writer.write(event);
}

void CountingEventWriter::finish()
{
    m_writer.finish();
}

} // namespace scenariomatch
