#pragma once

#include "lint/Diagnostic.h"
#include "lint/Source.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scenariomatch::lint
{

// An object type as its file declares it.
struct ObjectType
{
    Word name;
    // Without a text when none is given.
    Word parent;
    std::vector<std::pair<Word, Word>> attributes;
};

// What is known of the types of objects: what the file declares, and what the process gives to
// agents of the types that it makes.
class ObjectTypes
{
public:
    // Reads the file and reports what is wrong in it.
    void read(const Source& source, Diagnostics& out);

    // Whether a file that declares types was read. Without one nothing is said about types.
    bool isRead() const { return m_isRead; }

    bool isDeclared(std::string_view type) const;
    // Whether the first is the second or derives from it.
    bool derives(std::string_view type, std::string_view ancestor) const;
    // The type tag of an attribute, inherited ones included; nothing when there is none.
    std::optional<std::string> attribute(std::string_view type, std::string_view name) const;
    std::vector<std::string> attributesOf(std::string_view type) const;
    std::vector<std::string> names() const;

    const std::vector<ObjectType>& all() const { return m_types; }

private:
    void readBlock(const Source& source, std::size_t& line, Diagnostics& out);
    const ObjectType* find(std::string_view type) const;
    // The type and its ancestors.
    std::vector<std::string> lineOf(std::string_view type) const;

    std::vector<ObjectType> m_types;
    bool m_isRead = false;
};

// Attributes of sub-events.
inline constexpr std::string_view kComponentType = "Component";

} // namespace scenariomatch::lint
