#pragma once

#include "app/EventCollector.h"
#include "app/FrameFeed.h"
#include "app/ProgressBar.h"
#include "app/RunStatistics.h"
#include "app/TrackReader.h"
#include "host/rhmAbstractProcessEventRecognition.h"
#include "plugin/RecognitionView.h"

namespace scenariomatch
{

// Drives a recognition process over tracks, frame by frame, as a platform does.
//
// All that it is given must outlive it.
class RunSession
{
public:
    RunSession(
        rhmAbstractProcessEventRecognition& process,
        const RecognitionView& view,
        EventCollector& collector,
        RunStatistics& statistics);

    // Hands the frame's clock and objects to the process, has it recognise, collects the events.
    void addFrame(const TrackFrame& frame);

private:
    FrameFeed m_feed;
    const RecognitionView& m_view;
    EventCollector& m_collector;
    RunStatistics& m_statistics;
};

} // namespace scenariomatch
