#pragma once

#include "types/Export.h"

#include <cstddef>
#include <optional>
#include <string>

namespace scenariomatch
{

// No text file that configures recognition is larger.
inline constexpr std::size_t kMaximumTextFileBytes = std::size_t{64} << 20U;

// The whole file; nothing when it cannot be opened, is a folder or is larger than
// kMaximumTextFileBytes.
CS_EXPORT std::optional<std::string> readTextFile(const std::string& fileName);

} // namespace scenariomatch
