#pragma once

#include <string>
#include <string_view>

namespace scenariomatch
{

// Appends the text as a JSON string with its quotes. Bytes that are no UTF-8 become U+FFFD.
void appendJsonString(std::string& line, std::string_view text);

} // namespace scenariomatch
