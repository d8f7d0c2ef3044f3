#pragma once

#include "operators/Values.h"

namespace scenariomatch
{

// 1 when the step leads through the line from its right to its left side, -1 the other way round, 0
// when it does not pass. On the ground plane; the rule for positions on the line is told in
// Motion.h.
int passage(const Point& from, const Point& to, const Point& lineBegin, const Point& lineEnd);

// The sum over the pieces of a line of several points: what one piece adds when a step passes a
// fold there and back, another takes away.
int passage(const Point& from, const Point& to, const std::vector<CS3DDPoint>& line);

} // namespace scenariomatch
