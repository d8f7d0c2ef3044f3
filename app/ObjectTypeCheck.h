#pragma once

#include "types/CClass.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// What is wrong with the type that is declared in a line.
struct ObjectTypeFault
{
    int line;
    std::string reason;
};

// What is doubtful about the parents of object types.
//
//     class Guard:Person {     Person is declared nowhere
//     class Crowd:Crowd {      derives from itself
//
// A circle of parents is told of once, at the first of its types in the file.
std::vector<ObjectTypeFault> objectTypeFaults(const std::vector<CClass>& types);

} // namespace scenariomatch
