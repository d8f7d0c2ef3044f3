#pragma once

#include <string_view>

namespace scenariomatch
{

// What the headers that generated sources include (iostream, map, string, vector) bring along
// from the C library, outside the namespace std. Names that are reserved in C++ are not among them.
//
// Whether the name is a macro that takes no arguments: it can name nothing at all.
bool isHeaderMacro(std::string_view name);

// Whether the name is taken at global scope: by such a macro, one with arguments, a function, a
// variable or a type. A member of a class may have it unless it is a macro without arguments.
bool isHeaderName(std::string_view name);

} // namespace scenariomatch
