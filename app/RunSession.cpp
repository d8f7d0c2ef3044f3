#include "app/RunSession.h"

namespace scenariomatch
{

RunSession::RunSession(
    rhmAbstractProcessEventRecognition& process,
    const RecognitionView& view,
    EventCollector& collector,
    RunStatistics& statistics)
    : m_feed(process)
    , m_view(view)
    , m_collector(collector)
    , m_statistics(statistics)
{
}

void RunSession::addFrame(const TrackFrame& frame)
{
    m_feed.addFrame(frame);
    m_collector.addFrame(m_view, frame.clock);
    m_statistics.addFrame(frame, m_view.counters());
}

} // namespace scenariomatch
