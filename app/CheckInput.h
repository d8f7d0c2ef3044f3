#pragma once

#include "app/RunParameters.h"
#include "app/StorageFile.h"
#include "lint/Diagnostic.h"
#include "lint/Project.h"

#include <deque>
#include <string>

namespace scenariomatch
{

// What a check reads, and the files whose places it names.
struct CheckInput
{
    // Parameter file and context; what is found points into them.
    std::deque<lint::Source> sources;
    lint::ProjectFiles files;
    // Whether a file that is named could not be read.
    bool isIncomplete = false;
};

// Takes over what a parameter file names, and reports unknown keys, an unknown alarm level and
// files that are missing. `context` replaces the context that is named, unless it is empty.
void readCheckParameters(
    const std::string& parameterFile,
    const StorageFile& file,
    const RunParameters& parameters,
    const std::string& context,
    CheckInput& input,
    lint::Diagnostics& out);

// Loads the operators of a folder.
void readCheckOperators(const std::string& folder, CheckInput& input);

// Reads the elements of a context; reports those that cannot be used.
void readCheckContext(const lint::NamedFile& file, CheckInput& input, lint::Diagnostics& out);

} // namespace scenariomatch
