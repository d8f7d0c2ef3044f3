#pragma once

#include "types/CSOperatorInterfaceAbstract.h"

#include <string>

namespace scenariomatch
{

// What a file of the operator folder gives: an operator, or the reason why it is skipped.
struct OperatorFile
{
    // Belongs to its plug-in, which stays loaded; null when the file is skipped.
    CSOperatorInterfaceAbstract* op = nullptr;
    std::string reason;
};

// Why none of a file's code may run: it has no plug-in metadata, does not hold together, or carries
// the tag of other builds than this one (types/OperatorAbi.h). Empty when it may run; a plug-in
// without a tag may. Reads the file only. A relative path is seen from the current folder.
CS_EXPORT std::string operatorRefusal(const std::string& file);

// Loads the operator that is the root object of a plug-in file, when nothing speaks against it.
// Which interface the metadata names does not matter, the root object decides. Prints nothing and
// throws nothing.
CS_EXPORT OperatorFile loadOperator(const std::string& file);

} // namespace scenariomatch
