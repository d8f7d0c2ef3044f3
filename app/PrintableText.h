#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace scenariomatch
{

inline bool isControl(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7f;
}

// Text of files for people: a control character could end a line or steer a terminal, so that each
// becomes a question mark.
inline std::string printable(std::string_view text)
{
    std::string result(text);
    std::replace_if(result.begin(), result.end(), isControl, '?');
    return result;
}

} // namespace scenariomatch
