#include "app/SceneMap.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <limits>
#include <optional>
#include <system_error>

namespace scenariomatch
{

namespace
{

// A value as it is quoted in a message.
std::string quoted(const YAML::Node& node)
{
    constexpr std::size_t kLongest = 40;
    if (!node.IsScalar()) {
        return "a list or mapping";
    }
    std::string text = node.Scalar().substr(0, kLongest);
    std::replace_if(
        text.begin(),
        text.end(),
        [](char character) { return static_cast<unsigned char>(character) < ' '; },
        ' ');
    return fmt::format("'{}{}'", text, node.Scalar().size() > kLongest ? "..." : "");
}

std::string decimalText(std::int64_t thousandths)
{
    std::string text = fmt::format(
        "{}{}.{:03}",
        thousandths < 0 ? "-" : "",
        std::abs(thousandths / 1000),
        std::abs(thousandths % 1000));
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::optional<std::int64_t> wholeNumberOf(std::string_view text)
{
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || rest != end) {
        return std::nullopt;
    }
    return number;
}

// An optional minus sign, digits, and up to three decimals behind a point.
std::optional<std::int64_t> thousandthsOf(std::string_view text)
{
    constexpr std::size_t kDecimals = 3;
    constexpr std::size_t kLongest = 15;
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string digits(text.substr(0, point));
    const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    const bool hasDecimals = point < text.size();
    if (digits.empty() || digits == "-" || digits.size() > kLongest ||
        decimals.size() > kDecimals || hasDecimals == decimals.empty() ||
        decimals.find('-') != std::string_view::npos) {
        return std::nullopt;
    }
    digits += decimals;
    digits.append(kDecimals - decimals.size(), '0');
    return wholeNumberOf(digits);
}

} // namespace

SceneMap::SceneMap(const YAML::Node& node, std::string what, std::vector<SceneKey> keys)
    : m_what(std::move(what))
    , m_keys(std::move(keys))
{
    if (!node.IsMap()) {
        throw SceneFault{node.Mark(), fmt::format("{} is a mapping of keys to values", m_what)};
    }
    for (const auto& entry : node) {
        addEntry(entry.first, entry.second);
    }
    for (const SceneKey& key : m_keys) {
        if (key.isRequired && !has(key.name)) {
            throw SceneFault{node.Mark(), fmt::format("{} needs the key '{}'", m_what, key.name)};
        }
    }
}

void SceneMap::addEntry(const YAML::Node& key, const YAML::Node& value)
{
    const auto isNamedSo = [&key](const SceneKey& known) {
        return key.IsScalar() && key.Scalar() == known.name;
    };
    if (std::none_of(m_keys.begin(), m_keys.end(), isNamedSo)) {
        std::string known;
        for (const SceneKey& each : m_keys) {
            known += known.empty() ? "" : ", ";
            known += each.name;
        }
        throw SceneFault{
            key.Mark(), fmt::format("{} has no key {}; it has {}", m_what, quoted(key), known)};
    }
    if (has(key.Scalar())) {
        throw SceneFault{key.Mark(), fmt::format("the key {} stands here twice", quoted(key))};
    }
    m_entries.emplace_back(key.Scalar(), value);
}

const YAML::Node* SceneMap::find(std::string_view key) const
{
    for (const auto& [name, value] : m_entries) {
        if (name == key) {
            return &value;
        }
    }
    return nullptr;
}

bool SceneMap::has(std::string_view key) const
{
    return find(key) != nullptr;
}

YAML::Node SceneMap::at(std::string_view key) const
{
    const YAML::Node* const value = find(key);
    return value != nullptr ? *value : YAML::Node();
}

void SceneMap::readDecimal(std::string_view key, std::int64_t& value, SceneRange range) const
{
    if (const YAML::Node* const node = find(key)) {
        value = sceneDecimal(*node, key, range);
    }
}

void SceneMap::readWhole(std::string_view key, std::int64_t& value, SceneRange range) const
{
    if (const YAML::Node* const node = find(key)) {
        value = sceneWhole(*node, key, range);
    }
}

void SceneMap::readId(std::string_view key, int& id) const
{
    std::int64_t number = id;
    readWhole(key, number, {0, std::numeric_limits<int>::max()});
    id = static_cast<int>(number);
}

void SceneMap::readText(std::string_view key, std::string& text) const
{
    if (const YAML::Node* const node = find(key)) {
        text = sceneText(*node, key);
    }
}

void SceneMap::readSpan(
    std::string_view key, std::array<std::int64_t, 2>& span, SceneRange range) const
{
    const YAML::Node* const node = find(key);
    if (node == nullptr) {
        return;
    }
    const std::vector<YAML::Node> ends = sceneList(*node, key, 2, 2);
    span = {sceneDecimal(ends[0], key, range), sceneDecimal(ends[1], key, range)};
    if (span[0] > span[1]) {
        throw SceneFault{
            ends[1].Mark(), fmt::format("the second number of '{}' is less than the first", key)};
    }
}

std::vector<YAML::Node>
sceneList(const YAML::Node& node, std::string_view key, std::size_t least, std::size_t greatest)
{
    if (!node.IsSequence()) {
        throw SceneFault{node.Mark(), fmt::format("'{}' must be a list", key)};
    }
    if (node.size() < least || node.size() > greatest) {
        const std::string count =
            least == greatest ? fmt::format("{}", least) : fmt::format("{} to {}", least, greatest);
        throw SceneFault{
            node.Mark(), fmt::format("'{}' has {} elements, not {}", key, count, node.size())};
    }
    return {node.begin(), node.end()};
}

std::int64_t sceneDecimal(const YAML::Node& node, std::string_view key, SceneRange range)
{
    const std::optional<std::int64_t> number =
        node.IsScalar() ? thousandthsOf(node.Scalar()) : std::nullopt;
    if (!number || *number < range.least || *number > range.greatest) {
        throw SceneFault{
            node.Mark(),
            fmt::format(
                "'{}' must be a number from {} to {} with at most three decimals, not {}",
                key,
                decimalText(range.least),
                decimalText(range.greatest),
                quoted(node))};
    }
    return *number;
}

std::int64_t sceneWhole(const YAML::Node& node, std::string_view key, SceneRange range)
{
    const std::optional<std::int64_t> number =
        node.IsScalar() ? wholeNumberOf(node.Scalar()) : std::nullopt;
    if (!number || *number < range.least || *number > range.greatest) {
        throw SceneFault{
            node.Mark(),
            fmt::format(
                "'{}' must be a whole number from {} to {}, not {}",
                key,
                range.least,
                range.greatest,
                quoted(node))};
    }
    return *number;
}

std::string sceneText(const YAML::Node& node, std::string_view key)
{
    constexpr std::size_t kLongest = 256;
    if (!node.IsScalar() || node.Scalar().empty() || node.Scalar().size() > kLongest) {
        throw SceneFault{
            node.Mark(), fmt::format("'{}' must be a text of 1 to {} bytes", key, kLongest)};
    }
    return node.Scalar();
}

} // namespace scenariomatch
