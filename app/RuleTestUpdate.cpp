#include "app/RuleTestUpdate.h"

#include "app/JsonString.h"
#include "app/YamlDocument.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fmt/format.h>
#include <string_view>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

// From one position of a text up to another one.
struct TextRange
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

std::size_t startOfLine(const std::string& text, std::size_t line)
{
    std::size_t begin = 0;
    for (std::size_t i = 0; i < line && begin < text.size(); ++i) {
        begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
    }
    return begin;
}

std::size_t positionOf(const std::string& text, const TextPlace& place)
{
    return std::min(startOfLine(text, place.line) + place.column, text.size());
}

bool isAt(const std::string& text, std::size_t position, char character)
{
    return position < text.size() && text[position] == character;
}

// The position behind the bracket that closes the one at the position; nothing where there is none.
std::optional<std::size_t> endOfFlow(const std::string& text, std::size_t position)
{
    std::size_t depth = 0;
    char quote = '\0';
    for (std::size_t i = position; i < text.size(); ++i) {
        const char character = text[i];
        if (quote != '\0') {
            i += quote == '"' && character == '\\' ? 1U : 0U;
            quote = character == quote ? '\0' : quote;
        } else if (character == '"' || character == '\'') {
            quote = character;
        } else if (
            character == '#' && i > 0 &&
            std::isspace(static_cast<unsigned char>(text[i - 1])) != 0) {
            i = std::min(text.find('\n', i), text.size() - 1);
        } else if (character == '[' || character == '{') {
            ++depth;
        } else if ((character == ']' || character == '}') && --depth == 0) {
            return i + 1;
        }
    }
    return std::nullopt;
}

// The lines of a list whose first dash stands at the position; what is blank or comment behind the
// last element belongs to what follows.
TextRange blockAt(const std::string& text, const TextPlace& place)
{
    const std::size_t begin = startOfLine(text, place.line);
    std::size_t end = begin;
    for (std::size_t next = begin; next < text.size();) {
        const std::size_t lineEnd = std::min(text.find('\n', next), text.size() - 1) + 1;
        const std::string_view line(text.data() + next, lineEnd - next);
        const std::size_t indent = line.find_first_not_of(" \t\r\n");
        const bool isText = indent != std::string_view::npos && line[indent] != '#';
        const bool isElement = isText && indent == place.column && line[indent] == '-';
        if (isText && indent <= place.column && !isElement) {
            break;
        }
        next = lineEnd;
        end = isText ? lineEnd : end;
    }
    return {begin, end};
}

bool isPlainWord(const std::string& text)
{
    constexpr std::array<std::string_view, 9> kOthers{
        "true", "false", "null", "yes", "no", "on", "off", "y", "n"};
    std::string small = text;
    std::transform(small.begin(), small.end(), small.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    const bool isWord = std::all_of(text.begin(), text.end(), [](unsigned char character) {
        return (std::isalnum(character) != 0 && character < 0x80) || character == '_';
    });
    const bool isNumber = !text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) != 0;
    return isWord && !isNumber && !text.empty() &&
           std::find(kOthers.begin(), kOthers.end(), small) == kOthers.end();
}

// Writes events as YAML does it, or with all names in quotation marks as JSON does.
class EventText
{
public:
    explicit EventText(bool isJson)
        : m_isJson(isJson)
    {
    }

    std::string of(const FoundEvent& event, const ExpectedEvent* expected) const
    {
        std::string text = "{" + key("model") + word(event.report.name);
        if (!event.report.objects.empty()) {
            text += ", " + key("objects") + "{" + objects(event) + "}";
        }
        text += ", " + key("begin") + secondsText(event.begin);
        text += ", " + key("end") + secondsText(event.end);
        if (expected != nullptr && expected->tolerance) {
            text += ", " + key("tolerance") + secondsText(*expected->tolerance);
        }
        if (!event.report.alarmLevel.empty()) {
            text += ", " + key("alarm") + word(event.report.alarmLevel);
        }
        return text + "}";
    }

private:
    std::string word(const std::string& text) const
    {
        std::string quoted;
        appendJsonString(quoted, text);
        return m_isJson || !isPlainWord(text) ? quoted : text;
    }

    std::string key(const std::string& name) const { return word(name) + ": "; }

    std::string objects(const FoundEvent& event) const
    {
        std::string text;
        for (const EventObject& object : event.report.objects) {
            text += text.empty() ? "" : ", ";
            text += key(object.variable);
            text += object.name.empty() ? objectText(object) : word(object.name);
        }
        return text;
    }

    bool m_isJson;
};

std::vector<std::string>
eventTexts(const RuleCase& ruleCase, const RuleVerdict& verdict, bool isJson)
{
    const EventText text(isJson);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < verdict.found.size(); ++i) {
        const std::optional<std::size_t>& match = verdict.expectedOf[i];
        texts.push_back(text.of(verdict.found[i], match ? &(*ruleCase.events)[*match] : nullptr));
    }
    return texts;
}

std::string blockText(const std::vector<std::string>& events, std::size_t indent)
{
    std::string text;
    for (const std::string& event : events) {
        text += std::string(indent, ' ') + "- " + event + "\n";
    }
    return text;
}

// Replaces the events of one case; false where their place cannot be made out.
bool replaceEvents(std::string& text, const RuleCase& ruleCase, const RuleVerdict& verdict)
{
    const std::size_t position = positionOf(text, ruleCase.eventsPlace);
    if (isAt(text, position, '-')) {
        const TextRange range = blockAt(text, ruleCase.eventsPlace);
        const auto events = eventTexts(ruleCase, verdict, false);
        const std::string indent(ruleCase.eventsPlace.column, ' ');
        text.replace(
            range.begin,
            range.end - range.begin,
            events.empty() ? indent + "[]\n" : blockText(events, indent.size()));
        return true;
    }
    const std::optional<std::size_t> end =
        isAt(text, position, '[') ? endOfFlow(text, position) : std::nullopt;
    if (!end) {
        return false;
    }
    const bool isJson = isAt(text, positionOf(text, ruleCase.place), '{');
    const auto events = eventTexts(ruleCase, verdict, isJson);
    std::string list;
    if (isJson || events.empty()) {
        list = fmt::format("[{}]", fmt::join(events, ", "));
    } else {
        list = "\n" + blockText(events, ruleCase.place.column + 2);
        list.pop_back();
    }
    // No blank stays behind the key.
    const std::size_t begin =
        list.starts_with('\n') ? text.find_last_not_of(' ', position - 1) + 1 : position;
    text.replace(begin, *end - begin, list);
    return true;
}

// The tree of a file in one line, without the events of the cases that are updated.
class TreeText
{
public:
    explicit TreeText(const std::map<std::size_t, RuleVerdict>& updated)
        : m_updated(updated)
    {
    }

    // Nothing where the tree is too large, which one with many aliases can be.
    std::optional<std::string> of(const std::string& text)
    {
        m_text.clear();
        const YAML::Node root = readYamlDocument(text).root;
        for (const auto& entry : root) {
            const bool isCases = entry.first.Scalar() == "cases";
            add(entry.first);
            isCases ? addCases(entry.second) : add(entry.second);
        }
        return m_text.size() < kLongest ? std::optional(m_text) : std::nullopt;
    }

private:
    static constexpr std::size_t kLongest = std::size_t{64} * 1024 * 1024;

    void addCases(const YAML::Node& cases)
    {
        std::size_t number = 0;
        for (const YAML::Node& node : cases) {
            const bool isUpdated = m_updated.contains(number++);
            for (const auto& entry : node) {
                add(entry.first);
                if (!isUpdated || entry.first.Scalar() != "events") {
                    add(entry.second);
                }
            }
            m_text += ";";
        }
    }

    void add(const YAML::Node& node)
    {
        if (m_text.size() >= kLongest) {
            return;
        }
        if (node.IsScalar()) {
            appendJsonString(m_text, node.Scalar());
            return;
        }
        m_text += node.IsMap() ? "{" : "[";
        for (const auto& entry : node) {
            if (node.IsMap()) {
                add(entry.first);
                add(entry.second);
            } else {
                add(entry);
            }
        }
        m_text += "]";
    }

    const std::map<std::size_t, RuleVerdict>& m_updated;
    std::string m_text;
};

// Whether the new text says what was found, and otherwise the same as the old one.
bool isRight(
    const RuleTestFile& file,
    const std::string& text,
    const std::map<std::size_t, RuleVerdict>& verdicts)
{
    const RuleTestReading reading = readRuleTest(text, file.name);
    if (!reading.file || reading.file->cases.size() != file.cases.size()) {
        return false;
    }
    for (const auto& [number, verdict] : verdicts) {
        RuleRun run;
        run.events = verdict.found;
        RuleCase ruleCase = reading.file->cases[number];
        ruleCase.absent.clear();
        if (!judge(ruleCase, std::move(run)).isPassed()) {
            return false;
        }
    }
    TreeText trees(verdicts);
    const std::optional<std::string> before = trees.of(file.text);
    return before && before == trees.of(text);
}

} // namespace

std::optional<std::string>
updatedRuleTest(const RuleTestFile& file, const std::map<std::size_t, RuleVerdict>& verdicts)
{
    std::string text = file.text;
    // From the end, so that the places of those before stay.
    auto entry = verdicts.end();
    while (entry != verdicts.begin()) {
        --entry;
        if (!replaceEvents(text, file.cases[entry->first], entry->second)) {
            return std::nullopt;
        }
    }
    return isRight(file, text, verdicts) ? std::optional(text) : std::nullopt;
}

} // namespace scenariomatch
