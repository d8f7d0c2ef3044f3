#pragma once

#include "app/RecognitionSetup.h"
#include "app/RunOptions.h"
#include "lint/Project.h"

#include <iosfwd>
#include <optional>

namespace scenariomatch
{

// Runs the models of a parameter file on a sample of tracks, in all its length, and warns of what
// it never showed. Talk of the tracks goes to talk. Why that could not be done, or nothing.
std::optional<RunFault> checkTracks(
    const RunOptions& options,
    const RunParameterSources& sources,
    const lint::Project& project,
    lint::Diagnostics& out,
    std::ostream& talk);

} // namespace scenariomatch
