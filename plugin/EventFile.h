#pragma once

#include <string>
#include <string_view>

namespace scenariomatch
{

// Adds the text to the end of a file, which is made where it is missing: all of it, or nothing.
// What has arrived of a text that does not fit is taken back, so that the next one does not run
// into it when there is room again. Nobody is told.
void appendToFile(const std::string& path, std::string_view text);

} // namespace scenariomatch
