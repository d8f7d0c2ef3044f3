#pragma once

#include "types/CClass.h"
#include "types/SourceFile.h"

#include <string_view>

namespace scenariomatch
{

// The class of the values that carry the tag, "CSDouble" for "DOUBLE"; empty for an unknown tag.
CS_EXPORT std::string_view valueClassOf(std::string_view tag);
CS_EXPORT bool isValueClass(std::string_view name);

// The declaration and the definitions of the typed class of one object type, "N.h" and "N.cpp". An
// attribute with an unknown tag holds any value.
//
//     class Vehicle : public Mobile
//     {
//     public:
//     Vehicle();
//         virtual ~Vehicle();
//         CSBasicType* getValue(std::string i_attribute);
//         ...
//     CSString* Kind;
//         std::map<int,CSString*> h_Kind;
//     };
CS_EXPORT std::vector<SourceFile> typeSources(const CClass& type);

// "CSObject.h", which includes the header of every type.
CS_EXPORT SourceFile objectHeader(const std::vector<CClass>& types);

// "#ifndef X_H", "#define X_H" and an empty line; the header ends with "#endif".
std::string guardOf(const std::string& name);

} // namespace scenariomatch
