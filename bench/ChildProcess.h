#pragma once

#include <string>
#include <vector>

namespace scenariomatch
{

// What a program has taken.
struct ChildUsage
{
    // 0 when all went well.
    int status = 0;
    double wallSeconds = 0.0;
    double processorSeconds = 0.0;
    double peakMebibytes = 0.0;
};

// Runs a program to its end, on one core, what it writes on standard output thrown away. The peak
// of its memory is at least this process's own, which is to be small therefore. Throws
// std::runtime_error where it cannot be started.
ChildUsage runChild(const std::vector<std::string>& command);

} // namespace scenariomatch
