#pragma once

#include "app/TrackFrame.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// When something began or ended: the frame and its wall clock.
struct EventTime
{
    TrackClock clock;
    int frame = 0;
};

// A physical object (actor, zone, ...) that takes part in an event.
struct EventObject
{
    // The model's name for it.
    std::string variable;
    std::string type;
    // The host's identifier.
    int id = 0;
    // Empty for what has no name.
    std::string name;
};

// A recognised event that another one is composed of.
struct SubEvent
{
    // The model's name for it.
    std::string variable;
    // The id of the event and the name of its model.
    int id = 0;
    std::string name;
};

// One recognised event, as it is handed to people and programs.
struct ReportedEvent
{
    int id = 0;
    // The model's name and kind ("PrimitiveState", ...).
    std::string name;
    std::string kind;
    // The model's alarm level by name and number, and its alarm text.
    std::string alarmLevel;
    int alarm = 0;
    std::string text;
    double confidence = 1.0;
    EventTime begin;
    EventTime end;
    // From begin to end, in seconds.
    double duration = 0.0;
    std::vector<EventObject> objects;
    std::vector<SubEvent> subEvents;
};

// Writes events in one format to a stream that its owner opened.
//
// The stream must outlive the writer, and its state says whether writing worked. One thread at a
// time.
//
// Example:
//     EventWriterCsv writer(std::cout);
//     writer.write(event);
//     writer.finish();
class EventWriter
{
public:
    EventWriter() = default;
    EventWriter(const EventWriter&) = delete;
    EventWriter(EventWriter&&) = delete;
    EventWriter& operator=(const EventWriter&) = delete;
    EventWriter& operator=(EventWriter&&) = delete;
    virtual ~EventWriter() = default;

    virtual void write(const ReportedEvent& event) = 0;
    // Writes what is held back and flushes the stream. Called once, after the last event.
    virtual void finish() = 0;
};

} // namespace scenariomatch
