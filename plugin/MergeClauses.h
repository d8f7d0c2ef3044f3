#pragma once

#include "plugin/StreamText.h"

class CSEngine;

namespace scenariomatch
{

// Lets every instance that was recognised in the current frame, and whose model has a clause
//
//     Miscellaneous((MergeStartEnd, (Start Earlier)(Threshold 10)))
//
// take over the start of the oldest instance of the model Earlier that ended at most 10 seconds ago
// and involves the same physical objects. The start pointer is replaced, never the stamp. What is
// compared is told in the trace.
void mergeByClauses(const CSEngine& engine, StreamText& trace);

} // namespace scenariomatch
