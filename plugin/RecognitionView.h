#pragma once

#include "host/CSynchronizer.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <span>
#include <string_view>

class CSScenario;

namespace scenariomatch
{

class RecognitionObserver;

// When an event began or ended.
struct RecognisedTime
{
    int frame = 0;
    DateTime clock;
};

// A physical object that takes part in an event.
struct RecognisedObject
{
    // The model's name for it.
    std::string_view variable;
    // "Person", "Zone", ...
    std::string_view type;
    // The host's identifier; -1 when nothing is bound.
    int id = -1;
    // Empty for what has no name.
    std::string_view name;
};

// A recognised event that another one is composed of.
struct RecognisedPart
{
    // The model's name for it.
    std::string_view variable;
    // The event's id and the name of its model.
    int id = -1;
    std::string_view name;
};

// One recognised event as it stands in the current frame. Everything lives for the visit only.
struct RecognisedEvent
{
    int id = 0;
    // The model's name and kind.
    std::string_view name;
    std::string_view kind;
    // The model's alarm level by name and number, and its alarm text.
    std::string_view alarmLevel;
    int alarm = 0;
    std::string_view text;
    double confidence = 1.0;
    RecognisedTime begin;
    RecognisedTime end;
    // From begin to end, in seconds.
    double duration = 0.0;
    // First recognised in this frame; false when an earlier recognition goes on.
    bool isNew = false;
    // In the order of the variables' names.
    std::span<const RecognisedObject> objects;
    std::span<const RecognisedPart> parts;
};

// What the process was handed since the start, and what was odd about it. All of it is used as it
// stands.
struct FeedCounters
{
    // Objects, each in each of its frames.
    std::uint64_t actors = 0;
    // Places of the lists that hold no object.
    std::uint64_t missingActors = 0;
    // Objects whose identifier was in the frame already, or is negative.
    std::uint64_t duplicateIds = 0;
    std::uint64_t untracked = 0;
    // Objects with a position or size that is not finite, and with a box of negative size.
    std::uint64_t notFinite = 0;
    std::uint64_t negativeBoxes = 0;
    // Objects that are neither persons nor groups.
    std::uint64_t unknownTypes = 0;
    // Frames whose number is not greater than the one before.
    std::uint64_t framesGoBack = 0;
    // Frames whose clock is earlier than the one before, or later by more than an hour.
    std::uint64_t clocksGoBack = 0;
    std::uint64_t clockJumps = 0;
    // Frames whose date or time of day is in no calendar.
    std::uint64_t badClocks = 0;
};

// What recognition did and holds.
struct RecognitionCounters
{
    // In the current frame: candidates tested and accepted, completions of composite candidates
    // tried.
    int tested = 0;
    int accepted = 0;
    int completions = 0;
    // Recognised instances that are remembered, and models that take part.
    std::size_t liveInstances = 0;
    std::size_t models = 0;
    // How often an operator has thrown or given another value than its description says, since the
    // start.
    std::uint64_t operatorFailures = 0;
    // How often a model has had too many candidates in a frame, since the start.
    std::uint64_t candidateCuts = 0;
    FeedCounters feed;
};

// What a recognition process tells beyond the platform's event records. Programs of ours find it
// with a cast of the process; a process without it offers the records alone.
//
// Valid after init(); all calls from the thread that drives the process.
//
// Example:
//     if (auto* view = dynamic_cast<RecognitionView*>(process.get())) {
//         view->visitEvents([&](const RecognisedEvent& event) { count += event.objects.size(); });
//     }
class __attribute__((visibility("default"))) RecognitionView
{
public:
    RecognitionView() = default;
    RecognitionView(const RecognitionView&) = delete;
    RecognitionView(RecognitionView&&) = delete;
    RecognitionView& operator=(const RecognitionView&) = delete;
    RecognitionView& operator=(RecognitionView&&) = delete;
    virtual ~RecognitionView() = default;

    using EventVisitor = std::function<void(const RecognisedEvent& event)>;
    using ModelVisitor = std::function<void(const CSScenario& model)>;

    // Shows every event recognised in the current frame whose alarm level is reported, in the order
    // of the records.
    virtual void visitEvents(const EventVisitor& visit) const = 0;

    virtual RecognitionCounters counters() const = 0;

    // The id that the next event gets, at least.
    virtual int nextEventId() const = 0;

    // For a process that goes on where another one has ended, before its first frame: the id that
    // its first event gets.
    virtual void setNextEventId(int id) = 0;

    // Shows every model that takes part in recognition: those that an observer is told of.
    virtual void visitModels(const ModelVisitor& visit) const = 0;

    // Writes for people how the models are matched: in which order their objects are bound, and
    // when each constraint is tested.
    virtual void printPlans(std::ostream& out) const = 0;

    // The observer must outlive its use; null for none.
    virtual void setObserver(RecognitionObserver* observer) = 0;
};

} // namespace scenariomatch
