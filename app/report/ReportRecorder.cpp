#include "app/report/ReportRecorder.h"

#include "app/explain/ExplanationJson.h"
#include "app/FrameClock.h"
#include "app/report/ReportTables.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <utility>

namespace scenariomatch
{

namespace
{

// Tracks of unknown length, which come through a pipe, have bins of a minute.
std::int64_t binWidthFor(const std::optional<std::int64_t>& length)
{
    constexpr std::int64_t kLeast = 1000;
    constexpr std::int64_t kMinute = 60'000;
    constexpr std::int64_t kBins = 120;
    return length ? std::max(kLeast, *length / kBins + 1) : kMinute;
}

} // namespace

ReportRecorder::ReportRecorder(RecognitionView& view, ReportTerms terms)
    : m_view(view)
    , m_terms(std::move(terms))
    , m_counter(m_events, m_statistics)
    , m_collector(m_counter, m_terms.prolongation, EventCollector::Reporting::WhenOver)
    , m_binWidth(binWidthFor(m_terms.length))
    , m_evidence([this](const Evidence& evidence) {
        if (m_terms.events || m_collector.isOpen(evidence.id) || m_events.has(evidence.id)) {
            m_explanations.add(evidence);
        }
    })
    , m_bins(
          view,
          {.width = m_binWidth,
           .lookBack = m_terms.lookBack,
           .mostCandidates = m_terms.mostCandidates})
    , m_observers({&m_evidence, &m_bins})
{
    view.setObserver(&m_observers);
}

ReportRecorder::~ReportRecorder()
{
    m_view.setObserver(nullptr);
}

void ReportRecorder::addFrame(const TrackFrame& frame)
{
    if (!m_start) {
        m_start = frame.clock;
        m_startTime = clockToMilliseconds(frame.clock);
    }
    m_end = clockToMilliseconds(frame.clock) - m_startTime;
    m_tracks.addFrame(frame, m_end);
    m_collector.addFrame(m_view, frame.clock);
    m_statistics.addFrame(frame, m_view.counters());
}

ReportData ReportRecorder::finish()
{
    m_evidence.finish();
    m_collector.finish();
    if (m_terms.events) {
        m_events.replace(*m_terms.events);
    }
    const double side = sideOf(m_terms.scene);
    ReportData data;
    data.tracks = m_tracks.json(TrackPrecision::ofScene(side > 0.0 ? side : m_tracks.side()));
    data.tables = reportTables(
        {m_terms.title,
         m_start.value_or(TrackClock()),
         m_end,
         m_statistics.frames(),
         m_terms.scene,
         m_terms.picture,
         m_terms.isInPixels,
         m_tracks,
         m_view,
         m_terms.modelTexts,
         m_events,
         m_statistics.figures()});
    data.why = whyText();
    return data;
}

std::string ReportRecorder::unexplainedText() const
{
    return fmt::format(
        "the report holds explanations of the first events only; {} have none", unexplained());
}

std::string ReportRecorder::whyText()
{
    std::string text = "{\"events\":[";
    for (const ReportedEvent& event : m_events.all()) {
        text += text.back() == '[' ? "" : ",\n";
        text += m_explanations.find(event.id, event.name, clockToMilliseconds(event.end.clock));
    }
    constexpr double kMilliseconds = 1000.0;
    fmt::format_to(
        std::back_inserter(text),
        "],\n\"binWidth\":{},\"lookBack\":{},\"models\":[",
        m_binWidth,
        std::isfinite(m_terms.lookBack) ? m_terms.lookBack * kMilliseconds : 0.0);
    for (const WhyNotBins::Bins& bins : m_bins.answers()) {
        text += text.back() == '[' ? "{\"bins\":[" : ",\n{\"bins\":[";
        for (const std::optional<WhyNot>& bin : bins) {
            text += text.back() == '[' ? "" : ",";
            text += bin ? outcomeLine(*bin) : "null";
        }
        text += "]}";
    }
    return text + "]}";
}

} // namespace scenariomatch
