#pragma once

#include "app/TrackFrame.h"
#include "host/rhmAbstractProcessEventRecognition.h"

namespace scenariomatch
{

// Hands frames of tracks to a recognition process, as a platform does.
//
// The process must outlive it.
class FrameFeed
{
public:
    explicit FrameFeed(rhmAbstractProcessEventRecognition& process)
        : m_process(process)
    {
    }

    // Hands the frame's clock and objects to the process and has it recognise.
    void addFrame(const TrackFrame& frame);

private:
    void setActors(const TrackFrame& frame);

    rhmAbstractProcessEventRecognition& m_process;
    // Kept from frame to frame, so that actors are made once.
    rhmAbstractProcessEventRecognition::Actors m_actors;
};

} // namespace scenariomatch
