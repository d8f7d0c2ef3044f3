#include "app/JsonString.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace scenariomatch
{

void appendJsonString(std::string& line, std::string_view text)
{
    const auto needsNothing = [](char character) {
        return character >= ' ' && character < '\x7f' && character != '"' && character != '\\';
    };
    if (std::all_of(text.begin(), text.end(), needsNothing)) {
        line += '"';
        line += text;
        line += '"';
        return;
    }
    using Json = nlohmann::ordered_json;
    line += Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace scenariomatch
