#pragma once

#include <optional>
#include <string>
#include <yaml-cpp/yaml.h>

namespace scenariomatch
{

// The first document of a YAML text, null for a text without one, and where a second one begins.
struct YamlDocument
{
    YAML::Node root;
    std::optional<YAML::Mark> next;
};

// Reads a text of which one document is expected; never more than the beginning of the second.
// (The library's own way of loading all documents never ends on some texts, such as one that begins
// with a comma.) Throws YAML::Exception where the text is no YAML.
YamlDocument readYamlDocument(const std::string& text);

} // namespace scenariomatch
