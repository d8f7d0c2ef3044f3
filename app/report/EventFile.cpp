#include "app/report/EventFile.h"

#include "app/RecordFields.h"
#include "types/TextFile.h"

#include <cerrno>
#include <fmt/format.h>
#include <limits>
#include <system_error>

namespace scenariomatch
{

namespace
{

using nlohmann::json;

std::string textOr(const json& object, const std::string& key, const std::string& other = "")
{
    return object.contains(key) ? textOf(object, key) : other;
}

int numberOr(const json& object, const std::string& key, int other)
{
    return object.contains(key) ? numberOf(object, key) : other;
}

// What is no number was written as null.
double realOr(const json& object, const std::string& key, double other)
{
    const auto member = object.find(key);
    if (member == object.end()) {
        return other;
    }
    if (!member->is_number() && !member->is_null()) {
        throw RecordFault{fmt::format("'{}' must be a number", key)};
    }
    return member->is_null() ? std::numeric_limits<double>::quiet_NaN() : member->get<double>();
}

EventTime eventTimeOf(const json& object, const std::string& key)
{
    return {clockIn(textOf(object, key), key), numberOr(object, key + "_frame", 0)};
}

const json& asObject(const json& entry, const std::string& key)
{
    if (!entry.is_object()) {
        throw RecordFault{fmt::format("'{}' must be a list of objects", key)};
    }
    return entry;
}

ReportedEvent eventOf(const json& line)
{
    ReportedEvent event;
    event.id = numberOf(line, "id");
    event.name = textOf(line, "name");
    event.kind = textOr(line, "kind");
    event.alarmLevel = textOr(line, "alarm_level");
    event.alarm = numberOr(line, "alarm", 0);
    event.text = textOr(line, "text");
    event.confidence = realOr(line, "confidence", 1.0);
    event.begin = eventTimeOf(line, "begin");
    event.end = eventTimeOf(line, "end");
    event.duration = realOr(line, "duration", 0.0);
    for (const json& entry : listOf(line, "objects")) {
        const json& object = asObject(entry, "objects");
        event.objects.push_back(
            {textOr(object, "variable"),
             textOr(object, "type"),
             numberOf(object, "id"),
             textOr(object, "name")});
    }
    if (line.contains("sub_events")) {
        for (const json& entry : listOf(line, "sub_events")) {
            const json& part = asObject(entry, "sub_events");
            event.subEvents.push_back(
                {textOr(part, "variable"), numberOf(part, "id"), textOr(part, "name")});
        }
    }
    return event;
}

} // namespace

EventReading
readEventText(const std::string& text, const std::string& fileName, std::size_t mostEvents)
{
    EventReading reading;
    reading.problem = visitLines(text, fileName, [&](std::string_view line) {
        if (reading.events.size() == mostEvents) {
            throw RecordFault{fmt::format("the file has more than {} events", mostEvents)};
        }
        reading.events.push_back(eventOf(parsedLine(line)));
    });
    return reading;
}

EventReading readEventFile(const std::string& path)
{
    errno = 0;
    const std::optional<std::string> text = readTextInput(path);
    if (text) {
        return readEventText(*text, path);
    }
    const std::string reason =
        errno == 0 ? "it is no file or larger than 64 MiB" : std::generic_category().message(errno);
    return {{}, path + ": " + reason};
}

} // namespace scenariomatch
