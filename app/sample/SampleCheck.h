#pragma once

#include "app/sample/SampleObserver.h"
#include "lint/Diagnostic.h"
#include "lint/Project.h"

namespace scenariomatch
{

// Warns of what a sample of tracks never showed: zones that nobody entered, types of objects that
// there were none of, constraints that were never true, never false or never evaluated, and
// comparisons that hold for no number that was seen.
//
// What only follows from another finding is left out: constraints behind one that was never true,
// composites of models that were not recognised.
void checkSample(
    const lint::Project& project, const SampleObserver& sample, lint::Diagnostics& out);

} // namespace scenariomatch
