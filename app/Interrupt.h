#pragma once

namespace scenariomatch
{

// From now on the first Ctrl-C (or SIGTERM) asks the program to end where it can, the second ends
// it at once.
void catchInterrupt();

// From now on a reader of our output that goes away, or a file that may not grow further, makes
// writing fail, which is told, and does not end the program.
void ignoreWriteSignals();

// Whether the user has asked to end.
bool isInterrupted();

} // namespace scenariomatch
