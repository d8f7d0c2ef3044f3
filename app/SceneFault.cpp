#include "app/SceneFault.h"

#include "app/PrintableText.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>

namespace scenariomatch
{

namespace
{

// Line of the text, counted from 0, with control characters as blanks.
std::string sourceLine(const std::string& text, int line)
{
    std::size_t begin = 0;
    for (int i = 0; i < line && begin < text.size(); ++i) {
        begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
    }
    std::string source = text.substr(begin, text.find('\n', begin) - begin);
    std::replace_if(source.begin(), source.end(), isControl, ' ');
    return source;
}

// Bytes that begin a character of UTF-8 text.
std::size_t charactersOf(const std::string& text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char character) {
        return (static_cast<unsigned char>(character) & 0xC0U) != 0x80U;
    }));
}

} // namespace

std::string
describeFault(const std::string& text, const std::string& fileName, const SceneFault& fault)
{
    constexpr std::size_t kBefore = 80;
    constexpr std::size_t kShown = 120;
    const int line = std::max(fault.mark.line, 0);
    const auto column = static_cast<std::size_t>(std::max(fault.mark.column, 0));
    const std::string source = sourceLine(text, line);
    const std::size_t cut = std::min(column > kBefore ? column - kBefore : 0, source.size());
    const std::string shown = source.substr(cut, kShown);
    const std::string before = shown.substr(0, std::min(column - cut, shown.size()));
    return fmt::format(
        "{}:{}:{}: {}\n{}\n{}^\n",
        fileName,
        line + 1,
        column + 1,
        fault.reason,
        shown,
        std::string(charactersOf(before), ' '));
}

} // namespace scenariomatch
