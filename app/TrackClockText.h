#pragma once

#include "app/TrackFrame.h"

#include <cstdint>
#include <string>

// Wall clocks as text (ISO 8601, milliseconds, no zone) and as a count of milliseconds.
namespace scenariomatch
{

// The clock as "2026-05-04T10:00:48.160".
std::string clockText(const TrackClock& clock);

// Appends what clockText() gives, without an allocation of its own.
void appendClock(std::string& text, const TrackClock& clock);

// Milliseconds since 1970-01-01T00:00:00 of the same wall clock. Fields out of range carry over.
std::int64_t clockMilliseconds(const TrackClock& clock);

// The clock that clockMilliseconds() turns into this count.
TrackClock clockFromMilliseconds(std::int64_t milliseconds);

} // namespace scenariomatch
