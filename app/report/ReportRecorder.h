#pragma once

#include "app/EventCollector.h"
#include "app/explain/EvidenceObserver.h"
#include "app/explain/WhyNotBins.h"
#include "app/report/ActorTracks.h"
#include "app/report/EventExplanations.h"
#include "app/report/ObserverGroup.h"
#include "app/report/ReportEvents.h"
#include "app/report/ReportPage.h"
#include "app/report/SceneObjects.h"
#include "app/report/ScenePicture.h"
#include "app/RunStatistics.h"
#include "app/TrackFrame.h"
#include "plugin/RecognitionView.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// What a report is told besides what is recognised.
struct ReportTerms
{
    std::string title;
    std::vector<PlanObject> scene;
    std::optional<ScenePicture> picture;
    // Lengths are pixels, and y grows downwards.
    bool isInPixels = false;
    // By name of the model.
    std::map<std::string, std::string> modelTexts;
    // Events to show instead of those that are recognised.
    std::optional<std::vector<ReportedEvent>> events;
    // Seconds after which an event can no longer be extended, and for how many recognition looks
    // back.
    double prolongation = 0.0;
    double lookBack = 0.0;
    std::uint64_t mostCandidates = 0;
    // How long the tracks are, in milliseconds; nothing where that is not known before.
    std::optional<std::int64_t> length;
};

// Collects what a report shows while recognition goes its way.
//
// Watches the view's process, which outlives it, from its first frame on.
//
// Example:
//     ReportRecorder recorder(view, terms);
//     ... each frame: feed.addFrame(frame); recorder.addFrame(frame); ...
//     const ReportData data = recorder.finish();
class ReportRecorder
{
public:
    ReportRecorder(RecognitionView& view, ReportTerms terms);
    ReportRecorder(const ReportRecorder&) = delete;
    ReportRecorder(ReportRecorder&&) = delete;
    ReportRecorder& operator=(const ReportRecorder&) = delete;
    ReportRecorder& operator=(ReportRecorder&&) = delete;
    ~ReportRecorder();

    // A frame that the process has just been shown.
    void addFrame(const TrackFrame& frame);
    // After the last frame, once.
    ReportData finish();

    // Events whose explanations are too much to be kept, and a sentence about them.
    std::size_t unexplained() const { return m_explanations.leftOut(); }

    std::string unexplainedText() const;

private:
    std::string whyText();

    RecognitionView& m_view;
    ReportTerms m_terms;
    ActorTracks m_tracks;
    ReportEvents m_events;
    RunStatistics m_statistics;
    CountingEventWriter m_counter;
    EventCollector m_collector;
    EventExplanations m_explanations;
    std::int64_t m_binWidth;
    EvidenceObserver m_evidence;
    WhyNotBins m_bins;
    ObserverGroup m_observers;
    std::optional<TrackClock> m_start;
    std::int64_t m_startTime = 0;
    std::int64_t m_end = 0;
};

} // namespace scenariomatch
