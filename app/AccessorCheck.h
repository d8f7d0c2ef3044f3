#pragma once

#include "types/CClass.h"

#include <string>
#include <vector>

namespace scenariomatch
{

// Why the accessor sources of a file's object types could not be written or would not compile, one
// line each: "file:line: ...", in the order of the lines. The line is the one where the type's
// block begins. Attributes do not matter to sources that do not speak of them.
//
//     class Big Car {          no C++ identifier as far as attributes are concerned
//     class ../Person {        would leave the folder
//     class CSAgent {          the generated code uses the name itself
//     class Guard:Person {     Person is declared nowhere
//
// What is not looked for: names that an application's own headers define.
std::vector<std::string> accessorProblems(
    const std::string& fileName, const std::vector<CClass>& types, bool areAttributesWritten);

} // namespace scenariomatch
