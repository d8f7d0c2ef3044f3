#include "app/Replay.h"

#include "app/ExitStatus.h"
#include "app/FrameFeed.h"
#include "app/Interrupt.h"
#include "app/RunParameters.h"
#include "app/RunTracks.h"
#include "types/NumberText.h"

#include <fmt/format.h>
#include <ostream>
#include <utility>

namespace scenariomatch
{

Replay::Replay(const RunOptions& options, std::string command, std::ostream& talk)
    : m_options(options)
    , m_command("scenariomatch " + std::move(command))
    , m_talk(talk)
    , m_problems(
          options.tracks == "-" ? "standard input" : options.tracks,
          talk,
          TrackProblemOptions{.isStrict = options.isStrict})
    , m_setup(talk, m_command + ": --set")
{
}

bool Replay::fail(int status, const std::string& reason)
{
    if (!m_fault) {
        m_fault = {status, reason};
    }
    return false;
}

bool Replay::prepare()
{
    return prepareParameters() && prepareReader();
}

bool Replay::prepareParameters()
{
    std::optional<RunParameterSources> sources = parameterSources(m_options, m_fault);
    if (!sources) {
        return false;
    }
    sources->leaveEventFileAlone();
    return m_setup.read(std::move(*sources)) ||
           fail(m_setup.fault()->status, m_setup.fault()->reason);
}

bool Replay::prepareReader()
{
    m_reader = openRunTracks(m_options, m_problems, m_fault);
    return m_reader != nullptr;
}

bool Replay::start()
{
    m_process = m_setup.createProcess();
    if (!m_process) {
        return fail(m_setup.fault()->status, m_setup.fault()->reason);
    }
    m_view = dynamic_cast<RecognitionView*>(m_process.get());
    if (m_view == nullptr) {
        return fail(kExitPlugin, "the plug-in does not tell what it does");
    }
    m_hasFrame = m_reader->next(m_frame);
    m_startClock = m_hasFrame ? m_frame.clock : TrackClock();
    return true;
}

bool Replay::showFrames(const IsOver& isOver, const Seen& seen)
{
    FrameFeed feed(*m_process);
    const bool hasFrames = m_hasFrame;
    while (m_hasFrame && !isInterrupted() && !isOver(m_frame)) {
        feed.addFrame(m_frame);
        if (seen) {
            seen(m_frame);
        }
        m_hasFrame = m_reader->next(m_frame);
    }
    if (isInterrupted()) {
        m_talk << fmt::format("{}: interrupted; only what was read is told\n", m_command);
    }
    const std::optional<RunFault> fault =
        faultOfReading(m_options, *m_reader, m_problems, hasFrames);
    return !fault || fail(fault->status, fault->reason);
}

int Replay::report()
{
    m_problems.printSummary();
    if (m_fault) {
        m_talk << m_command << ": " << m_fault->reason << '\n';
        return m_fault->status;
    }
    return kExitDone;
}

double Replay::lookBack() const
{
    return stringToDouble(m_process->parameter("constTimeSearch").value_or("0"));
}

} // namespace scenariomatch
