#include "lint/Blocks.h"

#include <algorithm>
#include <fmt/format.h>
#include <string>

namespace scenariomatch::lint
{

namespace
{

constexpr std::string_view kBlanks = " \t";

// Whether the line is the begin of a header and no remark: KEYWORD [ "{" ... ].
bool isHeader(std::string_view line, std::string_view keyword)
{
    if (!line.starts_with(keyword)) {
        return false;
    }
    const std::string_view rest = line.substr(keyword.size());
    const std::size_t next = rest.find_first_not_of(kBlanks);
    return next == std::string_view::npos || rest[next] == '{';
}

std::size_t nextHeader(const Source& source, std::size_t line, std::string_view keyword)
{
    while (line <= source.lineCount() && !isHeader(trimmedLine(source, line).text, keyword)) {
        ++line;
    }
    return line;
}

// The line with the header's comma; the line itself, after a report, when the name is missing.
std::size_t
endOfHeader(const Source& source, std::size_t line, std::string_view keyword, Diagnostics& out)
{
    const std::string& text = source.text();
    const std::size_t begin = source.lineStart(line) + source.lineText(line).find(keyword);
    const std::size_t comma = text.find(',', begin);
    const std::size_t brace = text.find('{', begin);
    const std::size_t from = brace < comma ? brace + 1 : begin + keyword.size();
    const std::string name = text.substr(from, std::min(comma, text.size()) - from);
    const std::size_t first = name.find_first_not_of(" \t\r\n");
    const bool isName = comma != std::string::npos && first != std::string::npos &&
                        name.find_first_of("(){}") == std::string::npos &&
                        name.find_first_of(" \t\r\n", first) >= name.find_last_not_of(" \t\r\n");
    if (isName && brace < comma) {
        return source.placeOf(comma).line;
    }
    const Range place = {&source, from, from};
    if (brace >= comma && isName) {
        out.add("header-name", place, "'{' is missing", "write {");
        return source.placeOf(comma).line;
    }
    out.add(
        "header-name",
        place,
        fmt::format("the header of '{}' lacks its name and comma", keyword),
        "write a name and a comma: the reader takes all up to the next comma for it");
    return source.placeOf(std::min(from, text.size())).line;
}

} // namespace

Word trimmedLine(const Source& source, std::size_t line)
{
    const std::string_view text = source.lineText(line);
    const std::size_t start = source.lineStart(line);
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {"", {&source, start + text.size(), start + text.size()}};
    }
    const std::size_t end = text.find_last_not_of(kBlanks) + 1;
    return {std::string(text.substr(begin, end - begin)), {&source, start + begin, start + end}};
}

std::optional<Block>
findBlock(const Source& source, std::size_t line, std::string_view keyword, Diagnostics& out)
{
    while (line <= source.lineCount() &&
           source.lineText(line).find(keyword) == std::string_view::npos) {
        ++line;
    }
    if (line > source.lineCount()) {
        return std::nullopt;
    }
    if (!isHeader(trimmedLine(source, line).text, keyword)) {
        const std::size_t begin = source.lineStart(line) + source.lineText(line).find(keyword);
        const std::size_t meant = nextHeader(source, line, keyword);
        out.add(
            "prose-opens-block",
            {&source, begin, begin + keyword.size()},
            fmt::format("this line opens a block, for it contains '{}'", keyword),
            "say it without this word");
        if (meant > source.lineCount()) {
            return std::nullopt;
        }
        line = meant;
    }
    Block block;
    block.firstLine = endOfHeader(source, line, keyword, out) + 1;
    block.endLine = block.firstLine;
    while (block.endLine <= source.lineCount() &&
           source.lineText(block.endLine).find('}') == std::string_view::npos) {
        ++block.endLine;
    }
    if (block.endLine > source.lineCount()) {
        const std::size_t last = source.text().find_last_not_of(" \t\r\n") + 1;
        out.add("unclosed-block", {&source, last, last}, "'}' is missing at the end of the block");
        return block;
    }
    const Word end = trimmedLine(source, block.endLine);
    if (end.text.find_first_of("()") != std::string::npos) {
        out.add(
            "malformed",
            end.range,
            "the line with '}' is not read",
            "write '}' on a line of its own");
    }
    return block;
}

} // namespace scenariomatch::lint
