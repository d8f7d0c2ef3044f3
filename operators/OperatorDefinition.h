#pragma once

#include "operators/Values.h"
#include "types/CSOperatorDescription.h"

#include <string>

namespace scenariomatch
{

// Everything that makes one standard operator: its name, what it promises and the function that
// computes it. All are plain; the plug-in adds that to the promises.
//
// Each operator has a source of its own that gives its definition, and no more:
//
//     OperatorDefinition operatorDefinition()
//     {
//         return {"<", false, {"Whether the first is smaller.", {ordered, ordered}, 2, "BOOL",
//         true, {}}, isLess};
//     }
struct OperatorDefinition
{
    // The name by which constraints call it.
    std::string name;
    bool isTemporal = false;
    CSOperatorDescription description;
    CSPlainValue (*evaluate)(Arguments arguments) = nullptr;
};

// The definition of the operator that this plug-in is built for.
OperatorDefinition operatorDefinition();

} // namespace scenariomatch
