#pragma once

#include "Samples.h"
#include "types/CSOperatorInterfaceAbstract.h"

#include <string>
#include <vector>

namespace scenariomatch
{

struct LoadedOperator
{
    // The family's folder and the name of the file, as the build names them.
    std::string family;
    std::string file;
    CSOperatorInterfaceAbstract* object = nullptr;
};

// The standard operators, loaded from the plug-ins of this build in the order in which the build
// lists them. An object is null where a plug-in cannot be loaded.
const std::vector<LoadedOperator>& loadedOperators();

// What the operator's evaluate gives. evaluatePlain must give the same; where it does not, the test
// fails.
Value evaluate(CSOperatorInterfaceAbstract& op, const Values& arguments);

// The one of that name; null when there is none.
CSOperatorInterfaceAbstract* findOperator(const std::string& name);

} // namespace scenariomatch
