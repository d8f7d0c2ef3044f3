#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace scenariomatch
{

// What a parameter file may hold at most.
struct ParameterLimits
{
    std::size_t bytes = std::size_t{1024} * 1024;
    // Lists, maps and elements within each other.
    std::size_t depth = 64;
    // Of one tag.
    std::ptrdiff_t attributes = 256;
};

// The text of an ordinary file; nothing, and why in fault, when it cannot be read or is too large.
// Where there is no file, no fault is told.
std::optional<std::string>
readParameterText(const std::string& path, std::string& fault, const ParameterLimits& limits = {});

// Why the library that parses parameter files must not see a text; nothing when it may.
//
// The library trusts what it is given: texts that are nested deeply, cut or damaged end the process
// or keep it for ever. What passes here is not necessarily a parameter file, but the library will
// say so.
std::optional<std::string>
findParameterFault(std::string_view text, const ParameterLimits& limits = {});

} // namespace scenariomatch
