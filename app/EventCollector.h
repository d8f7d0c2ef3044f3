#pragma once

#include "app/EventWriter.h"
#include "plugin/RecognitionView.h"

#include <cstdint>
#include <list>
#include <unordered_map>
#include <vector>

namespace scenariomatch
{

// Makes one report of each event from what recognition shows frame by frame.
//
// An event that goes on is shown in every frame. It is over when the present is later than its end
// by more than the prolongation, because then it can no longer be extended: only now, or at the end
// of the stream, is it handed to the writer. Events that are over in the same frame are handed on
// in the order of their ends, those with one end in the order of their ids; while clocks do not go
// back, the whole output is in this order.
//
// With Reporting::EveryFrame each frame's events are handed on at once as they stand, in the order
// shown.
//
// The writer must outlive the collector. A frame costs time in the events that it shows or that are
// over in it, however many are open or have been written. One thread at a time.
//
// Example:
//     EventCollector collector(writer, 5.0, EventCollector::Reporting::WhenOver);
//     collector.addFrame(view, frame.clock);
//     collector.finish();
class EventCollector
{
public:
    enum class Reporting { WhenOver, EveryFrame };

    EventCollector(EventWriter& writer, double prolongationSeconds, Reporting reporting);

    // Takes the events that the view shows for the frame of this clock.
    void addFrame(const RecognitionView& view, const TrackClock& now);

    // Whether the event has been shown and is not over; always false with Reporting::EveryFrame.
    bool isOpen(int id) const { return m_openById.contains(id); }

    // Hands on what is still open and finishes the writer.
    void finish();

private:
    struct OpenEvent
    {
        ReportedEvent report;
        // In milliseconds.
        std::int64_t lastSeen = 0;
    };

    using OpenEvents = std::list<OpenEvent>;

    void addEvent(const RecognisedEvent& event, std::int64_t now);
    bool isOver(const OpenEvent& event, std::int64_t now) const;
    void writeOver(std::int64_t now);
    // Empties the list in the order that the class promises.
    void writeInOrder(OpenEvents& events);

    EventWriter& m_writer;
    double m_prolongationMilliseconds;
    Reporting m_reporting;
    // Least recently seen first, so that those that are over stand at the front.
    OpenEvents m_open;
    std::unordered_map<int, OpenEvents::iterator> m_openById;
};

} // namespace scenariomatch
