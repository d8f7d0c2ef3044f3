#include "app/EventRecord.h"

#include "app/FrameClock.h"
#include "app/RecordFields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fmt/format.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <string_view>
#include <system_error>
#include <utility>

namespace scenariomatch
{

namespace
{

using nlohmann::json;

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

std::optional<int> wholeNumber(std::string_view text)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && rest == end ? std::optional<int>(number) : std::nullopt;
}

void setModels(EventRecord& record, const std::string& text)
{
    record.models = split(text, '|');
    const auto isEmpty = [](const std::string& model) { return model.empty(); };
    if (std::any_of(record.models.begin(), record.models.end(), isEmpty)) {
        throw RecordFault{"the name of a model is empty"};
    }
    std::sort(record.models.begin(), record.models.end());
    const auto last = std::unique(record.models.begin(), record.models.end());
    record.models.erase(last, record.models.end());
}

std::int64_t timeOf(const std::string& text, const std::string& key, RecordUnit unit)
{
    if (unit == RecordUnit::Frame) {
        if (const std::optional<int> frame = wholeNumber(text)) {
            return *frame;
        }
        throw RecordFault{fmt::format("'{}' must be the number of a frame", key)};
    }
    return clockToMilliseconds(clockIn(text, key));
}

void checkOrder(const EventRecord& record)
{
    if (record.end < record.begin) {
        throw RecordFault{"it ends before it begins"};
    }
}

void addRecord(RecordReading& reading, EventRecord record, const RecordLimits& limits)
{
    checkOrder(record);
    if (record.ids.size() + record.places.size() > limits.objects) {
        throw RecordFault{fmt::format("more than {} objects take part", limits.objects)};
    }
    if (reading.records.size() == limits.records) {
        throw RecordFault{fmt::format("the file has more than {} records", limits.records)};
    }
    reading.records.push_back(std::move(record));
}

// Labels in CSV.

// The fields of a row; one in quotation marks may hold commas, and quotation marks twice.
std::vector<std::string> fieldsOf(std::string_view line)
{
    std::vector<std::string> fields(1);
    bool isQuoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"' && isQuoted && line.substr(i + 1, 1) == "\"") {
            fields.back() += line[++i];
        } else if (line[i] == '"') {
            isQuoted = !isQuoted;
        } else if (line[i] == ',' && !isQuoted) {
            fields.emplace_back();
        } else {
            fields.back() += line[i];
        }
    }
    if (isQuoted) {
        throw RecordFault{"a quotation mark is not closed"};
    }
    return fields;
}

// Columns by name, once the header is read.
class LabelTable
{
public:
    // Judges the header.
    explicit LabelTable(std::vector<std::string> columns)
        : m_columns(std::move(columns))
    {
        constexpr std::array<std::string_view, 8> kKnown{
            "recording", "model", "objects", "begin", "end", "begin_frame", "end_frame", "group"};
        for (auto column = m_columns.begin(); column != m_columns.end(); ++column) {
            if (std::find(kKnown.begin(), kKnown.end(), *column) == kKnown.end()) {
                throw RecordFault{fmt::format(
                    "there is no column '{}'; there are {}", *column, fmt::join(kKnown, ", "))};
            }
            if (std::find(m_columns.begin(), column, *column) != column) {
                throw RecordFault{fmt::format("the column '{}' stands here twice", *column)};
            }
        }
        const bool hasFrames = has("begin_frame") && has("end_frame");
        const bool hasTimes = has("begin") && has("end");
        if (!has("model") || hasFrames == hasTimes) {
            throw RecordFault{
                "the columns must be 'model' and either 'begin' and 'end' or 'begin_frame' and "
                "'end_frame'"};
        }
        m_unit = hasFrames ? RecordUnit::Frame : RecordUnit::Millisecond;
    }

    RecordUnit unit() const { return m_unit; }

    EventRecord labelOf(std::vector<std::string> fields)
    {
        if (fields.size() != m_columns.size()) {
            throw RecordFault{fmt::format(
                "the row has {} fields, not {} as the header", fields.size(), m_columns.size())};
        }
        m_fields = std::move(fields);
        const bool isFrame = m_unit == RecordUnit::Frame;
        const std::string begin = isFrame ? "begin_frame" : "begin";
        const std::string end = isFrame ? "end_frame" : "end";
        EventRecord label;
        label.recording = text("recording");
        setModels(label, text("model"));
        setObjects(label, text("objects"));
        label.begin = timeOf(text(begin), begin, m_unit);
        label.end = timeOf(text(end), end, m_unit);
        const std::string group = text("group");
        if (!group.empty() && group != "yes" && group != "no") {
            throw RecordFault{"'group' must be yes or no"};
        }
        label.isGroup = group == "yes";
        return label;
    }

private:
    bool has(std::string_view column) const
    {
        return std::find(m_columns.begin(), m_columns.end(), column) != m_columns.end();
    }

    // Empty where there is no such column.
    std::string text(std::string_view column) const
    {
        const auto found = std::find(m_columns.begin(), m_columns.end(), column);
        return found == m_columns.end()
                   ? std::string()
                   : m_fields[static_cast<std::size_t>(found - m_columns.begin())];
    }

    static void setObjects(EventRecord& label, const std::string& text)
    {
        if (text.empty()) {
            return;
        }
        for (const std::string& object : split(text, ';')) {
            if (object.empty()) {
                throw RecordFault{"the name of an object is empty"};
            }
            if (const std::optional<int> id = wholeNumber(object)) {
                label.ids.insert(*id);
            } else {
                label.places.insert(object);
            }
        }
    }

    std::vector<std::string> m_columns;
    std::vector<std::string> m_fields;
    RecordUnit m_unit = RecordUnit::Millisecond;
};

RecordReading
readCsv(const std::string& text, const std::string& fileName, const RecordLimits& limits)
{
    RecordReading reading;
    std::optional<LabelTable> table;
    reading.problem = visitLines(text, fileName, [&](std::string_view line) {
        std::vector<std::string> fields = fieldsOf(line);
        if (table) {
            addRecord(reading, table->labelOf(std::move(fields)), limits);
            return;
        }
        table.emplace(std::move(fields));
        reading.unit = table->unit();
    });
    if (!reading.problem && !table) {
        reading.problem = fileName + ":1: there are no labels, not even a header";
    }
    return reading;
}

// Events, and labels in the same form.

std::int64_t timeOf(const json& object, const std::string& key, RecordUnit unit)
{
    return unit == RecordUnit::Frame ? numberOf(object, key + "_frame")
                                     : timeOf(textOf(object, key), key, unit);
}

// What has a name is a place.
void setObjects(EventRecord& record, const json& objects)
{
    for (const json& object : objects) {
        const std::string name = object.contains("name") ? textOf(object, "name") : "";
        if (name.empty()) {
            record.ids.insert(numberOf(object, "id"));
        } else {
            record.places.insert(name);
        }
    }
}

EventRecord recordOf(const json& object, RecordUnit unit)
{
    EventRecord record;
    record.models = {textOf(object, "name")};
    setObjects(record, listOf(object, "objects"));
    record.begin = timeOf(object, "begin", unit);
    record.end = timeOf(object, "end", unit);
    return record;
}

EventRecord labelOf(const json& object, RecordUnit unit)
{
    EventRecord label = recordOf(object, unit);
    setModels(label, label.models.front());
    label.recording = object.contains("recording") ? textOf(object, "recording") : "";
    const json group = object.value("group", json(false));
    if (!group.is_boolean()) {
        throw RecordFault{"'group' must be true or false"};
    }
    label.isGroup = group.get<bool>();
    return label;
}

} // namespace

RecordReading
readLabels(const std::string& text, const std::string& fileName, const RecordLimits& limits)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos || text[first] != '{') {
        return readCsv(text, fileName, limits);
    }
    RecordReading reading;
    bool isFirst = true;
    reading.problem = visitLines(text, fileName, [&](std::string_view line) {
        const json object = parsedLine(line);
        if (std::exchange(isFirst, false) && !object.contains("begin")) {
            reading.unit = RecordUnit::Frame;
        }
        addRecord(reading, labelOf(object, reading.unit), limits);
    });
    return reading;
}

RecordReading readEvents(
    const std::string& text,
    const std::string& fileName,
    RecordUnit unit,
    const RecordLimits& limits)
{
    RecordReading reading;
    reading.unit = unit;
    reading.problem = visitLines(text, fileName, [&](std::string_view line) {
        addRecord(reading, recordOf(parsedLine(line), unit), limits);
    });
    return reading;
}

} // namespace scenariomatch
