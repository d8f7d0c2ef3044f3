#pragma once

#include "types/SourceFile.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace scenariomatch
{

// What happens to a file, or a link, that has the name of a new one.
enum class OldFiles : std::uint8_t { Keep, Replace };

// A file as it is named below its folder.
std::string pathIn(const std::string& folder, const SourceFile& file);

// Writes files into a folder, which is made where it is missing, and their names to out, one a
// line. All of them or none: when one cannot be written, those before it are removed again and what
// was there stays. A link with the name of a new file is replaced itself, nothing is written
// through it. Says what went wrong, "cannot make lobby: Permission denied"; empty when all is well.
std::string writeNewFiles(
    const std::string& folder,
    const std::vector<SourceFile>& files,
    OldFiles oldFiles,
    std::ostream& out);

} // namespace scenariomatch
