#pragma once

#include "types/CClass.h"

#include <string>
#include <vector>

// The object types of one description file, in file order.
//
// The three writers make accessor sources of them: typed C++ classes, which applications compile
// with a layer of agents and values of their own. Equal types give equal files. Names are not
// checked: those that are no C++ identifiers give files that do not compile.
class CS_EXPORT CAllClasses
{
public:
    CAllClasses() = default;
    CAllClasses(const CAllClasses&) = default;
    CAllClasses(CAllClasses&&) = default;
    CAllClasses& operator=(const CAllClasses&) = default;
    CAllClasses& operator=(CAllClasses&&) = default;
    virtual ~CAllClasses();

    // Appends one record per class block of the file; nothing when the file cannot be opened.
    // Nothing is reported.
    void read(const std::string& fileName);
    // The same from the text of such a file.
    void readText(const std::string& text);

    // Writes "CSObject.h", and every type's class as CClass::write does. The folder must exist;
    // files that are there are written over. False when a file cannot be written.
    bool write(const std::string& directory) const;
    // Writes "CSAccessor.h" and "CSAccessor.cpp", functions that dispatch on the name of an
    // object's type, in the same way.
    bool writeAccessor(const std::string& directory) const;
    // Writes "CSObjectConversion.h" and "CSObjectConversion.cpp", a skeleton for the application's
    // code that turns its objects into agents, in the same way.
    bool writeConversionClass(const std::string& directory) const;

    std::vector<CClass> m_classes;
};
