#pragma once

#include "app/RecognitionSetup.h"
#include "app/RunOptions.h"
#include "app/TrackFrame.h"
#include "app/TrackProblems.h"
#include "app/TrackReader.h"
#include "host/rhmAbstractProcessEventRecognition.h"
#include "plugin/RecognitionView.h"

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

namespace scenariomatch
{

// Recognises what is in tracks for a command that looks on; no event file is written.
//
// The steps are in this order; one that fails leaves a fault behind. Options and stream must
// outlive it.
//
// Example:
//     Replay replay(options, "explain", std::cerr);
//     if (replay.prepare() && replay.start()) {
//         replay.view().setObserver(&observer);
//         replay.showFrames([](const TrackFrame&) { return false; });
//     }
//     replay.end();
//     return replay.report();
class Replay
{
public:
    // The command's name stands in messages, which go to talk.
    Replay(const RunOptions& options, std::string command, std::ostream& talk);

    // Reads the parameters and opens the tracks.
    bool prepare();
    // Makes the process and reads the first frame. The plug-in's code runs from here on.
    bool start();

    using IsOver = std::function<bool(const TrackFrame& next)>;
    using Seen = std::function<void(const TrackFrame& frame)>;

    // Shows the frames to the process until there are no more, or it is over with the next one.
    // Tells of each that was shown.
    bool showFrames(const IsOver& isOver, const Seen& seen = nullptr);

    // Ends the process.
    void end() { m_process.reset(); }

    // Says what was wrong; the exit status.
    int report();

    // Keeps the first fault; always false.
    bool fail(int status, const std::string& reason);

    RecognitionSetup& setup() { return m_setup; }

    // Of the process that was started.
    RecognitionView& view() { return *m_view; }

    const rhmAbstractProcessEventRecognition& process() const { return *m_process; }

    // For how many seconds recognition looks back at events.
    double lookBack() const;

    // Of the first frame.
    const TrackClock& startClock() const { return m_startClock; }

private:
    bool prepareParameters();
    bool prepareReader();

    const RunOptions& m_options;
    std::string m_command;
    std::ostream& m_talk;
    TrackProblems m_problems;
    std::unique_ptr<TrackReader> m_reader;
    RecognitionSetup m_setup;
    std::unique_ptr<rhmAbstractProcessEventRecognition> m_process;
    RecognitionView* m_view = nullptr;
    // The frame that is shown next, and the clock of the first.
    TrackFrame m_frame;
    bool m_hasFrame = false;
    TrackClock m_startClock;
    std::optional<RunFault> m_fault;
};

} // namespace scenariomatch
