#pragma once

#include "types/Export.h"

#include <optional>
#include <string>

// Numbers in text, always in the C locale: a host may have set another one, in which a decimal
// point ends a number.
namespace scenariomatch
{

// The C library's strtod: the longest numeric prefix, 0 when there is none.
CS_EXPORT double stringToDouble(const std::string& text);

// A string stream's reading of a double, when the whole text was used up; nothing otherwise.
CS_EXPORT std::optional<double> wholeNumber(const std::string& text);

// The C library's strtol, base 10: the longest numeric prefix, 0 when there is none, clamped to
// int.
CS_EXPORT int stringToInt(const std::string& text);

} // namespace scenariomatch
