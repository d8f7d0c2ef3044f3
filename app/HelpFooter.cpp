#include "app/HelpFooter.h"

#include <fmt/format.h>
#include <sstream>

namespace scenariomatch
{

namespace
{

constexpr std::size_t kWidth = 80;

// Indented lines that are not longer than the width, where words allow it.
std::string wrapped(const std::string& text)
{
    std::istringstream words(text);
    std::string lines;
    std::string line;
    for (std::string word; words >> word;) {
        if (!line.empty() && line.size() + word.size() + 3 > kWidth) {
            lines += "  " + line + "\n";
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return lines + "  " + line + "\n";
}

} // namespace

std::string footerText(const HelpFooter& footer)
{
    std::string text = "Description:\n" + wrapped(footer.description) + "\n";
    text += footer.environment.empty() ? "" : "Environment:\n";
    for (const HelpVariable& variable : footer.environment) {
        text += fmt::format("  {}  {}\n", variable.name, variable.meaning);
    }
    text += footer.environment.empty() ? "" : "\n";
    return text + fmt::format("Examples:\n  {}", fmt::join(footer.examples, "\n  "));
}

std::vector<std::string> linesBelow(const std::string& footer, std::string_view heading)
{
    std::vector<std::string> found;
    std::istringstream lines(footer);
    bool isBelow = false;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  ")) {
            isBelow = line == fmt::format("{}:", heading);
        } else if (isBelow) {
            found.push_back(line.substr(2));
        }
    }
    return found;
}

} // namespace scenariomatch
