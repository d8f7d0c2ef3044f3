#include "app/RecordView.h"

#include <vector>

namespace scenariomatch
{

namespace
{

RecognisedTime timeOf(const CSynchronizer& clock)
{
    return {
        clock.getFrameNumber(),
        {clock.getYear(),
         clock.getMonth(),
         clock.getDay(),
         clock.getHour(),
         clock.getMinute(),
         clock.getSecond(),
         clock.getMillisecond()}};
}

} // namespace

void RecordView::visitEvents(const EventVisitor& visit) const
{
    std::vector<RecognisedObject> objects;
    for (const auto& record : m_process.getCurrentFrameEvents()) {
        objects.clear();
        for (const int id : record->getInvolvedActorIds()) {
            // -1 stands for "none".
            if (id >= 0) {
                objects.push_back({"", "Person", id, ""});
            }
        }
        RecognisedEvent event;
        event.id = static_cast<int>(record->getTRXId());
        event.name = record->getTRXName();
        event.kind = record->getTRXType();
        event.alarmLevel = record->getTRXAlarmLevel();
        event.confidence = record->getTRXConfidence();
        event.begin = timeOf(record->getTRXBegin());
        event.end = timeOf(record->getTRXEnd());
        event.duration = record->getTRXDuration();
        event.objects = objects;
        visit(event);
    }
}

} // namespace scenariomatch
