#include "app/EventWriterText.h"

#include "app/FrameClock.h"
#include "app/PrintableText.h"

#include <algorithm>
#include <fmt/format.h>
#include <ostream>
#include <string_view>

namespace scenariomatch
{

namespace
{

// "Entrance" where an object has a name, "PERSON 17" where it has none.
std::string whoTakesPart(const std::vector<EventObject>& objects)
{
    std::string who;
    for (const EventObject& object : objects) {
        who += who.empty() ? "" : ", ";
        who += object.name.empty() ? fmt::format("{} {}", object.type, object.id) : object.name;
    }
    return who.empty() ? "-" : who;
}

std::string readableTime(const TrackClock& clock)
{
    std::string text = printClock(clock);
    std::replace(text.begin(), text.end(), 'T', ' ');
    return text;
}

std::string alarmOf(const ReportedEvent& event)
{
    return event.text.empty() ? event.alarmLevel
                              : fmt::format("{}: {}", event.alarmLevel, event.text);
}

// Characters of UTF-8 text: all bytes but those that continue one.
std::size_t displayWidth(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
        return (static_cast<unsigned char>(character) & 0xC0U) != 0x80U;
    }));
}

} // namespace

EventWriterText::EventWriterText(std::ostream& out)
    : m_out(out)
{
}

void EventWriterText::write(const ReportedEvent& event)
{
    Row row{
        whoTakesPart(event.objects),
        event.name,
        readableTime(event.begin.clock),
        readableTime(event.end.clock),
        fmt::format("{:.2f} s", event.duration),
        fmt::format("{:.2f}", event.confidence),
        alarmOf(event)};
    std::transform(row.begin(), row.end(), row.begin(), printable);
    m_rows.push_back(std::move(row));
    if (m_rows.size() == kRowsHeld) {
        writeRows();
    }
}

void EventWriterText::finish()
{
    writeRows();
    if (!m_hasWritten) {
        m_out << "no events\n";
    }
    m_out.flush();
}

void EventWriterText::writeRows()
{
    if (m_rows.empty()) {
        return;
    }
    const Row header{"who", "what", "from", "to", "duration", "confidence", "alarm"};
    std::array<std::size_t, kColumns> widths{};
    for (std::size_t column = 0; column < kColumns; ++column) {
        widths.at(column) = header.at(column).size();
        for (const Row& row : m_rows) {
            widths.at(column) = std::max(widths.at(column), displayWidth(row.at(column)));
        }
    }
    writeRow(header, widths);
    for (const Row& row : m_rows) {
        writeRow(row, widths);
    }
    m_rows.clear();
    m_hasWritten = true;
}

void EventWriterText::writeRow(const Row& row, const std::array<std::size_t, kColumns>& widths)
{
    std::string line;
    for (std::size_t column = 0; column < kColumns; ++column) {
        const bool isRightAligned = column == 4 || column == 5;
        const bool isLast = column + 1 == kColumns;
        const std::string padding(widths.at(column) - displayWidth(row.at(column)), ' ');
        line += isRightAligned ? padding : "";
        line += row.at(column);
        line += isRightAligned || isLast ? "" : padding;
        line += isLast ? "\n" : "  ";
    }
    m_out << line;
}

} // namespace scenariomatch
