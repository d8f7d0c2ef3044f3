#pragma once

#include "types/CClass.h"
#include "types/SourceFile.h"

namespace scenariomatch
{

// The skeleton of the class that turns an application's objects into agents,
// "CSObjectConversion.h" and "CSObjectConversion.cpp". The application puts its own class in the
// place of YOUROBJECTTYPE, and its code in the place of the comments:
//
//     void CSObjectConversion::addVehicle(YOUROBJECTTYPE i_object,Vehicle* i_csobject)
//     {
//         /*
//         All your stuff to create the object
//         i_csobject->Kind = l_obj
//         */
//         m_allAgents["Vehicle"].push_back(i_csobject);
//     }
CS_EXPORT std::vector<SourceFile> conversionSources(const std::vector<CClass>& types);

} // namespace scenariomatch
