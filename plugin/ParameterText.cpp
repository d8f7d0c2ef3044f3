#include "plugin/ParameterText.h"

#include <QString>
#include <QXmlStreamReader>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

namespace scenariomatch
{

namespace
{

using Fault = std::optional<std::string>;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string placed(std::size_t line, const std::string& reason)
{
    return "line " + std::to_string(line) + ": " + reason;
}

std::string deeperThan(std::size_t depth)
{
    return "nested more than " + std::to_string(depth) + " deep";
}

// Whether a text has characters that no line of text is made of.
bool hasControls(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isLineEnd = byte == '\n' || (byte == '\r' && text.substr(i, 2) == "\r\n");
        if (byte == 0x7F || (byte < 0x20 && byte != '\t' && !isLineEnd)) {
            return true;
        }
    }
    return false;
}

// Whether a JSON text has a "/" outside of its texts.
bool hasRemark(std::string_view text)
{
    bool isText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '/' && !isText) {
            return true;
        }
        i += isText && text[i] == '\\' ? 1U : 0U;
        isText = i < text.size() && text[i] == '"' ? !isText : isText;
    }
    return false;
}

// Whether a tag has more attributes than may be, each of which has a "=". The XML reader takes the
// square of the time for them. A text with as many of these characters counts as well.
bool hasCrowdedTag(std::string_view text, std::ptrdiff_t mostAttributes)
{
    constexpr std::string_view kRemark = "<!--";
    std::size_t begin = text.find('<');
    while (begin < text.size()) {
        const bool isRemark = text.substr(begin).starts_with(kRemark);
        const std::size_t end = isRemark ? text.find("-->", begin) : text.find('<', begin + 1);
        const std::string_view tag = text.substr(begin, end - begin);
        if (!isRemark && std::count(tag.begin(), tag.end(), '=') > mostAttributes) {
            return true;
        }
        begin = end < text.size() ? text.find('<', end) : end;
    }
    return false;
}

Fault xmlFault(std::string_view text, const ParameterLimits& limits)
{
    if (hasCrowdedTag(text, limits.attributes)) {
        return "a tag has more than " + std::to_string(limits.attributes) + " attributes";
    }
    // Byte by byte, as the library reads, whatever encoding the text names.
    QXmlStreamReader xml(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    std::size_t depth = 0;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        const auto line = static_cast<std::size_t>(std::max<qint64>(xml.lineNumber(), 1));
        if (token == QXmlStreamReader::DTD) {
            return placed(line, "a document type is not expected");
        }
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
        if (depth > limits.depth) {
            return placed(line, deeperThan(limits.depth));
        }
    }
    return xml.hasError() ? Fault(placed(
                                static_cast<std::size_t>(std::max<qint64>(xml.lineNumber(), 1)),
                                xml.errorString().toStdString()))
                          : std::nullopt;
}

// Follows how lists and maps lie within each other, in the block and the flow style of YAML and in
// JSON. Where the library might read on in another way, what goes deeper counts and what leads out
// does not.
class Nesting
{
public:
    void addLine(std::string_view line)
    {
        const std::size_t indent = line.find_first_not_of(kBlanks);
        m_isRemark = false;
        m_last = ':';
        if (!hasBegun() && indent != std::string_view::npos && line[indent] != '#') {
            m_begin = indent;
            m_isFlow = line[indent] == '[' || line[indent] == '{';
        }
        for (std::size_t i = addBlock(line, indent); i < line.size(); ++i) {
            i = addCharacter(line, i);
        }
        m_deepest = std::max(m_deepest, depth());
    }

    // Whether the document's own list or map ends before a line: one in block style before what
    // lies left of it, whatever brackets seem to be open, one in flow style with its bracket.
    bool isEndedBy(std::string_view line) const
    {
        const std::size_t column = line.find_first_not_of(kBlanks);
        const bool isNone = column == std::string_view::npos || line[column] == '#';
        return hasBegun() && !isNone && (m_isFlow ? m_brackets == 0 : column < m_begin);
    }

    bool hasBegun() const { return m_begin != std::string_view::npos; }

    std::size_t deepest() const { return m_deepest; }

    bool isClosed() const { return m_brackets == 0; }

private:
    static constexpr std::string_view kBlanks = " \t\r\n";

    std::size_t depth() const { return m_columns.size() + m_brackets; }

    // A list or map in block style that begins here, or goes on, ends those further to the right.
    std::size_t addBlock(std::string_view line, std::size_t column)
    {
        const bool isNone = column == std::string_view::npos || line[column] == '#';
        if (m_brackets == 0 && !isNone) {
            m_columns.erase(
                std::lower_bound(m_columns.begin(), m_columns.end(), column), m_columns.end());
            m_columns.push_back(column);
        }
        return column;
    }

    // The position of the last character that was dealt with.
    std::size_t addCharacter(std::string_view line, std::size_t position)
    {
        const char character = line[position];
        const bool startsValue = std::string_view("[{,:-").find(m_last) != std::string_view::npos;
        if ((character == '"' || character == '\'') && startsValue && !m_isRemark) {
            m_last = character;
            return endOfQuotes(line, position);
        }
        if (character == '#' && m_brackets == 0 &&
            (position == 0 || kBlanks.find(line[position - 1]) != std::string_view::npos)) {
            return line.size();
        }
        addBracket(character);
        if ((character == '-' || character == ':') && m_brackets == 0) {
            // What follows on the line may be a list or a map of its own.
            const std::size_t next = line.find_first_not_of(kBlanks, position + 1);
            addBlock(line, next);
        }
        m_last = kBlanks.find(character) == std::string_view::npos ? character : m_last;
        return position;
    }

    void addBracket(char character)
    {
        m_isRemark = m_isRemark || character == '#';
        if (character == '[' || character == '{') {
            ++m_brackets;
            m_deepest = std::max(m_deepest, depth());
        } else if ((character == ']' || character == '}') && m_brackets > 0 && !m_isRemark) {
            --m_brackets;
        }
    }

    // Quotes end on their line.
    static std::size_t endOfQuotes(std::string_view line, std::size_t position)
    {
        const char mark = line[position];
        for (std::size_t i = position + 1; i < line.size(); ++i) {
            const bool isDoubled = mark == '\'' && line.substr(i, 2) == "''";
            if (isDoubled || (mark == '"' && line[i] == '\\')) {
                ++i;
            } else if (line[i] == mark) {
                return i;
            }
        }
        return position;
    }

    // Where the lists and maps in block style begin that are open.
    std::vector<std::size_t> m_columns;
    std::size_t m_brackets = 0;
    std::size_t m_deepest = 0;
    // Where the document's own list or map begins, and whether it is in flow style.
    std::size_t m_begin = std::string_view::npos;
    bool m_isFlow = false;
    // The last character that is no blank, and whether a remark may have begun, on this line.
    char m_last = ':';
    bool m_isRemark = false;
};

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// "%YAML:1.0", or with a blank for the colon, and nothing behind it.
bool isYamlHeader(std::string_view line)
{
    const bool isKnown = line.starts_with("%YAML:1.") || line.starts_with("%YAML 1.");
    const std::size_t end = line.find_first_not_of("0123456789", 8);
    return isKnown && (end == std::string_view::npos || isBlank(line.substr(end)));
}

// Takes the first line, with its end, from a text that is not empty.
std::string_view takeLine(std::string_view& text)
{
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    const std::string_view line = text.substr(0, size);
    text.remove_prefix(size);
    return line;
}

// One document, behind which is nothing: what stands there may keep the library for ever.
Fault linesFault(std::string_view text, const ParameterLimits& limits)
{
    const bool hasHeader = text.starts_with('%');
    if (hasHeader && !isYamlHeader(takeLine(text))) {
        return placed(1, "\"%YAML:1.0\" is expected, and nothing behind it");
    }
    Nesting nesting;
    bool isBegun = false;
    std::size_t number = hasHeader ? 1 : 0;
    while (!text.empty()) {
        ++number;
        const std::string_view line = takeLine(text);
        const bool isOpening = line.starts_with("---");
        const bool isLast = line.starts_with("...");
        const bool isMarker = isOpening || isLast;
        if (isMarker && !isBlank(line.substr(3))) {
            return placed(number, R"(nothing is expected behind "---" or "...")");
        }
        if ((isOpening && isBegun) || (isLast && !isBlank(text)) ||
            (!isMarker && nesting.isEndedBy(line))) {
            return placed(number, "nothing is expected behind the end");
        }
        if (isLast) {
            break;
        }
        nesting.addLine(isOpening ? "" : line);
        isBegun = isOpening || isBegun || nesting.hasBegun();
        if (nesting.deepest() > limits.depth) {
            return placed(number, deeperThan(limits.depth));
        }
    }
    return nesting.isClosed() ? Fault() : placed(number, "a list or map is not closed");
}

} // namespace

std::optional<std::string>
readParameterText(const std::string& path, std::string& fault, const ParameterLimits& limits)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        fault = std::filesystem::exists(path, error) ? "it is no ordinary file" : "";
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    std::string text(limits.bytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (file.bad() || !file.is_open()) {
        fault = "it cannot be read";
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (text.size() > limits.bytes) {
        fault = "it is larger than " + std::to_string(limits.bytes) + " bytes";
        return std::nullopt;
    }
    return text;
}

std::optional<std::string> findParameterFault(std::string_view text, const ParameterLimits& limits)
{
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    if (hasControls(text)) {
        return "it has control characters";
    }
    if (text.starts_with('<')) {
        return xmlFault(text, limits);
    }
    if (text.starts_with('{') && hasRemark(text)) {
        return "a remark is not expected in JSON";
    }
    if (text.starts_with("%YAML") || text.starts_with('{')) {
        return linesFault(text, limits);
    }
    return "it begins neither with %YAML nor with <?xml nor with {";
}

} // namespace scenariomatch
