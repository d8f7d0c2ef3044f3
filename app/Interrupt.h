#pragma once

namespace scenariomatch
{

// From now on the first Ctrl-C (or SIGTERM) asks the program to end where it can, the second ends
// it at once. A broken pipe is an error of writing and no signal.
void catchInterrupt();

// Whether the user has asked to end.
bool isInterrupted();

} // namespace scenariomatch
