#include "app/JsonNumbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace scenariomatch
{

namespace
{

namespace json = simdjson::ondemand;

constexpr double kWholeLimit = 9'007'199'254'740'992.0;
// The JSON library miscounts the digits of some numbers that are longer.
constexpr std::size_t kLongNumber = 19;

bool isBroken(simdjson::error_code error)
{
    return error != simdjson::SUCCESS && error != simdjson::INCORRECT_TYPE &&
           error != simdjson::NUMBER_ERROR;
}

// NaN and Infinity are no JSON, but common programs write them.
bool isNotFiniteWord(std::string_view token)
{
    return token.starts_with("NaN") || token.starts_with("nan") || token.starts_with("Inf") ||
           token.starts_with("inf") || token.starts_with("-Inf") || token.starts_with("-inf");
}

JsonOutcome readNumber(json::value& value, double& number)
{
    const std::string_view token = value.raw_json_token();
    const simdjson::error_code error = value.get_double().get(number);
    if (error == simdjson::SUCCESS) {
        if (token.size() > kLongNumber) {
            std::from_chars(token.data(), token.data() + token.size(), number);
        }
        return JsonOutcome::Good;
    }
    if (token.starts_with("null")) {
        return JsonOutcome::Missing;
    }
    // A number that JSON allows and that is too great for a double.
    const bool isTooGreat =
        error == simdjson::NUMBER_ERROR && token.find_first_of("eE") != std::string_view::npos;
    return isTooGreat || isNotFiniteWord(token) ? JsonOutcome::NotFinite : JsonOutcome::Wrong;
}

constexpr std::size_t kMostDigits = 15;

constexpr std::array<double, kMostDigits + 1> kPowersOfTen{
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Adds the digits at the text to the number, which wraps when they are many. Returns their end.
const char* readDigits(const char* text, std::uint64_t& number)
{
    while (*text >= '0' && *text <= '9') {
        number = number * 10 + static_cast<std::uint64_t>(*text - '0');
        ++text;
    }
    return text;
}

// Reads a number as most tracks have them: a sign, up to 15 digits, a point among them. Returns
// what is behind it; null when it is written in any other way, or is none. Digits and power of ten
// are exact as doubles, and so their quotient is the nearest one.
const char* readPlainNumber(const char* text, double& number)
{
    const bool isNegative = *text == '-';
    const char* const first = isNegative ? text + 1 : text;
    std::uint64_t digits = 0;
    const char* end = readDigits(first, digits);
    const auto whole = static_cast<std::size_t>(end - first);
    std::size_t fraction = 0;
    if (*end == '.') {
        const char* const second = end + 1;
        end = readDigits(second, digits);
        fraction = static_cast<std::size_t>(end - second);
        if (fraction == 0) {
            return nullptr;
        }
    }
    const bool hasLeadingZero = whole > 1 && *first == '0';
    if (whole == 0 || hasLeadingZero || whole + fraction > kMostDigits) {
        return nullptr;
    }
    number = static_cast<double>(digits) / kPowersOfTen[fraction];
    number = isNegative ? -number : number;
    return end;
}

const char* skipBlanks(const char* text)
{
    while (*text == ' ') {
        ++text;
    }
    return text;
}

// Reads the list at the text when all of it is as expected.
bool readPlainNumbers(const char* text, std::span<double> numbers)
{
    char before = '[';
    for (double& number : numbers) {
        if (*text != before) {
            return false;
        }
        text = readPlainNumber(skipBlanks(text + 1), number);
        if (text == nullptr) {
            return false;
        }
        before = ',';
    }
    return *text == ']';
}

} // namespace

JsonOutcome readWhole(json::value& value, std::int64_t& number)
{
    if (value.get_int64().get(number) == simdjson::SUCCESS) {
        return JsonOutcome::Good;
    }
    double real = 0.0;
    const JsonOutcome outcome = readNumber(value, real);
    if (outcome != JsonOutcome::Good) {
        return outcome;
    }
    if (real != std::floor(real)) {
        return JsonOutcome::Wrong;
    }
    number = static_cast<std::int64_t>(std::max(-kWholeLimit, std::min(real, kWholeLimit)));
    return JsonOutcome::Good;
}

JsonOutcome readNumbers(json::value& value, std::span<double> numbers)
{
    if (readPlainNumbers(value.raw_json_token().data(), numbers)) {
        return JsonOutcome::Good;
    }
    json::array list;
    const simdjson::error_code error = value.get_array().get(list);
    if (error != simdjson::SUCCESS) {
        bool isNull = false;
        if (isBroken(error)) {
            return JsonOutcome::Broken;
        }
        return value.is_null().get(isNull) == simdjson::SUCCESS && isNull ? JsonOutcome::Missing
                                                                          : JsonOutcome::Wrong;
    }
    std::size_t count = 0;
    JsonOutcome worst = JsonOutcome::Good;
    for (auto element : list) {
        json::value number;
        if (element.get(number) != simdjson::SUCCESS) {
            return JsonOutcome::Broken;
        }
        double ignored = 0.0;
        const JsonOutcome outcome =
            readNumber(number, count < numbers.size() ? numbers[count] : ignored);
        if (outcome != JsonOutcome::Good && worst == JsonOutcome::Good) {
            worst = outcome == JsonOutcome::NotFinite ? outcome : JsonOutcome::Wrong;
        }
        ++count;
    }
    return worst == JsonOutcome::Good && count != numbers.size() ? JsonOutcome::Wrong : worst;
}

} // namespace scenariomatch
