#include "app/RecordFields.h"

#include "app/FrameClock.h"

#include <cstdint>
#include <limits>

namespace scenariomatch
{

using nlohmann::json;

json parsedLine(std::string_view line)
{
    json object = json::parse(line, nullptr, false);
    if (!object.is_object()) {
        throw RecordFault{"the line is no JSON object"};
    }
    return object;
}

const json& memberOf(const json& object, const std::string& key)
{
    const auto member = object.find(key);
    if (member == object.end()) {
        throw RecordFault{fmt::format("there is no '{}'", key)};
    }
    return *member;
}

std::string textOf(const json& object, const std::string& key)
{
    const json& member = memberOf(object, key);
    if (!member.is_string()) {
        throw RecordFault{fmt::format("'{}' must be a text", key)};
    }
    return member.get<std::string>();
}

int numberOf(const json& object, const std::string& key)
{
    const json& member = memberOf(object, key);
    // Greater ones are unsigned, or no whole numbers.
    constexpr std::uint64_t kGreatest = std::numeric_limits<int>::max();
    const bool isWhole = member.is_number_unsigned()
                             ? member.get<std::uint64_t>() <= kGreatest
                             : member.is_number_integer() &&
                                   member.get<std::int64_t>() >= std::numeric_limits<int>::min();
    if (!isWhole) {
        throw RecordFault{fmt::format("'{}' must be a whole number", key)};
    }
    return member.get<int>();
}

const json& listOf(const json& object, const std::string& key)
{
    const json& list = memberOf(object, key);
    if (!list.is_array()) {
        throw RecordFault{fmt::format("'{}' must be a list", key)};
    }
    return list;
}

TrackClock clockIn(const std::string& text, const std::string& key)
{
    if (const std::optional<TrackClock> clock = parseClock(text)) {
        return *clock;
    }
    throw RecordFault{fmt::format("'{}' must be a time like 2026-05-04T10:00:00.000", key)};
}

} // namespace scenariomatch
