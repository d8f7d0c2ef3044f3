#pragma once

#include "plugin/ActorAttributes.h"
#include "plugin/RecognitionView.h"

#include <memory>

class CSTimeStamp;

namespace scenariomatch
{

// Counts what a process is handed, and what is odd about it; changes nothing.
//
// Same thread as the process.
//
// Example:
//     watch.addFrame(time);
//     watch.addActor(state, isFirst);
class FeedWatch
{
public:
    // A clock that is ahead by more seconds than this has jumped.
    static constexpr double kJumpSeconds = 3600.0;

    // The time of a frame, which is told once.
    void addFrame(const std::shared_ptr<CSTimeStamp>& time);

    // An object of the frame, and whether it is the frame's first one with its identifier.
    void addActor(const ActorState& actor, bool isFirst);

    void addMissingActor() { ++m_counters.missingActors; }

    const FeedCounters& counters() const { return m_counters; }

private:
    FeedCounters m_counters;
    std::shared_ptr<CSTimeStamp> m_last;
};

} // namespace scenariomatch
