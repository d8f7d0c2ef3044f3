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

void RunStatistics::addFrame(std::size_t actors, const RecognitionCounters& counters)
{
    ++m_frames;
    m_actors += actors;
    m_tested += static_cast<std::uint64_t>(std::max(counters.tested, 0));
    m_accepted += static_cast<std::uint64_t>(std::max(counters.accepted, 0));
    m_completions += static_cast<std::uint64_t>(std::max(counters.completions, 0));
    m_live = counters.liveInstances;
    m_mostLive = std::max(m_mostLive, m_live);
    m_operatorFailures = counters.operatorFailures;
    m_candidateCuts = counters.candidateCuts;
}

std::vector<RunFigure> RunStatistics::figures() const
{
    std::vector<RunFigure> figures{
        {"frames", m_frames},
        {"actors", m_actors},
        {"candidates tested", m_tested},
        {"candidates accepted", m_accepted},
        {"completions", m_completions},
        {"most live instances", m_mostLive},
        {"reported instances", m_reported}};
    if (m_operatorFailures > 0) {
        figures.push_back({"operator failures", m_operatorFailures});
    }
    if (m_candidateCuts > 0) {
        figures.push_back({"models cut short", m_candidateCuts});
    }
    return figures;
}

void RunStatistics::print(std::ostream& out) const
{
    const double seconds = std::chrono::duration<double>(Clock::now() - m_start).count();
    const double rate = seconds > 0.0 ? static_cast<double>(m_frames) / seconds : 0.0;
    out << fmt::format("frames               {}\n", m_frames)
        << fmt::format("actors               {}\n", m_actors)
        << fmt::format("candidates tested    {}\n", m_tested)
        << fmt::format("candidates accepted  {}\n", m_accepted)
        << fmt::format("completions          {}\n", m_completions)
        << fmt::format("live instances       {} (at most {})\n", m_live, m_mostLive)
        << fmt::format("reported instances   {}\n", m_reported)
        << fmt::format("frames per second    {:.1f}\n", rate)
        << fmt::format("peak memory          {:.1f} MiB\n", peakMebibytes());
    if (m_operatorFailures + m_earlierFailures > 0) {
        out << fmt::format("operator failures    {}\n", m_operatorFailures + m_earlierFailures);
    }
    if (m_candidateCuts > 0) {
        out << fmt::format("models cut short     {}\n", m_candidateCuts);
    }
    if (m_restarts > 0) {
        out << fmt::format("engine has ended     {}\n", m_restarts);
    }
    if (m_lostFrames > 0) {
        out << fmt::format("frames not in file   {}\n", m_lostFrames);
    }
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
