#pragma once

#include "app/TrackFrame.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Why a line is no record. Thrown while a file is read and caught where its lines are walked.
struct RecordFault
{
    std::string reason;
};

// Calls for each line that is not blank; stops at the first fault, which comes back as
// "FILE:LINE: REASON".
template <typename Visitor>
std::optional<std::string>
visitLines(const std::string& text, const std::string& fileName, Visitor visit)
{
    std::string_view rest = text;
    for (int number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (line.find_first_not_of(" \t") == std::string_view::npos) {
            continue;
        }
        try {
            visit(line);
        } catch (const RecordFault& fault) {
            return fmt::format("{}:{}: {}", fileName, number, fault.reason);
        }
    }
    return std::nullopt;
}

// All that follows throws RecordFault where what is asked for is not there.

// The line's object.
nlohmann::json parsedLine(std::string_view line);

const nlohmann::json& memberOf(const nlohmann::json& object, const std::string& key);
std::string textOf(const nlohmann::json& object, const std::string& key);
// A whole number that fits.
int numberOf(const nlohmann::json& object, const std::string& key);
// A list of objects.
const nlohmann::json& listOf(const nlohmann::json& object, const std::string& key);

// A time as the program writes it; the key stands in the fault.
TrackClock clockIn(const std::string& text, const std::string& key);

} // namespace scenariomatch
