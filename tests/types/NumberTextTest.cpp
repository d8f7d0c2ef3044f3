#include "types/NumberText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>
#include <clocale>
#include <cmath>
#include <locale>
#include <optional>
#include <string>

namespace scenariomatch
{
namespace
{

// Puts the process into a place with a decimal comma; false when the machine knows none.
bool setDecimalComma()
{
    const std::array names{"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"};
    return std::any_of(names.begin(), names.end(), [](const char* name) {
        return std::setlocale(LC_ALL, name) != nullptr;
    });
}

class DecimalComma : public std::numpunct<char>
{
protected:
    char do_decimal_point() const override { return ','; }
};

TEST(NumberText, StringToDoubleTakesTheLongestNumericPrefix)
{
    EXPECT_EQ(stringToDouble("1.5"), 1.5);
    EXPECT_EQ(stringToDouble("  -2.5e1 metres"), -25.0);
    EXPECT_EQ(stringToDouble("1,5"), 1.0);
    EXPECT_EQ(stringToDouble("0x10"), 16.0);
    EXPECT_EQ(stringToDouble("metres"), 0.0);
    EXPECT_EQ(stringToDouble(""), 0.0);
    EXPECT_EQ(stringToDouble("1e999"), HUGE_VAL);
    EXPECT_TRUE(std::isnan(stringToDouble("nan")));
}

TEST(NumberText, WholeNumberWantsTheWholeText)
{
    EXPECT_EQ(wholeNumber("1.5"), 1.5);
    EXPECT_EQ(wholeNumber("-7"), -7.0);
    EXPECT_EQ(wholeNumber(" 3"), 3.0);
    EXPECT_EQ(wholeNumber(".5"), 0.5);
    EXPECT_EQ(wholeNumber("3 "), std::nullopt);
    EXPECT_EQ(wholeNumber("3m"), std::nullopt);
    EXPECT_EQ(wholeNumber("1.5.2"), std::nullopt);
    EXPECT_EQ(wholeNumber("1e"), std::nullopt);
    EXPECT_EQ(wholeNumber("nan"), std::nullopt);
    EXPECT_EQ(wholeNumber("inf"), std::nullopt);
    EXPECT_EQ(wholeNumber(""), std::nullopt);
}

TEST(NumberText, StringToIntTakesThePrefixAndStaysWithinInt)
{
    EXPECT_EQ(stringToInt("42"), 42);
    EXPECT_EQ(stringToInt(" -7.9"), -7);
    EXPECT_EQ(stringToInt("12abc"), 12);
    EXPECT_EQ(stringToInt("abc"), 0);
    EXPECT_EQ(stringToInt(""), 0);
    EXPECT_EQ(stringToInt("0x10"), 0);
    EXPECT_EQ(stringToInt("99999999999"), INT_MAX);
    EXPECT_EQ(stringToInt("-99999999999"), INT_MIN);
    EXPECT_EQ(stringToInt("99999999999999999999999"), INT_MAX);
}

TEST(NumberText, IgnoresTheStreamLocale)
{
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    const std::optional<double> number = wholeNumber("1.5");
    const std::optional<double> comma = wholeNumber("1,5");
    std::locale::global(before);
    EXPECT_EQ(number, 1.5);
    EXPECT_EQ(comma, std::nullopt);
}

TEST(NumberText, IgnoresTheProcessLocale)
{
    if (!setDecimalComma()) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    const double number = stringToDouble("1.5");
    const std::optional<double> whole = wholeNumber("1.5");
    static_cast<void>(std::setlocale(LC_ALL, "C"));
    EXPECT_EQ(number, 1.5);
    EXPECT_EQ(whole, 1.5);
}

} // namespace
} // namespace scenariomatch
