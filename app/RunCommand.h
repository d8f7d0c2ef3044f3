#pragma once

#include "app/RunOptions.h"

#include <iosfwd>

namespace scenariomatch
{

// Recognises events in tracks. Events go to out or to a file, talk to talk; while it runs, what the
// plug-in writes to the program's standard output goes to the trace. Returns the exit status.
int runRun(const RunOptions& options, std::ostream& out, std::ostream& talk);

} // namespace scenariomatch
