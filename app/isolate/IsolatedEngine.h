#pragma once

#include "app/isolate/EngineChannel.h"
#include "app/isolate/EngineMessages.h"
#include "app/isolate/EngineNote.h"
#include "app/RecognitionSetup.h"
#include "app/TrackFrame.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <sys/types.h>

namespace scenariomatch
{

// How often the engine may end without a frame between, before it is given up.
constexpr int kMostDeathsInARow = 5;

// Recognition in a process of its own: what an operator does to it, be it a crash or a call of
// exit(), ends that process, and another one goes on with the next frame.
//
// The new process remembers nothing: what was going on is begun anew, under ids that have not been
// used before. Every death is told of in talk, with the frame and with the operator, if one was
// being called. The program itself must have no other threads, and must not have loaded operators.
//
// The stream must outlive it. Destroying it ends the process.
//
// Example:
//     IsolatedEngine engine({.serve = serve, .talk = std::cerr});
//     while (reader.next(frame) && !engine.fault()) {
//         if (engine.recognise(frame)) {
//             collector.addFrame(engine.view(), frame.clock);
//         }
//     }
//     engine.finish();
class IsolatedEngine
{
public:
    // How a process begins: the first one, or one that goes on with events of ids from there.
    struct Start
    {
        bool isFirst = true;
        int nextEventId = 0;
    };

    struct Options
    {
        // What the new process does: says that it is ready or why not, and then answers each frame
        // with its events, until the channel is closed.
        std::function<void(EngineChannel& channel, const Start& start)> serve;
        std::ostream& talk;
        // Called after a death, before another process begins.
        std::function<void()> clean;
        // How long a frame may take before the process counts as hung.
        std::optional<double> secondsPerFrame;
    };

    explicit IsolatedEngine(Options options);
    IsolatedEngine(const IsolatedEngine&) = delete;
    IsolatedEngine(IsolatedEngine&&) = delete;
    IsolatedEngine& operator=(const IsolatedEngine&) = delete;
    IsolatedEngine& operator=(IsolatedEngine&&) = delete;
    ~IsolatedEngine();

    // Starts the first process. False after a fault.
    bool start();

    // Has the frame recognised. False when the process has not survived it; then there is another
    // one, or a fault.
    bool recognise(const TrackFrame& frame);

    // Lets the process end in order. False when it has not: whatever it does at its end may be
    // missing.
    bool finish();

    // What the last frame that was recognised shows, and what all processes have counted.
    const RecognitionView& view() const { return m_view; }

    const std::string& prolongation() const { return m_prolongation; }

    std::uint64_t deaths() const { return m_deaths; }

    const std::optional<RunFault>& fault() const { return m_fault; }

private:
    enum class Answer : std::uint8_t { Message, Dead, Late, Interrupted };

    bool startProcess(const Start& start);
    [[noreturn]] void runProcess(int descriptor, const Start& start);
    Answer waitForAnswer(std::string& message, std::optional<double> seconds);
    // Ends the process where it has not ended; its exit status as the system tells it.
    int bury(Answer answer);
    // How it ended, in words.
    std::string obituary(Answer answer);
    void noteDeath(const TrackFrame& frame, Answer answer);
    bool fail(int status, const std::string& reason);

    Options m_options;
    EngineNote m_note;
    MessageView m_view;
    std::unique_ptr<EngineChannel> m_channel;
    pid_t m_process = -1;
    std::string m_prolongation = "0";
    int m_deathsInARow = 0;
    std::uint64_t m_deaths = 0;
    std::optional<RunFault> m_fault;
};

} // namespace scenariomatch
