#pragma once

#include "types/CClass.h"

#include <string>
#include <vector>

// The object types of one description file, in file order.
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

    std::vector<CClass> m_classes;

private:
    void readText(const std::string& text);
};
