#include "app/isolate/EngineMessages.h"

#include <utility>

namespace scenariomatch
{

namespace
{

void add(FeedCounters& sum, const FeedCounters& counters)
{
    sum.actors += counters.actors;
    sum.missingActors += counters.missingActors;
    sum.duplicateIds += counters.duplicateIds;
    sum.untracked += counters.untracked;
    sum.notFinite += counters.notFinite;
    sum.negativeBoxes += counters.negativeBoxes;
    sum.unknownTypes += counters.unknownTypes;
    sum.framesGoBack += counters.framesGoBack;
    sum.clocksGoBack += counters.clocksGoBack;
    sum.clockJumps += counters.clockJumps;
    sum.badClocks += counters.badClocks;
}

// What is counted since the start of a process; the other numbers are those of a frame.
void addSinceStart(RecognitionCounters& sum, const RecognitionCounters& counters)
{
    sum.operatorFailures += counters.operatorFailures;
    sum.candidateCuts += counters.candidateCuts;
    add(sum.feed, counters.feed);
}

// The numbers of an event; its words follow.
struct EventNumbers
{
    int id = 0;
    int alarm = 0;
    double confidence = 1.0;
    RecognisedTime begin;
    RecognisedTime end;
    double duration = 0.0;
    bool isNew = false;
};

template <class Value>
void addOptional(MessageWriter& message, const std::optional<Value>& value)
{
    message.add(value.has_value());
    if (value) {
        message.add(*value);
    }
}

template <class Value>
std::optional<Value> getOptional(MessageReader& message)
{
    return message.get<char>() != 0 ? std::optional(message.get<Value>()) : std::nullopt;
}

void addEvent(MessageWriter& message, const RecognisedEvent& event)
{
    message.add(EventNumbers{
        event.id,
        event.alarm,
        event.confidence,
        event.begin,
        event.end,
        event.duration,
        event.isNew});
    for (const std::string_view text : {event.name, event.kind, event.alarmLevel, event.text}) {
        message.addText(text);
    }
    message.add(event.objects.size());
    for (const RecognisedObject& object : event.objects) {
        message.add(object.id);
        message.addText(object.variable);
        message.addText(object.type);
        message.addText(object.name);
    }
    message.add(event.parts.size());
    for (const RecognisedPart& part : event.parts) {
        message.add(part.id);
        message.addText(part.variable);
        message.addText(part.name);
    }
}

// What an event refers to.
struct EventParts
{
    std::vector<RecognisedObject> objects;
    std::vector<RecognisedPart> parts;
};

RecognisedEvent getEvent(MessageReader& message, EventParts& lists)
{
    const auto numbers = message.get<EventNumbers>();
    RecognisedEvent event;
    event.id = numbers.id;
    event.alarm = numbers.alarm;
    event.confidence = numbers.confidence;
    event.begin = numbers.begin;
    event.end = numbers.end;
    event.duration = numbers.duration;
    event.isNew = numbers.isNew;
    for (std::string_view* text : {&event.name, &event.kind, &event.alarmLevel, &event.text}) {
        *text = message.getText();
    }
    lists.objects.clear();
    for (auto left = message.get<std::size_t>(); left > 0 && message.isGood(); --left) {
        RecognisedObject& object = lists.objects.emplace_back();
        object.id = message.get<int>();
        object.variable = message.getText();
        object.type = message.getText();
        object.name = message.getText();
    }
    lists.parts.clear();
    for (auto left = message.get<std::size_t>(); left > 0 && message.isGood(); --left) {
        RecognisedPart& part = lists.parts.emplace_back();
        part.id = message.get<int>();
        part.variable = message.getText();
        part.name = message.getText();
    }
    event.objects = lists.objects;
    event.parts = lists.parts;
    return event;
}

// False where the message breaks off.
bool visitMessage(MessageReader& message, const RecognitionView::EventVisitor& visit)
{
    EventParts lists;
    while (message.isGood() && message.get<char>() != 0) {
        const RecognisedEvent event = getEvent(message, lists);
        if (message.isGood()) {
            visit(event);
        }
    }
    return message.isGood();
}

} // namespace

std::string frameMessage(const TrackFrame& frame)
{
    MessageWriter message;
    message.add(frame.number);
    message.add(frame.clock);
    message.add(frame.actors.size());
    for (const TrackedActor& actor : frame.actors) {
        message.add(actor.id);
        message.addText(actor.type);
        message.add(actor.box);
        addOptional(message, actor.position);
        addOptional(message, actor.size);
    }
    return message.text();
}

std::optional<TrackFrame> readFrameMessage(std::string_view message)
{
    MessageReader reader(message);
    TrackFrame frame;
    frame.number = reader.get<int>();
    frame.clock = reader.get<TrackClock>();
    for (auto left = reader.get<std::size_t>(); left > 0 && reader.isGood(); --left) {
        TrackedActor& actor = frame.actors.emplace_back();
        actor.id = reader.get<int>();
        actor.type = reader.getText();
        actor.box = reader.get<TrackBox>();
        actor.position = getOptional<TrackPoint>(reader);
        actor.size = getOptional<TrackSize>(reader);
    }
    return reader.isGood() ? std::optional(std::move(frame)) : std::nullopt;
}

std::string readinessMessage(const EngineReadiness& readiness)
{
    MessageWriter message;
    message.add(readiness.faultStatus);
    message.addText(readiness.reason);
    message.addText(readiness.prolongation);
    return message.text();
}

std::optional<EngineReadiness> readReadinessMessage(std::string_view message)
{
    MessageReader reader(message);
    EngineReadiness readiness;
    readiness.faultStatus = reader.get<int>();
    readiness.reason = reader.getText();
    readiness.prolongation = reader.getText();
    return reader.isGood() ? std::optional(std::move(readiness)) : std::nullopt;
}

std::string eventsMessage(const RecognitionView& view)
{
    MessageWriter message;
    message.add(view.counters());
    message.add(view.nextEventId());
    view.visitEvents([&message](const RecognisedEvent& event) {
        message.add(char{1});
        addEvent(message, event);
    });
    message.add(char{0});
    return message.text();
}

bool MessageView::take(std::string message)
{
    MessageReader reader(message);
    const auto counters = reader.get<RecognitionCounters>();
    const int nextEventId = reader.get<int>();
    if (!visitMessage(reader, [](const RecognisedEvent& /*event*/) {})) {
        return false;
    }
    m_message = std::move(message);
    m_counters = counters;
    m_nextEventId = nextEventId;
    return true;
}

void MessageView::startAnew()
{
    addSinceStart(m_earlier, m_counters);
    m_counters = {};
}

RecognitionCounters MessageView::counters() const
{
    RecognitionCounters counters = m_counters;
    addSinceStart(counters, m_earlier);
    return counters;
}

void MessageView::visitEvents(const EventVisitor& visit) const
{
    MessageReader reader(m_message);
    reader.get<RecognitionCounters>();
    reader.get<int>();
    visitMessage(reader, visit);
}

} // namespace scenariomatch
