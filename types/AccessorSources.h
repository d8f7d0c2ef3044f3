#pragma once

#include "types/CClass.h"
#include "types/SourceFile.h"

namespace scenariomatch
{

// The free functions that reach an attribute of an object of any type, "CSAccessor.h" and
// "CSAccessor.cpp": a chain over all types, the pseudo type "Component", then the agent itself.
//
//     if (io_agent->Type.compare("Mobile")==0)
//         return (static_cast<Mobile*>(io_agent))->getValue(i_attribute);
//     else if ...
//
// Their getAllObjectTypes lists every type, then all that derive from it, in file order; a circle
// of parents ends where it closes, and an undeclared parent lists nothing.
CS_EXPORT std::vector<SourceFile> accessorSources(const std::vector<CClass>& types);

} // namespace scenariomatch
