#include "bench/BenchOptions.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <iostream>
#include <string_view>
#include <vector>

namespace
{

using scenariomatch::BenchOptions;

template <typename Number>
bool readNumber(std::string_view argument, std::string_view name, Number& number)
{
    if (argument.substr(0, name.size()) != name) {
        return false;
    }
    const char* const end = argument.data() + argument.size();
    return std::from_chars(argument.data() + name.size(), end, number).ptr == end;
}

// Takes our own options out of the arguments; the others are the benchmark library's.
void readOptions(std::vector<char*>& arguments)
{
    BenchOptions& options = scenariomatch::benchOptions();
    std::erase_if(arguments, [&options](const char* argument) {
        return readNumber(argument, "--passes=", options.passes) ||
               readNumber(argument, "--frames=", options.frames) ||
               readNumber(argument, "--minutes=", options.minutes) ||
               readNumber(argument, "--seconds-per-pass=", options.secondsPerPass);
    });
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<char*> arguments(argv, argv + argc);
    readOptions(arguments);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
