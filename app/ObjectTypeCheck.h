#pragma once

#include "types/CClass.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// What is doubtful about the object types of a file, one line each: "file:line: warning: ...".
//
//     class Guard:Person {     Person is declared nowhere
//     class Crowd:Crowd {      derives from itself
//
// A circle of parents is told of once, at the first of its types in the file. A file without any
// type gets one warning.
std::vector<std::string>
objectTypeWarnings(const std::string& fileName, const std::vector<CClass>& types);

} // namespace scenariomatch
