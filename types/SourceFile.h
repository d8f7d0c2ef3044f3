#pragma once

#include "types/Export.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// A generated source file: its name below the folder that it is written to, and its text.
struct SourceFile
{
    std::string name;
    std::string text;
};

// Creates or truncates the file "directory/name". False when it cannot be written whole; the reason
// is in errno.
CS_EXPORT bool writeSourceFile(const std::string& directory, const SourceFile& file);

// Writes all of them, those after one that fails too. False when any fails.
CS_EXPORT bool writeSourceFiles(const std::string& directory, const std::vector<SourceFile>& files);

} // namespace scenariomatch
