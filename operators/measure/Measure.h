#pragma once

#include "operators/Values.h"

// Seconds of intervals:
//
//     duration(c1->Interval) >= 2
//     gap(c1->Interval, c2->Interval) < 10
//
// An interval without start or end, or one that ends before it starts, has no value.
namespace scenariomatch
{

// From start to end.
CSPlainValue duration(Arguments arguments);
// From the end of the first to the start of the second; negative when the second starts earlier.
CSPlainValue gap(Arguments arguments);

} // namespace scenariomatch
