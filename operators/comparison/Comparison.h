#pragma once

#include "operators/Values.h"

// Comparison of two values:
//
//     p->Posture = 401
//     distance(p->Position, q->Position) < 2
//     e->Name != Desk
//
// Comparable are two numbers (INT and DOUBLE mix), two texts (byte by byte) and two time stamps.
// For equality also two truth values (their confidences do not count), two points of the same
// dimension, two lists of points, and two intervals (by their times). Values of unlike kinds, a
// missing value and NaN make every comparison false, `!=` too.
namespace scenariomatch
{

CSPlainValue isEqual(Arguments arguments);
CSPlainValue isDifferent(Arguments arguments);
CSPlainValue isLess(Arguments arguments);
CSPlainValue isLessOrEqual(Arguments arguments);
CSPlainValue isGreater(Arguments arguments);
CSPlainValue isGreaterOrEqual(Arguments arguments);

// The type tags that can be compared by order, and those that can be compared for equality.
std::vector<std::string> orderedTypes();
std::vector<std::string> equalityTypes();

} // namespace scenariomatch
