#pragma once

#include "app/TrackFrame.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scenariomatch
{

// Milliseconds from 1970-01-01T00:00:00 to the clock, both on the same wall clock; negative before
// that day.
std::int64_t clockToMilliseconds(const TrackClock& clock);

// The clock that many milliseconds after 1970-01-01T00:00:00.
TrackClock millisecondsToClock(std::int64_t milliseconds);

// Reads "YYYY-MM-DDThh:mm:ss", a fraction of a second (cut to milliseconds) and a zone ("Z",
// "+hh:mm", "+hhmm",
// "+hh") if they follow; the zone is checked and not applied. A blank may stand for the "T". Years
// are 1970 to 9999. Nothing when the text is anything else.
std::optional<TrackClock> parseClock(std::string_view text);

// "YYYY-MM-DDThh:mm:ss.mmm".
std::string printClock(const TrackClock& clock);

} // namespace scenariomatch
