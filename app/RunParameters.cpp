#include "app/RunParameters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <string_view>
#include <system_error>

namespace scenariomatch
{

namespace
{

enum class ParameterKind {
    Text,
    Flag,
    Whole,
    Real,
    // A file that the common path stands in front of.
    CommonFile,
    // Another file or folder.
    Path,
    // Nothing that a parameter file can hold.
    Other,
};

struct KnownParameter
{
    std::string_view key;
    ParameterKind kind;
};

constexpr std::string_view kOperatorFolder = "OperatorPluginPath";
constexpr std::string_view kOperatorDescription = "scenarioRecognitionOperatorDescription";

constexpr std::array<KnownParameter, 17> kKnown{{
    {"debug", ParameterKind::Flag},
    {"scenarioRecognitionObjectDescription", ParameterKind::CommonFile},
    {kOperatorDescription, ParameterKind::CommonFile},
    {"scenarioRecognitionModelFileName", ParameterKind::CommonFile},
    {kOperatorFolder, ParameterKind::Path},
    {"scenarioRecognitionMaximumScenarioLife", ParameterKind::Whole},
    {"constProlongation", ParameterKind::Whole},
    {"constTimeSearch", ParameterKind::Whole},
    {"historySize", ParameterKind::Whole},
    {"saveXML3File", ParameterKind::Flag},
    {"saveXML1File", ParameterKind::Flag},
    {"XML3AlarmLevel", ParameterKind::Text},
    {"XML3FileName", ParameterKind::Path},
    {"XML1FileName", ParameterKind::Path},
    {"PersonSittingMaxHeight", ParameterKind::Real},
    {"RHMContext", ParameterKind::CommonFile},
    {"EventsToNotify", ParameterKind::Text},
}};

ParameterKind kindOf(std::string_view key)
{
    const auto* const found =
        std::find_if(kKnown.begin(), kKnown.end(), [key](const KnownParameter& known) {
            return known.key == key;
        });
    return found == kKnown.end() ? ParameterKind::Other : found->kind;
}

// A value on its way into the file.
struct Value
{
    std::string key;
    std::string text;
    bool isNumber = false;
};

std::optional<double> numberIn(const std::string& text)
{
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto [last, fault] = std::from_chars(text.data(), end, value);
    const bool isNumber = fault == std::errc() && last == end && std::isfinite(value);
    return isNumber ? std::optional(value) : std::nullopt;
}

// What the process would read as 0, which to it means "missing".
bool isZero(const Value& value)
{
    const ParameterKind kind = kindOf(value.key);
    const std::optional<double> number = value.isNumber ? numberIn(value.text) : std::nullopt;
    if (!number) {
        return false;
    }
    return kind == ParameterKind::Whole ? std::nearbyint(*number) == 0.0
                                        : kind == ParameterKind::Real && *number == 0.0;
}

std::string resolved(const std::string& folder, const std::string& name)
{
    return (std::filesystem::path(folder) / name).string();
}

std::string fileValue(const StorageEntry& entry, const RunParameterSources& sources)
{
    const ParameterKind kind = kindOf(entry.key);
    const std::string folder = std::filesystem::path(sources.file).parent_path().string();
    if (entry.isNumber || entry.text.empty()) {
        return entry.text;
    }
    if (kind == ParameterKind::CommonFile && sources.commonPath) {
        return *sources.commonPath + entry.text;
    }
    const bool isPath = kind == ParameterKind::CommonFile || kind == ParameterKind::Path;
    return isPath ? resolved(folder, entry.text) : entry.text;
}

void put(std::vector<Value>& values, const Value& value)
{
    const auto found = std::find_if(
        values.begin(), values.end(), [&](const Value& other) { return other.key == value.key; });
    if (found == values.end()) {
        values.push_back(value);
    } else {
        *found = value;
    }
}

// Empty when the text is a value of the parameter.
std::string faultOf(const NamedText& setting)
{
    const ParameterKind kind = kindOf(setting.first);
    const std::string& text = setting.second;
    if (kind == ParameterKind::Flag && text != "true" && text != "false") {
        return fmt::format("{} is true or false, not \"{}\"", setting.first, text);
    }
    const bool needsNumber = kind == ParameterKind::Whole || kind == ParameterKind::Real;
    if (needsNumber && !numberIn(text)) {
        return fmt::format("{} needs a number, not \"{}\"", setting.first, text);
    }
    return "";
}

// Without this a file would be looked for by its bare name only where it is.
void putDefault(std::vector<Value>& values, std::string_view key, const std::string& text)
{
    const bool isGiven = std::any_of(values.begin(), values.end(), [key](const Value& value) {
        return value.key == key && !value.text.empty();
    });
    if (!isGiven && !text.empty()) {
        put(values, {std::string(key), text, false});
    }
}

// A double-quoted text of the YAML form.
std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char character : text) {
        switch (character) {
        case '"':
            result += "\\\"";
            break;
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            result += character;
        }
    }
    return result + "\"";
}

RunParameters written(const std::vector<Value>& values)
{
    RunParameters parameters;
    parameters.text = "%YAML:1.0\n---\n";
    for (const Value& value : values) {
        parameters.values.emplace_back(value.key, value.text);
        const bool isOther = kindOf(value.key) == ParameterKind::Other;
        if (isOther || isZero(value)) {
            parameters.setters.emplace_back(value.key, isOther ? value.text : "0");
        } else if (!value.text.empty()) {
            parameters.text += fmt::format(
                "{}: {}\n", value.key, value.isNumber ? value.text : quoted(value.text));
        }
    }
    return parameters;
}

} // namespace

bool RunParameterSources::hasSetting(const std::string& key) const
{
    return std::any_of(settings.begin(), settings.end(), [&key](const NamedText& setting) {
        return setting.first == key;
    });
}

// The last setting wins.
void RunParameterSources::leaveEventFileAlone()
{
    settings.emplace_back("saveXML3File", "false");
    settings.emplace_back("XML3FileName", "/dev/null");
}

std::optional<std::string> RunParameters::value(const std::string& key) const
{
    const auto found = std::find_if(
        values.begin(), values.end(), [&](const NamedText& value) { return value.first == key; });
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

std::optional<RunParameters>
mergeParameters(const StorageFile& file, const RunParameterSources& sources, std::string& error)
{
    std::vector<Value> values;
    for (const StorageEntry& entry : file.entries) {
        if (entry.isScalar) {
            put(values, {entry.key, fileValue(entry, sources), entry.isNumber});
        }
    }
    for (const NamedText& setting : sources.settings) {
        error = faultOf(setting);
        if (!error.empty()) {
            return std::nullopt;
        }
        const ParameterKind kind = kindOf(setting.first);
        const bool isNumber = kind == ParameterKind::Whole || kind == ParameterKind::Real;
        put(values, {setting.first, setting.second, isNumber});
    }
    putDefault(values, kOperatorFolder, sources.operatorFolder);
    putDefault(values, kOperatorDescription, sources.operatorDescription);
    return written(values);
}

std::vector<std::string> knownParameters()
{
    std::vector<std::string> keys;
    keys.reserve(kKnown.size());
    for (const KnownParameter& known : kKnown) {
        keys.emplace_back(known.key);
    }
    return keys;
}

bool isFileParameter(const std::string& key)
{
    const ParameterKind kind = kindOf(key);
    return kind == ParameterKind::CommonFile || kind == ParameterKind::Path;
}

std::string alarmLevelWarning(const std::string& level)
{
    constexpr std::array<std::string_view, 4> kLevels{
        "NOTURGENT", "URGENT", "VERYURGENT", "SUPERURGENT"};
    if (level.empty() || std::find(kLevels.begin(), kLevels.end(), level) != kLevels.end()) {
        return "";
    }
    return fmt::format("XML3AlarmLevel: there is no level {}; taken as NOTURGENT", level);
}

std::optional<NamedText> parseSetting(const std::string& text)
{
    const std::size_t end = text.find('=');
    if (end == std::string::npos || end == 0) {
        return std::nullopt;
    }
    return NamedText(text.substr(0, end), text.substr(end + 1));
}

} // namespace scenariomatch
