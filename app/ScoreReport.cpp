#include "app/ScoreReport.h"

#include "app/FrameClock.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace scenariomatch
{

namespace
{

using Json = nlohmann::ordered_json;

std::string figure(const std::optional<double>& value, const char* unit = "")
{
    return value ? fmt::format("{:.2f}{}", *value, unit) : "-";
}

std::string namesOf(const ScoreRow& row)
{
    return fmt::format("{}", fmt::join(row.models, "|"));
}

const char* verdictName(ScoreVerdict verdict)
{
    switch (verdict) {
    case ScoreVerdict::Hit:
        return "hit";
    case ScoreVerdict::Miss:
        return "miss";
    case ScoreVerdict::FalseAlarm:
        break;
    }
    return "false alarm";
}

std::string timeText(std::int64_t time, RecordUnit unit)
{
    return unit == RecordUnit::Frame ? fmt::format("frame {}", time)
                                     : printClock(millisecondsToClock(time));
}

std::string spanText(const EventRecord& record, RecordUnit unit)
{
    return timeText(record.begin, unit) + " to " + timeText(record.end, unit);
}

std::string whoTakesPart(const EventRecord& record)
{
    std::string who;
    for (const int id : record.ids) {
        who += fmt::format(" {}", id);
    }
    for (const std::string& place : record.places) {
        who += " " + place;
    }
    return who;
}

std::string remarkText(const ScoreRemark& remark, RecordUnit unit)
{
    const EventRecord& record = remark.label != nullptr ? *remark.label : *remark.event;
    std::string text = fmt::format("{:11}  ", verdictName(remark.verdict));
    text += record.recording.empty() ? "" : record.recording + " ";
    text += fmt::format(
        "{}{}, {}", fmt::join(record.models, "|"), whoTakesPart(record), spanText(record, unit));
    if (remark.verdict == ScoreVerdict::Hit) {
        text += ", found " + spanText(*remark.event, unit);
    }
    return text;
}

Json jsonOf(const std::optional<double>& value)
{
    return value ? Json(*value) : Json(nullptr);
}

Json timeJson(std::int64_t time, RecordUnit unit)
{
    return unit == RecordUnit::Frame ? Json(time) : Json(printClock(millisecondsToClock(time)));
}

Json recordJson(const EventRecord& record, RecordUnit unit)
{
    const std::string suffix = unit == RecordUnit::Frame ? "_frame" : "";
    Json object;
    object["models"] = record.models;
    object["ids"] = record.ids;
    object["places"] = record.places;
    object["begin" + suffix] = timeJson(record.begin, unit);
    object["end" + suffix] = timeJson(record.end, unit);
    return object;
}

Json remarkJson(const ScoreRemark& remark, RecordUnit unit)
{
    Json object;
    object["verdict"] = verdictName(remark.verdict);
    object["recording"] = (remark.label != nullptr ? remark.label : remark.event)->recording;
    if (remark.label != nullptr) {
        object["label"] = recordJson(*remark.label, unit);
    }
    if (remark.event != nullptr) {
        object["event"] = recordJson(*remark.event, unit);
    }
    return object;
}

Json rowJson(const ScoreRow& row, RecordUnit unit, bool isList)
{
    Json object;
    object["models"] = row.models;
    object["labels"] = row.labels;
    object["hits"] = row.hits;
    object["misses"] = row.misses();
    object["false_alarms"] = row.falseAlarms;
    object["of_group"] = row.ofGroup;
    object["precision"] = jsonOf(row.precision());
    object["recall"] = jsonOf(row.recall());
    object["f1"] = jsonOf(row.f1());
    object["median_delay"] = jsonOf(row.medianDelay());
    if (isList) {
        object["list"] = Json::array();
        for (const ScoreRemark& remark : row.remarks) {
            object["list"].push_back(remarkJson(remark, unit));
        }
    }
    return object;
}

} // namespace

void printScore(const Score& score, RecordUnit unit, bool isList, std::ostream& out)
{
    std::size_t width = std::string_view("model").size();
    for (const ScoreRow& row : score.rows) {
        width = std::max(width, namesOf(row).size());
    }
    constexpr const char* kRow =
        "{:{}}  {:>6}  {:>4}  {:>6}  {:>12}  {:>9}  {:>6}  {:>5}  {:>12}\n";
    out << fmt::format(
        kRow,
        "model",
        width,
        "labels",
        "hits",
        "misses",
        "false alarms",
        "precision",
        "recall",
        "F1",
        "median delay");
    for (const ScoreRow& row : score.rows) {
        out << fmt::format(
            kRow,
            namesOf(row),
            width,
            row.labels,
            row.hits,
            row.misses(),
            row.falseAlarms,
            figure(row.precision()),
            figure(row.recall()),
            figure(row.f1()),
            figure(row.medianDelay(), " s"));
    }
    for (const ScoreRow& row : score.rows) {
        for (const ScoreRemark& remark : row.remarks) {
            if (isList) {
                out << remarkText(remark, unit) << '\n';
            }
        }
    }
}

void printScoreJson(const Score& score, RecordUnit unit, bool isList, std::ostream& out)
{
    Json root;
    root["rows"] = Json::array();
    for (const ScoreRow& row : score.rows) {
        root["rows"].push_back(rowJson(row, unit, isList));
    }
    root["unscored_events"] = score.unscored;
    out << root.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace scenariomatch
