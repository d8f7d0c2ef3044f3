#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace scenariomatch
{

enum class RecordUnit : std::uint8_t { Frame, Millisecond };

// A label, or an event read back from a file: what happened, to whom and when (docs/scoring.md).
struct EventRecord
{
    // Which recording it belongs to; empty where there is one only.
    std::string recording;
    // An event's model; for a label every model that may tell of it.
    std::vector<std::string> models;
    // Who takes part: objects by identifier, places by name.
    std::set<int> ids;
    std::set<std::string> places;
    // First and last frame, or millisecond; both belong to it.
    std::int64_t begin = 0;
    std::int64_t end = 0;
    // A label for several objects of which an event may name a part.
    bool isGroup = false;

    std::int64_t length() const { return end - begin + 1; }
};

// What stands in a file of labels or events, or what is wrong with it.
struct RecordReading
{
    std::vector<EventRecord> records;
    RecordUnit unit = RecordUnit::Millisecond;
    // "FILE:LINE: REASON".
    std::optional<std::string> problem;
};

// Sizes beyond which files are refused.
struct RecordLimits
{
    std::size_t records = 200'000;
    std::size_t objects = 1000;
};

// Reads labels: CSV with a header, or JSON Lines like those of events. The unit is that of the
// first label.
RecordReading
readLabels(const std::string& text, const std::string& fileName, const RecordLimits& limits = {});

// Reads events in JSON Lines as the program writes them; times are taken in the unit asked for.
RecordReading readEvents(
    const std::string& text,
    const std::string& fileName,
    RecordUnit unit,
    const RecordLimits& limits = {});

} // namespace scenariomatch
