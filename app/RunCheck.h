#pragma once

#include "app/RunParameters.h"
#include "app/StorageFile.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// Writes the errors that the command "check" finds in the files of a run, and nothing for those of
// parameter file and context, of which the run tells itself. Whatever is found, the run goes on as
// the engine would.
void writeModelErrors(
    const std::string& parameterFile,
    const StorageFile& file,
    const RunParameters& parameters,
    std::ostream& talk);

} // namespace scenariomatch
