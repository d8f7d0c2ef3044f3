// A library that is no plug-in.
#include "tests/plugins/LeavesATrace.h"

namespace
{

const int kTrace = leaveTrace(LIBRARY_NAME);

} // namespace

extern "C" __attribute__((visibility("default"))) int answer();

int answer()
{
    return kTrace;
}
