#include "app/isolate/IsolatedEngine.h"

#include "app/ExitStatus.h"
#include "app/FrameClock.h"
#include "app/Interrupt.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <fmt/format.h>
#include <iostream>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace scenariomatch
{

namespace
{

// How often the program looks whether it is to end while it waits for the engine.
constexpr int kGlanceMilliseconds = 100;

// What a frame in work, or the engine's end, may take once the program is to end.
constexpr std::chrono::seconds kGrace{2};

std::string endingOf(int status)
{
    if (WIFEXITED(status)) {
        return fmt::format("exit status {}", WEXITSTATUS(status));
    }
    const char* const name = ::sigabbrev_np(WTERMSIG(status));
    return name == nullptr ? fmt::format("signal {}", WTERMSIG(status))
                           : fmt::format("SIG{}", name);
}

} // namespace

IsolatedEngine::IsolatedEngine(Options options)
    : m_options(std::move(options))
{
}

IsolatedEngine::~IsolatedEngine()
{
    finish();
}

bool IsolatedEngine::fail(int status, const std::string& reason)
{
    if (!m_fault) {
        m_fault = {status, reason};
    }
    return false;
}

bool IsolatedEngine::start()
{
    return startProcess({});
}

bool IsolatedEngine::startProcess(const Start& start)
{
    std::array<int, 2> sockets{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
        return fail(
            kExitPlugin, "no connection to the engine: " + std::generic_category().message(errno));
    }
    // What is held back here would be written once more by the other process.
    std::cout.flush();
    static_cast<void>(std::fflush(nullptr));
    m_note.clear();
    const pid_t program = ::getpid();
    m_process = ::fork();
    if (m_process == 0) {
        // The engine ends with the program.
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != program) {
            ::_exit(kExitPlugin);
        }
        ::close(sockets[0]);
        runProcess(sockets[1], start);
    }
    ::close(sockets[1]);
    m_channel = std::make_unique<EngineChannel>(sockets[0]);
    if (m_process < 0) {
        return fail(
            kExitPlugin, "no process for the engine: " + std::generic_category().message(errno));
    }
    std::string message;
    const Answer answer = waitForAnswer(message, std::nullopt);
    const auto readiness = answer == Answer::Message ? readReadinessMessage(message) : std::nullopt;
    if (!readiness) {
        return fail(kExitPlugin, fmt::format("{} before its first frame", obituary(answer)));
    }
    m_prolongation = readiness->prolongation;
    return readiness->faultStatus == 0 || fail(readiness->faultStatus, readiness->reason);
}

void IsolatedEngine::runProcess(int descriptor, const Start& start)
{
    // Ctrl-C reaches both processes, and the program alone says when they end.
    static_cast<void>(std::signal(SIGINT, SIG_IGN));
    static_cast<void>(std::signal(SIGTERM, SIG_IGN));
    // A place in standard input belongs to both processes.
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::dup2(nothing, STDIN_FILENO);
    EngineChannel channel(descriptor);
    try {
        m_note.begin();
        m_options.serve(channel, start);
    } catch (const std::exception& failure) {
        std::cerr << "scenariomatch: " << failure.what() << '\n';
        ::_exit(kExitPlugin);
    }
    ::_exit(kExitDone);
}

IsolatedEngine::Answer
IsolatedEngine::waitForAnswer(std::string& message, std::optional<double> seconds)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    std::optional<Clock::time_point> interrupted;
    for (;;) {
        const EngineChannel::Reading reading = m_channel->receive(message, kGlanceMilliseconds);
        if (reading != EngineChannel::Reading::NotYet) {
            return reading == EngineChannel::Reading::Message ? Answer::Message : Answer::Dead;
        }
        const Clock::time_point now = Clock::now();
        if (isInterrupted() && !interrupted) {
            interrupted = now;
        }
        if (interrupted && now - *interrupted > kGrace) {
            return Answer::Interrupted;
        }
        const std::chrono::duration<double> passed = now - start;
        if (seconds && passed.count() > *seconds) {
            return Answer::Late;
        }
    }
}

int IsolatedEngine::bury(Answer answer)
{
    m_channel->close();
    if (answer != Answer::Dead) {
        ::kill(m_process, SIGKILL);
    }
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
    return status;
}

std::string IsolatedEngine::obituary(Answer answer)
{
    const int status = bury(answer);
    const std::string name = m_note.name();
    const std::string who = name.empty() ? "the engine" : "operator " + name;
    switch (answer) {
    case Answer::Late:
        return fmt::format("{} took longer than {} s", who, *m_options.secondsPerFrame);
    case Answer::Interrupted:
        return who + " did not come back";
    case Answer::Message:
        return "the engine's answer made no sense";
    case Answer::Dead:
        break;
    }
    return name.empty() ? fmt::format("the engine ended with {}", endingOf(status))
                        : fmt::format("{} ended the engine with {}", who, endingOf(status));
}

void IsolatedEngine::noteDeath(const TrackFrame& frame, Answer answer)
{
    m_view.startAnew();
    ++m_deaths;
    ++m_deathsInARow;
    const std::string reason =
        fmt::format("frame {} ({}): {}", frame.number, printClock(frame.clock), obituary(answer));
    if (m_options.clean) {
        m_options.clean();
    }
    if (answer == Answer::Interrupted) {
        m_options.talk << "scenariomatch run: " << reason << '\n';
        return;
    }
    if (m_deathsInARow == kMostDeathsInARow) {
        fail(kExitPlugin, fmt::format("{}; given up after {} in a row", reason, m_deathsInARow));
        return;
    }
    m_options.talk << "scenariomatch run: " << reason
                   << "; the engine starts anew with the next frame\n";
    startProcess({.isFirst = false, .nextEventId = m_view.nextEventId()});
}

bool IsolatedEngine::recognise(const TrackFrame& frame)
{
    if (m_process < 0) {
        return false;
    }
    // A process that is gone takes nothing; it is found so when it does not answer.
    m_channel->send(frameMessage(frame));
    std::string message;
    const Answer answer = waitForAnswer(message, m_options.secondsPerFrame);
    if (answer != Answer::Message || !m_view.take(std::move(message))) {
        noteDeath(frame, answer);
        return false;
    }
    m_deathsInARow = 0;
    return true;
}

bool IsolatedEngine::finish()
{
    if (m_process < 0) {
        return false;
    }
    m_channel->stopSending();
    std::string message;
    const int status = bury(waitForAnswer(message, std::nullopt));
    return WIFEXITED(status) && WEXITSTATUS(status) == kExitDone;
}

} // namespace scenariomatch
