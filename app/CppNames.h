#pragma once

#include <string>
#include <string_view>

namespace scenariomatch
{

// Why a name cannot stand in C++ sources, whatever it names: no identifier of ASCII letters, a word
// of the language, or kept for compilers. "is a C++ keyword: expected another name", for instance;
// empty when it can.
std::string cppNameFault(std::string_view name);

} // namespace scenariomatch
