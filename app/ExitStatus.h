#pragma once

namespace scenariomatch
{

// What the program tells its caller with its exit status.
enum ExitStatus {
    kExitDone = 0,
    // The answer is no: problems were found, or nothing matched what was asked.
    kExitNo = 1,
    kExitUsage = 2,
    // A model, parameter or scene file cannot be used.
    kExitModel = 3,
    kExitTracks = 4,
    kExitPlugin = 5,
    kExitOutput = 6,
};

} // namespace scenariomatch
