#pragma once

#include "app/TypeLayout.h"
#include "lint/Source.h"
#include "types/CClass.h"

#include <vector>

namespace scenariomatch
{

// Why the accessor sources of a file's object types could not be written, would not compile or
// would lack what the file declares, in the order of the file. The types are those that CAllClasses
// reads from the source. Attributes do not matter to sources that do not speak of them.
//
//     class Big Car {          its name ends at the blank
//     class ../Person {        would leave the folder
//     class CSAgent {          the generated code uses the name itself
//     class Guard:Person {     Person is declared nowhere
//     INT Age                  without ";"
//
// What is not looked for: names that an application's own headers define.
std::vector<PlacedFault> accessorFaults(
    const lint::Source& source, const std::vector<CClass>& types, bool areAttributesWritten);

} // namespace scenariomatch
