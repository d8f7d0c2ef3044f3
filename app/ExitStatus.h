#pragma once

namespace scenariomatch
{

// What the program tells its caller with its exit status.
constexpr int kExitDone = 0;
// The answer is no: problems were found, or nothing matched what was asked.
constexpr int kExitNo = 1;
constexpr int kExitUsage = 2;
// A model, parameter, scene or object-type file cannot be used.
constexpr int kExitModel = 3;
constexpr int kExitTracks = 4;
constexpr int kExitPlugin = 5;
constexpr int kExitOutput = 6;

} // namespace scenariomatch
