#include "scenario/CParserTool.h"

#include "scenario/TextPieces.h"

#include <algorithm>

namespace
{

std::string_view firstPiece(std::string_view text, char blank)
{
    text.remove_prefix(std::min(text.find_first_not_of(blank), text.size()));
    return text.substr(0, text.find(blank));
}

} // namespace

namespace scenariomatch
{

std::string_view withoutLeadingBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

std::string_view firstWord(std::string_view text)
{
    return firstPiece(text, ' ');
}

std::string_view textBefore(std::string_view text, char separator)
{
    return text.substr(0, text.find(separator));
}

std::string_view textAfter(std::string_view text, char separator)
{
    const std::size_t position = text.find(separator);
    return position == std::string_view::npos ? text : text.substr(position + 1);
}

std::size_t countParentheses(std::string_view text, std::size_t& depth)
{
    std::size_t end = 0;
    for (std::size_t i = 0; i < text.size() && depth != 0; ++i) {
        if (text[i] == '(') {
            ++depth;
            end = i + 1;
        } else if (text[i] == ')') {
            --depth;
            end = i + 1;
        }
    }
    return end;
}

std::string_view takeGroup(std::string_view& rest)
{
    std::size_t depth = 1;
    const std::string_view counted = rest.substr(0, countParentheses(rest, depth));
    rest.remove_prefix(counted.size());
    return counted.substr(0, counted.rfind(')'));
}

bool takeLine(std::string_view& text, std::string_view& line)
{
    if (text.empty()) {
        return false;
    }
    const std::size_t end = text.find('\n');
    line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return true;
}

void appendLine(std::string& declaration, std::string_view line)
{
    const std::string_view words = withoutLeadingBlanks(line);
    if (words.empty()) {
        return;
    }
    declaration.erase(declaration.find_last_not_of(' ') + 1);
    const bool isTight = declaration.empty() || declaration.back() == '(' ||
                         std::string_view("(),[").find(words.front()) != std::string_view::npos;
    if (!isTight) {
        declaration += ' ';
    }
    declaration += words;
}

} // namespace scenariomatch

void removeBeginSpaces(std::string& s)
{
    s.erase(0, s.find_first_not_of(' '));
}

void removeAllSpaces(std::string& s)
{
    s = std::string(firstPiece(s, ' '));
}

void removeAllTabulation(std::string& s)
{
    s = std::string(firstPiece(s, '\t'));
}

std::string getBetweenParentheses(std::string& s)
{
    std::string_view rest = s;
    std::string group(scenariomatch::takeGroup(rest));
    s.erase(0, s.size() - rest.size());
    return group;
}
