#pragma once

#include "types/Export.h"

#include <string>
#include <vector>

// One object type as the object-type description file declares it.
//
//     class Vehicle:Mobile {
//     constant false;
//     STRING Kind;
//     }
class CS_EXPORT CClass
{
public:
    CClass() = default;
    CClass(const CClass&) = default;
    CClass(CClass&&) = default;
    CClass& operator=(const CClass&) = default;
    CClass& operator=(CClass&&) = default;
    virtual ~CClass();

    // Fills the record from the text of one class block (its lines joined without separator).
    void read(const std::string& text);
    // Empties all fields, so that the record can be used for the next block.
    void clear();
    // Writes the typed class of this type, "directory/NAME.h" and "directory/NAME.cpp", over what
    // is there. The folder must exist. False when a file cannot be written.
    bool write(const std::string& directory) const;

    std::string m_name;
    // "Agent" when the block names none.
    std::string m_parent;
    // In file order; m_attributeTypes holds the type tags, index for index.
    std::vector<std::string> m_attributeNames;
    std::vector<std::string> m_attributeTypes;
    bool m_constant = false;
    // Line of the file where the block begins, counted from 1; 0 for a record that no file has
    // filled.
    int m_line = 0;
};
