#include "app/EventWriterJsonLines.h"

#include "app/FrameClock.h"
#include "app/JsonString.h"

#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <ostream>
#include <string_view>

namespace scenariomatch
{

namespace
{

void appendKey(std::string& line, std::string_view key)
{
    line += line.empty() || line.back() == '{' ? "\"" : ",\"";
    line += key;
    line += "\":";
}

void appendText(std::string& line, std::string_view key, std::string_view text)
{
    appendKey(line, key);
    appendJsonString(line, text);
}

template <typename Number>
void appendNumber(std::string& line, std::string_view key, Number number)
{
    appendKey(line, key);
    fmt::format_to(std::back_inserter(line), "{}", number);
}

void appendReal(std::string& line, std::string_view key, double number)
{
    if (std::isfinite(number)) {
        appendNumber(line, key, number);
        return;
    }
    appendKey(line, key);
    line += "null";
}

void appendTime(std::string& line, std::string_view key, const EventTime& time)
{
    appendText(line, key, printClock(time.clock));
    appendNumber(line, std::string(key) + "_frame", time.frame);
}

void appendObjects(std::string& line, const std::vector<EventObject>& objects)
{
    appendKey(line, "objects");
    line += '[';
    for (const EventObject& object : objects) {
        line += line.back() == '[' ? "{" : ",{";
        appendText(line, "variable", object.variable);
        appendText(line, "type", object.type);
        appendNumber(line, "id", object.id);
        appendText(line, "name", object.name);
        line += '}';
    }
    line += ']';
}

void appendSubEvents(std::string& line, const std::vector<SubEvent>& subEvents)
{
    appendKey(line, "sub_events");
    line += '[';
    for (const SubEvent& subEvent : subEvents) {
        line += line.back() == '[' ? "{" : ",{";
        appendText(line, "variable", subEvent.variable);
        appendNumber(line, "id", subEvent.id);
        appendText(line, "name", subEvent.name);
        line += '}';
    }
    line += ']';
}

} // namespace

EventWriterJsonLines::EventWriterJsonLines(std::ostream& out)
    : m_out(out)
{
}

void EventWriterJsonLines::write(const ReportedEvent& event)
{
    m_line = "{";
    appendNumber(m_line, "id", event.id);
    appendText(m_line, "name", event.name);
    appendText(m_line, "kind", event.kind);
    appendText(m_line, "alarm_level", event.alarmLevel);
    appendNumber(m_line, "alarm", event.alarm);
    appendText(m_line, "text", event.text);
    appendReal(m_line, "confidence", event.confidence);
    appendTime(m_line, "begin", event.begin);
    appendTime(m_line, "end", event.end);
    appendReal(m_line, "duration", std::round(event.duration * 1000) / 1000);
    appendObjects(m_line, event.objects);
    appendSubEvents(m_line, event.subEvents);
    m_line += "}\n";
    m_out.write(m_line.data(), static_cast<std::streamsize>(m_line.size()));
}

void EventWriterJsonLines::finish()
{
    m_out.flush();
}

} // namespace scenariomatch
