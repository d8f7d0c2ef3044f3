#pragma once

#include "app/SceneFault.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <yaml-cpp/yaml.h>

namespace scenariomatch
{

// A key of a mapping.
struct SceneKey
{
    std::string_view name;
    bool isRequired = false;
};

// The least and the greatest value allowed, in the unit of the value.
struct SceneRange
{
    std::int64_t least = 0;
    std::int64_t greatest = 0;
};

// A mapping of a scene file whose keys are all known, each given once, none that is required left
// out.
//
// The reading functions leave the variable as it is when the key is absent, so that it keeps its
// default. What does not fit throws a SceneFault with the place.
class SceneMap
{
public:
    // What it is, with its article, stands in the messages: "a way point". The keys are literals.
    SceneMap(const YAML::Node& node, std::string what, std::vector<SceneKey> keys);

    bool has(std::string_view key) const;
    // The value of a key that is there.
    YAML::Node at(std::string_view key) const;

    // Decimals become thousandths.
    void readDecimal(std::string_view key, std::int64_t& value, SceneRange range) const;
    void readWhole(std::string_view key, std::int64_t& value, SceneRange range) const;
    void readId(std::string_view key, int& id) const;
    void readText(std::string_view key, std::string& text) const;
    // A list of two decimals, the first not greater than the second.
    void readSpan(std::string_view key, std::array<std::int64_t, 2>& span, SceneRange range) const;

private:
    const YAML::Node* find(std::string_view key) const;
    void addEntry(const YAML::Node& key, const YAML::Node& value);

    std::string m_what;
    std::vector<SceneKey> m_keys;
    std::vector<std::pair<std::string, YAML::Node>> m_entries;
};

// The elements of a list, of which there are so many; the name of the key stands in messages.
std::vector<YAML::Node>
sceneList(const YAML::Node& node, std::string_view key, std::size_t least, std::size_t greatest);

// A decimal number in thousandths.
std::int64_t sceneDecimal(const YAML::Node& node, std::string_view key, SceneRange range);

std::int64_t sceneWhole(const YAML::Node& node, std::string_view key, SceneRange range);

// A text that is neither empty nor too long to be the name of a type.
std::string sceneText(const YAML::Node& node, std::string_view key);

} // namespace scenariomatch
