#pragma once

#include "types/Export.h"

#include <cstddef>
#include <optional>
#include <string>

namespace scenariomatch
{

// No text file that configures recognition is larger.
inline constexpr std::size_t kMaximumTextFileBytes = std::size_t{64} << 20U;

// The whole file; nothing when it cannot be opened, is no ordinary file (or a link to one) or is
// larger than kMaximumTextFileBytes. So nobody waits for a pipe into which nobody writes, and what
// is read again is still there.
CS_EXPORT std::optional<std::string> readTextFile(const std::string& fileName);

// What keeps readTextFile from the file, as it stands in messages; empty when nothing does.
CS_EXPORT std::string textFileFault(const std::string& fileName);

// As readTextFile, and also from pipes and devices: for what a user names and is read once.
CS_EXPORT std::optional<std::string> readTextInput(const std::string& fileName);

} // namespace scenariomatch
