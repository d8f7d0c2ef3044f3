#pragma once

#include "app/EventWriter.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// What stands in a file of events, or what is wrong with it.
struct EventReading
{
    // A file with more events is refused.
    static constexpr std::size_t kMostEvents = 200'000;

    std::vector<ReportedEvent> events;
    // "FILE:LINE: REASON".
    std::optional<std::string> problem;
};

// Reads events in JSON Lines as the command run writes them. Identifier, name, times and objects
// must be there; what else is missing is taken as empty.
EventReading readEventFile(const std::string& path);

// The same for text in memory; the file name serves the messages.
EventReading readEventText(
    const std::string& text,
    const std::string& fileName,
    std::size_t mostEvents = EventReading::kMostEvents);

} // namespace scenariomatch
