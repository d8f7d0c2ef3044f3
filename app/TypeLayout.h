#pragma once

#include "lint/Source.h"

#include <cstddef>
#include <string>
#include <vector>

namespace scenariomatch
{

// What is wrong in a part of a file.
struct PlacedFault
{
    lint::Range range;
    std::string reason;
};

// Where the parts of one object type stand in its file, and what of the file the type lacks.
struct TypeLayout
{
    lint::Range name;
    // The name's where none is given.
    lint::Range parent;
    // Index for index those of CClass.
    std::vector<lint::Range> attributeTypes;
    std::vector<lint::Range> attributeNames;
    // Text that the reader of object types passes over, or takes for something else, without a
    // word:
    //
    //     class Car : Vehicle {    the parent
    //     INT Age;                 the first statement, which is to be constant true; or false;
    //     INT Speed }              an attribute without ";"
    //     } class Bus {            a type that begins where another one ends
    std::vector<PlacedFault> losses;
};

// The layout of the type whose block begins in a line, read as CAllClasses and CClass read it.
TypeLayout layoutOf(const lint::Source& source, std::size_t line);

} // namespace scenariomatch
