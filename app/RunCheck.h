#pragma once

#include "app/RunParameters.h"
#include "app/StorageFile.h"

#include <iosfwd>
#include <string>

namespace scenariomatch
{

// Writes the errors that the command "check" finds in the files of a run: the parameter file, of
// which `file` holds what is in force, and all that the parameters name. Whatever is found, the run
// goes on as the engine would. False, with the reason on talk, when they cannot be checked.
bool writeErrors(
    const std::string& parameterFile,
    const StorageFile& file,
    const RunParameters& parameters,
    std::ostream& talk);

} // namespace scenariomatch
