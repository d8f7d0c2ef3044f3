#pragma once

#include <string>

namespace scenariomatch
{

// How thoroughly to measure; the defaults are those of a full run.
struct BenchOptions
{
    // How often the same frames are gone through.
    int passes = 5;
    // How many frames there are; a minute of them by default.
    int frames = 1500;
    // How many minutes the long run takes; an even number.
    int minutes = 60;
    // A pass that takes longer than this stops early.
    double secondsPerPass = 20.0;
};

// Set before the benchmarks run.
BenchOptions& benchOptions();

} // namespace scenariomatch
