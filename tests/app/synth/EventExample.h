#pragma once

#include "app/EventWriter.h"

namespace scenariomatch
{

// An event with everything in it.
inline ReportedEvent exampleEvent()
{
    ReportedEvent event;
    event.id = 4;
    event.name = "Meet";
    event.kind = "CompositeEvent";
    event.alarmLevel = "URGENT";
    event.alarm = 2;
    event.text = "two people meet";
    event.confidence = 0.1;
    event.begin = {{2026, 5, 4, 10, 0, 6, 160}, 154};
    event.end = {{2026, 5, 4, 10, 0, 48, 200}, 1205};
    event.duration = 42.04;
    event.objects = {{"p1", "PERSON", 17, ""}, {"z", "Zone", 3, "Entrance"}};
    event.subEvents = {{"c1", 2, "Close"}};
    return event;
}

} // namespace scenariomatch
