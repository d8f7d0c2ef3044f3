#include "lint/ObjectTypes.h"

#include "lint/Blocks.h"
#include "lint/NearNames.h"
#include "lint/PlacedText.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <set>
#include <utility>

namespace scenariomatch::lint
{

namespace
{

using Attributes = std::map<std::string, std::string, std::less<>>;

constexpr std::string_view kRoot = "Agent";
constexpr std::array<std::string_view, 11> kTags = {
    "BOOL",
    "STRING",
    "INT",
    "DOUBLE",
    "3DDPOINT",
    "3DIPOINT",
    "2DDPOINT",
    "2DIPOINT",
    "TIMESTAMP",
    "INTERVAL",
    "3DDPOINTS"};

Attributes actorAttributes()
{
    return {
        {"ID", "INT"},
        {"Position", "3DDPOINT"},
        {"Position2D", "2DDPOINT"},
        {"XMin", "INT"},
        {"XMax", "INT"},
        {"YMin", "INT"},
        {"YMax", "INT"},
        {"Width", "DOUBLE"},
        {"Height", "DOUBLE"},
        {"Depth", "DOUBLE"},
        {"Speed", "DOUBLE"},
        {"Type", "STRING"}};
}

Attributes personAttributes()
{
    Attributes attributes = actorAttributes();
    attributes["Posture"] = "INT";
    return attributes;
}

// What the process gives to the agents of its types.
const std::map<std::string, Attributes, std::less<>>& processAttributes()
{
    static const std::map<std::string, Attributes, std::less<>> kAttributes = {
        {"Person", personAttributes()},
        {"Group", actorAttributes()},
        {"Mobile", actorAttributes()},
        {"Zone",
         {{"Name", "STRING"},
          {"Vertices", "3DDPOINTS"},
          {"Position", "3DDPOINT"},
          {"Type", "STRING"}}},
        {"Equipment",
         {{"Name", "STRING"},
          {"Position", "3DDPOINT"},
          {"Height", "DOUBLE"},
          {"Vertices", "3DDPOINTS"},
          {"Radius", "DOUBLE"},
          {"Type", "STRING"}}},
        {"Wall",
         {{"Name", "STRING"},
          {"StartPoint", "3DDPOINT"},
          {"EndPoint", "3DDPOINT"},
          {"Position", "3DDPOINT"},
          {"Height", "DOUBLE"},
          {"Type", "STRING"}}},
        {"Camera", {{"Name", "STRING"}, {"Type", "STRING"}}},
        {"Scene", {{"Name", "STRING"}, {"NumberOfActors", "INT"}, {"Type", "STRING"}}},
        {"Component", {{"Interval", "INTERVAL"}, {"Name", "STRING"}}}};
    return kAttributes;
}

// Reads one block with the splitting rules of the engine's reader and reports what they lose.
class BlockReader
{
public:
    BlockReader(PlacedText text, Diagnostics& out)
        : m_body(std::move(text))
        , m_out(out)
    {
    }

    ObjectType read()
    {
        m_body = withoutLeadingBlanks(m_body);
        m_body = rest(' ');
        readHead();
        readFlag();
        while (m_body.text() != "}" && m_body.text().find(';') != std::string_view::npos) {
            readAttribute();
        }
        checkRest();
        return m_type;
    }

private:
    // What stands behind the separator; nothing when there is none.
    PlacedText rest(char separator) const
    {
        const std::size_t end = m_body.text().find(separator);
        return m_body.from(end == std::string_view::npos ? m_body.size() : end + 1);
    }

    void readHead()
    {
        const PlacedText whole = textBefore(m_body, '{');
        PlacedText head = textBefore(whole, ' ');
        const PlacedText lost = withoutLeadingBlanks(whole.from(head.size()));
        if (head.empty() || (!lost.empty() && lost.text() != "\r")) {
            m_out.add(
                "object-type-layout",
                head.empty() ? whole.range() : firstWord(lost).range(),
                head.empty() ? "one blank stands between 'class' and the name"
                             : "the head of a type ends at its first blank: this is lost",
                "write class NAME:PARENT { with single blanks, none around ':'");
            head = head.empty() ? firstWord(whole) : head;
        }
        m_type.name = textBefore(head, ':').word();
        if (head.text().find(':') != std::string_view::npos) {
            m_type.parent = textAfter(head, ':').word();
        }
        m_body = rest('{');
    }

    void readFlag()
    {
        m_body = withoutLeadingBlanks(m_body);
        const PlacedText statement = textBefore(m_body, ';');
        const PlacedText word = firstWord(statement);
        if (word.text() != "constant") {
            const std::vector<std::string> keywords = {"constant"};
            const std::string near = nearestName(word.text(), keywords);
            m_out
                .add(
                    "object-type-layout",
                    word.empty() ? m_type.name.range : word.range(),
                    "the first statement says whether the type is constant",
                    near.empty() ? "write constant false; before the attributes" : didYouMean(near))
                .suggestion = near;
        } else {
            checkFlag(firstWord(textAfter(statement, ' ')));
        }
        m_body = rest(';');
    }

    // Whatever is not "true" makes the type one of tracked objects.
    void checkFlag(const PlacedText& value)
    {
        const std::vector<std::string> values = {"false", "true"};
        if (std::find(values.begin(), values.end(), value.text()) != values.end()) {
            return;
        }
        const std::string near = nearestName(value.text(), values);
        m_out
            .add(
                "object-type-layout",
                value.range(),
                "a type is constant true or constant false",
                didYouMean(near))
            .suggestion = near;
    }

    // Without a ";" behind it the last attribute is lost.
    void checkRest()
    {
        const PlacedText lost = withoutLeadingBlanks(m_body);
        const bool isClosed = lost.text().find('}') != std::string_view::npos;
        if (isClosed && !lost.text().starts_with('}')) {
            m_out.add(
                "object-type-layout",
                firstWord(textBefore(lost, '}')).range(),
                "this is lost, for no ';' ends it",
                "write ; behind it");
        }
    }

    void readAttribute()
    {
        m_body = withoutLeadingBlanks(m_body);
        const PlacedText statement = textBefore(m_body, ';');
        m_body = rest(';');
        const PlacedText tag = textBefore(statement, ' ');
        const PlacedText name = withoutLeadingBlanks(statement.from(tag.size()));
        if (tag.text().starts_with('}')) {
            return;
        }
        if (std::find(kTags.begin(), kTags.end(), tag.text()) == kTags.end()) {
            const std::vector<std::string> tags(kTags.begin(), kTags.end());
            const std::string near = nearestName(tag.text(), tags);
            m_out
                .add(
                    "unknown-type",
                    tag.range(),
                    fmt::format("'{}' is no type of a value", tag.text()),
                    didYouMean(near))
                .suggestion = near;
        }
        if (name.text().find_first_of(" \t") != std::string_view::npos) {
            m_out.add(
                "name-cut",
                name.from(name.text().find_first_of(" \t")).range(),
                "the blank belongs to the name of the attribute",
                "write no blank before ;");
        }
        m_type.attributes.emplace_back(firstWord(name).word(), tag.word());
    }

    PlacedText m_body;
    Diagnostics& m_out;
    ObjectType m_type;
};

} // namespace

void ObjectTypes::readBlock(const Source& source, std::size_t& line, Diagnostics& out)
{
    const std::size_t first = line;
    PlacedText text(source);
    while (true) {
        const std::string_view letters = source.lineText(line);
        const std::size_t begin = source.lineStart(line);
        text.append(PlacedText(source, begin, begin + letters.size()));
        if (letters.find('}') != std::string_view::npos) {
            break;
        }
        const bool isLast = line == source.lineCount();
        if (isLast || trimmedLine(source, line + 1).text.starts_with("class ")) {
            out.add(
                "unclosed-block",
                trimmedLine(source, line).range.after(),
                "'}' is missing at the end of the type");
            break;
        }
        ++line;
    }
    if (const std::size_t tab = text.text().find('\t'); tab != std::string_view::npos) {
        out.add(
            "tab", text.range(tab, tab + 1), "a tab is a letter here, no blank", "write blanks");
        return;
    }
    if (!trimmedLine(source, first).text.starts_with("class ")) {
        const std::size_t place = text.text().find("class");
        out.add(
            "prose-opens-block",
            text.range(place, place + 5),
            "this line opens a type, for it contains 'class'",
            "say it without this word");
        return;
    }
    m_types.push_back(BlockReader(text, out).read());
}

void ObjectTypes::read(const Source& source, Diagnostics& out)
{
    for (std::size_t line = 1; line <= source.lineCount(); ++line) {
        const std::string_view text = source.lineText(line);
        const bool isProse = text.find("class") != std::string_view::npos &&
                             !trimmedLine(source, line).text.starts_with("class ");
        if (isProse && text.find('{') == std::string_view::npos) {
            const std::size_t begin = source.lineStart(line) + text.find("class");
            out.add(
                "prose-opens-block",
                {&source, begin, begin + 5},
                "this line opens a type, for it contains 'class'",
                "say it without this word");
        } else if (text.find("class") != std::string_view::npos) {
            readBlock(source, line, out);
        }
    }
    m_isRead = !m_types.empty();
    if (!m_isRead) {
        out.add("no-block", {&source, 0, 0}, "no type is declared");
    }
}

const ObjectType* ObjectTypes::find(std::string_view type) const
{
    const auto found = std::find_if(m_types.begin(), m_types.end(), [&](const ObjectType& known) {
        return known.name.text == type;
    });
    return found == m_types.end() ? nullptr : &*found;
}

bool ObjectTypes::isDeclared(std::string_view type) const
{
    return m_isRead ? find(type) != nullptr : processAttributes().contains(type);
}

std::vector<std::string> ObjectTypes::lineOf(std::string_view type) const
{
    std::vector<std::string> line = {std::string(type)};
    const ObjectType* current = find(type);
    while (current != nullptr && !current->parent.text.empty()) {
        const std::string& parent = current->parent.text;
        if (std::find(line.begin(), line.end(), parent) != line.end()) {
            break;
        }
        line.push_back(parent);
        current = find(parent);
    }
    return line;
}

bool ObjectTypes::derives(std::string_view type, std::string_view ancestor) const
{
    const std::vector<std::string> line = lineOf(type);
    return ancestor == kRoot || std::find(line.begin(), line.end(), ancestor) != line.end();
}

std::optional<std::string>
ObjectTypes::attribute(std::string_view type, std::string_view name) const
{
    for (const std::string& known : lineOf(type)) {
        const auto process = processAttributes().find(known);
        if (process != processAttributes().end()) {
            const auto found = process->second.find(name);
            if (found != process->second.end()) {
                return found->second;
            }
        }
        const ObjectType* declared = find(known);
        for (std::size_t i = 0; declared != nullptr && i < declared->attributes.size(); ++i) {
            if (declared->attributes[i].first.text == name) {
                return declared->attributes[i].second.text;
            }
        }
    }
    return std::nullopt;
}

std::vector<std::string> ObjectTypes::attributesOf(std::string_view type) const
{
    std::set<std::string> names;
    for (const std::string& known : lineOf(type)) {
        const auto process = processAttributes().find(known);
        if (process != processAttributes().end()) {
            for (const auto& [name, tag] : process->second) {
                names.insert(name);
            }
        }
        const ObjectType* declared = find(known);
        for (std::size_t i = 0; declared != nullptr && i < declared->attributes.size(); ++i) {
            names.insert(declared->attributes[i].first.text);
        }
    }
    return {names.begin(), names.end()};
}

std::vector<std::string> ObjectTypes::names() const
{
    std::vector<std::string> names;
    for (const ObjectType& type : m_types) {
        names.push_back(type.name.text);
    }
    if (!m_isRead) {
        for (const auto& [name, attributes] : processAttributes()) {
            names.push_back(name);
        }
    }
    return names;
}

} // namespace scenariomatch::lint
