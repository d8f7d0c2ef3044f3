#include "app/EventWriterCsv.h"

#include "app/FrameClock.h"

#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <ostream>
#include <string_view>

namespace scenariomatch
{

namespace
{

void appendField(std::string& line, std::string_view text)
{
    if (!line.empty()) {
        line += ',';
    }
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        line += text;
        return;
    }
    line += '"';
    for (const char character : text) {
        line += character;
        if (character == '"') {
            line += '"';
        }
    }
    line += '"';
}

// Text out of files. A spreadsheet would take some of it for a formula: an apostrophe before it
// says that it is none.
void appendText(std::string& line, const std::string& text)
{
    constexpr std::string_view kFormula = "=+-@\t\r";
    const bool isFormula = !text.empty() && kFormula.find(text.front()) != std::string_view::npos;
    appendField(line, isFormula ? '\'' + text : text);
}

std::string objectList(const std::vector<EventObject>& objects)
{
    std::string list;
    for (const EventObject& object : objects) {
        list += list.empty() ? "" : ";";
        fmt::format_to(
            std::back_inserter(list), "{}={} {}", object.variable, object.type, object.id);
        list += object.name.empty() ? "" : ' ' + object.name;
    }
    return list;
}

std::string subEventList(const std::vector<SubEvent>& subEvents)
{
    std::string list;
    for (const SubEvent& subEvent : subEvents) {
        list += list.empty() ? "" : ";";
        fmt::format_to(
            std::back_inserter(list), "{}={} {}", subEvent.variable, subEvent.id, subEvent.name);
    }
    return list;
}

} // namespace

EventWriterCsv::EventWriterCsv(std::ostream& out)
    : m_out(out)
{
}

void EventWriterCsv::writeHeader()
{
    if (!m_hasHeader) {
        m_out << "id,name,kind,alarm_level,alarm,text,confidence,begin,begin_frame,end,end_frame,"
                 "duration,objects,sub_events\r\n";
        m_hasHeader = true;
    }
}

void EventWriterCsv::write(const ReportedEvent& event)
{
    writeHeader();
    m_line.clear();
    appendField(m_line, fmt::format("{}", event.id));
    appendText(m_line, event.name);
    appendText(m_line, event.kind);
    appendText(m_line, event.alarmLevel);
    appendField(m_line, fmt::format("{}", event.alarm));
    appendText(m_line, event.text);
    appendField(m_line, fmt::format("{}", event.confidence));
    appendField(m_line, printClock(event.begin.clock));
    appendField(m_line, fmt::format("{}", event.begin.frame));
    appendField(m_line, printClock(event.end.clock));
    appendField(m_line, fmt::format("{}", event.end.frame));
    appendField(m_line, fmt::format("{}", std::round(event.duration * 1000) / 1000));
    appendText(m_line, objectList(event.objects));
    appendText(m_line, subEventList(event.subEvents));
    m_line += "\r\n";
    m_out.write(m_line.data(), static_cast<std::streamsize>(m_line.size()));
}

void EventWriterCsv::finish()
{
    writeHeader();
    m_out.flush();
}

} // namespace scenariomatch
