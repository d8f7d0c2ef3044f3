#pragma once

#include "app/RunParameters.h"
#include "app/StorageFile.h"

#include <map>
#include <string>

namespace scenariomatch
{

// The models that a parameter file leads to, by name, as they are written in their files. A model
// whose parentheses do not balance, or in a file that `check` would not read, is left out.
std::map<std::string, std::string> readModelTexts(
    const std::string& parameterFile, const StorageFile& file, const RunParameters& parameters);

} // namespace scenariomatch
