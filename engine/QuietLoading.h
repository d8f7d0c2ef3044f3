#pragma once

#include "types/Export.h"

namespace scenariomatch
{

// Keeps Qt from printing warnings of its own about files that are no sound plug-ins, while it
// lives; whatever else is logged goes where it went before. A handler that a plug-in installs
// meanwhile stays installed, and may pass messages on to the one that it found.
//
// Several may live at a time, in several threads: the last one to die lifts the silence.
class CS_EXPORT QuietLoading
{
public:
    QuietLoading();
    QuietLoading(const QuietLoading&) = delete;
    QuietLoading(QuietLoading&&) = delete;
    QuietLoading& operator=(const QuietLoading&) = delete;
    QuietLoading& operator=(QuietLoading&&) = delete;
    ~QuietLoading();
};

} // namespace scenariomatch
