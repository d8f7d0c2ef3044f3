#include "app/JsonNumbers.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <charconv>
#include <cstddef>
#include <random>
#include <string>

namespace scenariomatch
{

namespace
{

using Numbers = std::array<double, 3>;

JsonOutcome readList(const std::string& list, Numbers& numbers)
{
    const simdjson::padded_string text("{\"list\":" + list + ",\"behind\":1}");
    simdjson::ondemand::parser parser;
    simdjson::ondemand::document document;
    simdjson::ondemand::value value;
    EXPECT_EQ(parser.iterate(text).get(document), simdjson::SUCCESS);
    EXPECT_EQ(document["list"].get(value), simdjson::SUCCESS);
    const JsonOutcome outcome = readNumbers(value, numbers);
    std::int64_t behind = 0;
    EXPECT_EQ(document["behind"].get(behind), simdjson::SUCCESS) << list;
    return outcome;
}

void expectNumber(const std::string& number)
{
    double expected = 0.0;
    std::from_chars(number.data(), number.data() + number.size(), expected);
    Numbers numbers{};
    EXPECT_EQ(readList("[1," + number + ",2.5]", numbers), JsonOutcome::Good) << number;
    EXPECT_EQ(numbers[0], 1.0);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(numbers[1]), std::bit_cast<std::uint64_t>(expected))
        << number;
    EXPECT_EQ(numbers[2], 2.5);
}

} // namespace

TEST(JsonNumbers, ReadsNumbersOfEveryLength)
{
    const std::string digits = "7012345678901234567890";
    for (std::size_t length = 1; length <= digits.size(); ++length) {
        const std::string whole = digits.substr(0, length);
        expectNumber(whole);
        expectNumber("-" + whole);
        expectNumber(whole + "e-3");
        for (std::size_t point = 1; point < length; ++point) {
            expectNumber(whole.substr(0, point) + "." + whole.substr(point));
        }
        expectNumber("0." + whole);
        expectNumber("-0.000" + whole);
    }
}

TEST(JsonNumbers, ReadsZerosWithTheirSign)
{
    for (const char* zero : {"0", "-0", "0.0", "-0.00", "0e0", "-0E+5"}) {
        expectNumber(zero);
    }
}

TEST(JsonNumbers, ReadsTheNearestDoubleOfRandomNumbers)
{
    std::mt19937 random(20); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same numbers every time
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (int i = 0; i < 3000; ++i) {
        std::string number = std::to_string(below(9) + 1);
        for (std::size_t digit = below(17); digit > 0; --digit) {
            number += static_cast<char>('0' + below(10));
        }
        number.insert(1 + below(number.size()), below(2) == 0 ? "" : ".");
        number += number.back() == '.' ? "5" : "";
        expectNumber(number);
    }
}

TEST(JsonNumbers, TakesBlanksWhereverJsonAllowsThem)
{
    for (const char* list : {"[1,-2.5,3]", "[ 1, -2.5, 3]", "[1 ,-2.5 ,3 ]", "[\t1,\t-2.5,\r3]"}) {
        Numbers numbers{};
        EXPECT_EQ(readList(list, numbers), JsonOutcome::Good) << list;
        EXPECT_EQ(numbers, (Numbers{1.0, -2.5, 3.0})) << list;
    }
}

TEST(JsonNumbers, RefusesListsThatAreNotAsManyNumbers)
{
    for (const char* list :
         {"[1,2]",      "[1,2,3,4]", "[]",       "[1,2,\"3\"]", "[1,2,null]",  "[1,2,[3]]",
          "[1,2,01]",   "[1,2,.5]",  "[1,2,3.]", "[1,2,+3]",    "[1,2,-]",     "[1,2,3.4.5]",
          "[1,2,0x10]", "[1,2,--3]", "[1,2,3a]", "[1,00,3]",    "[1,-01.5,3]", "\"[1,2,3]\"",
          "{\"a\":1}",  "1",         "true"}) {
        Numbers numbers{};
        EXPECT_EQ(readList(list, numbers), JsonOutcome::Wrong) << list;
    }
}

TEST(JsonNumbers, TellsWhatIsMissingAndWhatIsNotFinite)
{
    Numbers numbers{};
    EXPECT_EQ(readList("null", numbers), JsonOutcome::Missing);
    EXPECT_EQ(readList("[1,2,1e999]", numbers), JsonOutcome::NotFinite);
    EXPECT_EQ(readList("[1,NaN,3]", numbers), JsonOutcome::NotFinite);
    EXPECT_EQ(readList("[-Infinity,2,3]", numbers), JsonOutcome::NotFinite);
}

} // namespace scenariomatch
