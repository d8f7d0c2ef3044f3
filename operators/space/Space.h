#pragma once

#include "operators/Values.h"

// Where things are, in the unit of the positions:
//
//     p->Position in z->Vertices
//     distance(p->Position, e->Position) < 1.5
//     near(p->Position, q->Position, 2)
//
// A polygon is a list of points (3DDPOINTS) taken as a closed ring on the ground plane: heights do
// not count, the last point is joined to the first, a ring that crosses itself is inside where a
// line outwards crosses it an odd number of times. Its border is inside. A ring of fewer than three
// points encloses nothing and leaves nothing out: `in` and `out` are both false; a distance to it
// is the distance to its point or line.
namespace scenariomatch
{

// Between two points: in space when both have a height, else on the ground plane. Between a point
// and a polygon (in either order): 0 inside, else the distance to the border.
CSPlainValue distance(Arguments arguments);
CSPlainValue isIn(Arguments arguments);
CSPlainValue isOut(Arguments arguments);
// Whether the distance of the first two is at most the third.
CSPlainValue isNear(Arguments arguments);

} // namespace scenariomatch
