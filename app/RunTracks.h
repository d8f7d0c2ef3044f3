#pragma once

#include "app/RecognitionSetup.h"
#include "app/RunOptions.h"
#include "app/TrackReader.h"

#include <memory>
#include <optional>

namespace scenariomatch
{

// Opens the tracks that the options name, in the way they ask for. Null, and why in fault, when
// that cannot be done.
std::unique_ptr<TrackReader>
openRunTracks(const RunOptions& options, TrackProblems& problems, std::optional<RunFault>& fault);

// Why the tracks could not be read to their end, or have nothing that can be used; nothing when
// they could.
std::optional<RunFault> faultOfReading(
    const RunOptions& options,
    const TrackReader& reader,
    const TrackProblems& problems,
    bool hasFrames);

} // namespace scenariomatch
