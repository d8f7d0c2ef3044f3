#include "types/NumberText.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <locale>
#include <sstream>

namespace scenariomatch
{

namespace
{

locale_t cLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

} // namespace

double stringToDouble(const std::string& text)
{
    return strtod_l(text.c_str(), nullptr, cLocale());
}

std::optional<double> wholeNumber(const std::string& text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double number = 0.0;
    stream >> number;
    if (stream.fail() || !stream.eof()) {
        return std::nullopt;
    }
    return number;
}

int stringToInt(const std::string& text)
{
    const long number = std::strtol(text.c_str(), nullptr, 10);
    constexpr long kLow = std::numeric_limits<int>::min();
    constexpr long kHigh = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(number, kLow, kHigh));
}

} // namespace scenariomatch
