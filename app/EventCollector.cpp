#include "app/EventCollector.h"

#include "app/FrameClock.h"

#include <tuple>

namespace scenariomatch
{

namespace
{

EventTime reportTime(const RecognisedTime& time)
{
    TrackClock clock;
    clock.year = time.clock.year;
    clock.month = time.clock.month;
    clock.day = time.clock.day;
    clock.hour = time.clock.hour;
    clock.minute = time.clock.minute;
    clock.second = time.clock.second;
    clock.millisecond = time.clock.millisecond;
    return {clock, time.frame};
}

// What may change from frame to frame while an event goes on; its start moves when it takes over an
// earlier event's.
void setProgress(ReportedEvent& report, const RecognisedEvent& event)
{
    report.confidence = event.confidence;
    report.begin = reportTime(event.begin);
    report.end = reportTime(event.end);
    report.duration = event.duration;
}

ReportedEvent makeReport(const RecognisedEvent& event)
{
    ReportedEvent report;
    report.id = event.id;
    report.name = event.name;
    report.kind = event.kind;
    report.alarmLevel = event.alarmLevel;
    report.alarm = event.alarm;
    report.text = event.text;
    setProgress(report, event);
    report.objects.reserve(event.objects.size());
    for (const RecognisedObject& object : event.objects) {
        report.objects.push_back(
            {std::string(object.variable),
             std::string(object.type),
             object.id,
             std::string(object.name)});
    }
    report.subEvents.reserve(event.parts.size());
    for (const RecognisedPart& part : event.parts) {
        report.subEvents.push_back({std::string(part.variable), part.id, std::string(part.name)});
    }
    return report;
}

} // namespace

EventCollector::EventCollector(EventWriter& writer, double prolongationSeconds, Reporting reporting)
    : m_writer(writer)
    , m_prolongationMilliseconds(prolongationSeconds * 1000)
    , m_reporting(reporting)
{
}

void EventCollector::addFrame(const RecognitionView& view, const TrackClock& now)
{
    if (m_reporting == Reporting::EveryFrame) {
        view.visitEvents(
            [this](const RecognisedEvent& event) { m_writer.write(makeReport(event)); });
        return;
    }
    const std::int64_t nowMilliseconds = clockToMilliseconds(now);
    view.visitEvents([this, nowMilliseconds](const RecognisedEvent& event) {
        addEvent(event, nowMilliseconds);
    });
    writeOver(nowMilliseconds);
}

void EventCollector::addEvent(const RecognisedEvent& event, std::int64_t now)
{
    const auto [entry, isNew] = m_openById.try_emplace(event.id);
    if (isNew) {
        entry->second = m_open.insert(m_open.end(), OpenEvent{makeReport(event), now});
        return;
    }
    const OpenEvents::iterator known = entry->second;
    setProgress(known->report, event);
    known->lastSeen = now;
    m_open.splice(m_open.end(), m_open, known);
}

bool EventCollector::isOver(const OpenEvent& event, std::int64_t now) const
{
    return static_cast<double>(now - event.lastSeen) > m_prolongationMilliseconds;
}

void EventCollector::writeOver(std::int64_t now)
{
    auto end = m_open.begin();
    while (end != m_open.end() && isOver(*end, now)) {
        ++end;
    }
    OpenEvents over;
    over.splice(over.end(), m_open, m_open.begin(), end);
    writeInOrder(over);
}

void EventCollector::writeInOrder(OpenEvents& events)
{
    events.sort([](const OpenEvent& a, const OpenEvent& b) {
        return std::tie(a.lastSeen, a.report.id) < std::tie(b.lastSeen, b.report.id);
    });
    for (const OpenEvent& event : events) {
        m_writer.write(event.report);
        m_openById.erase(event.report.id);
    }
    events.clear();
}

void EventCollector::finish()
{
    writeInOrder(m_open);
    m_writer.finish();
}

} // namespace scenariomatch
