#pragma once

#include <cstdint>
#include <simdjson.h>
#include <span>

namespace scenariomatch
{

// What reading a number or a list of numbers came to.
enum class JsonOutcome {
    Good,
    // The value is null.
    Missing,
    // The value is there and is not what it has to be; the text goes on behind it.
    Wrong,
    // A number too great for a double, or a word for a number that JSON does not have.
    NotFinite,
    // The text is no JSON.
    Broken,
};

// A whole number, also one written with a fraction of 0; numbers beyond 2^53 become that.
JsonOutcome readWhole(simdjson::ondemand::value& value, std::int64_t& number);

// A list of exactly as many numbers.
JsonOutcome readNumbers(simdjson::ondemand::value& value, std::span<double> numbers);

} // namespace scenariomatch
