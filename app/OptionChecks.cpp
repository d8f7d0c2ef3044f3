#include "app/OptionChecks.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <system_error>

namespace scenariomatch
{

CLI::Validator numberBetween(double least, double most, const std::string& range)
{
    const auto fault = [least, most, range](const std::string& text) {
        double value = 0.0;
        const char* const end = text.data() + text.size();
        const auto [last, error] = std::from_chars(text.data(), end, value);
        // What is no number at all, NaN, is not within any bounds.
        const bool isGood = error == std::errc() && last == end && value >= least && value <= most;
        return isGood ? std::string() : fmt::format("needs {}, not \"{}\"", range, text);
    };
    return {fault, ""};
}

CLI::Validator oneOf(const std::vector<std::string>& names)
{
    const auto fault = [names](const std::string& text) {
        const bool isKnown = std::find(names.begin(), names.end(), text) != names.end();
        return isKnown ? std::string()
                       : fmt::format("\"{}\" is none of {}", text, fmt::join(names, ", "));
    };
    return {fault, ""};
}

CLI::Validator notEmpty()
{
    const auto fault = [](const std::string& text) {
        return text.empty() ? std::string("needs a name, not \"\"") : std::string();
    };
    return {fault, ""};
}

} // namespace scenariomatch
