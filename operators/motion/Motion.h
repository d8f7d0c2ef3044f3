#pragma once

#include "operators/Values.h"

#include <map>
#include <memory>

// How a thing moves, told from the history of its position. The argument is the attribute itself
// (p->Position), never the result of a call:
//
//     speed(p->Position) > 1.5
//     stationary(b->Position, 10, 0.5)
//     crossedLeft(p->Position, w->StartPoint, w->EndPoint)
//
// A value remembers as many earlier positions as the parameter historySize says; with its default 1
// only the step from the frame before is known, and nothing that looks back farther can be
// answered. Times are those of the frames in which the positions were stored. An earlier position
// is passed over when it is no point with finite coordinates, and, where times matter, when its
// frame's time is not known (any more) or not before the current position's.
namespace scenariomatch
{

// The time stamps of the latest frames, by frame number.
using FrameTimes = std::map<int, std::shared_ptr<CSTimeStamp>>;

// speed(p), speed(p, seconds): distance per second, straight from the position before, or from the
// oldest one of the last `seconds`. No value without such a position.
CSPlainValue speed(Arguments arguments, const FrameTimes& times);
// displacement(p, seconds): straight distance from the oldest position of the last `seconds`.
CSPlainValue displacement(Arguments arguments, const FrameTimes& times);
// heading(p), heading(p, seconds): direction on the ground plane in degrees, 0 along x, 90 along y,
// below 360. From the same position as speed; no value when the thing has not moved.
CSPlainValue heading(Arguments arguments, const FrameTimes& times);
// stationary(p, seconds, radius): whether it has been within `radius` of where it is now, all the
// last `seconds` long. A position at least that old must be known, or the answer is no; the
// youngest of those counts too.
CSPlainValue isStationary(Arguments arguments, const FrameTimes& times);

// crossed(p, line), crossed(p, from, to): whether the step from the position before to the current
// one leads through the line to its other side, on the ground plane. The line is a list of two or
// more points, joined in order and not closed, or two points; left and right are as seen when
// looking along it.
//
// A position is never on the line: it is taken as a hair's breadth farther towards greater x, and
// by a much smaller one towards greater y. So every position is on one side for good, whichever
// step it begins or ends, and a walker who steps on the line, along it, or through one of its
// corners is counted once or not at all, as is right. A step that passes a folded line twice, there
// and back, has not crossed it.
CSPlainValue crossed(Arguments arguments);
// From its right side to its left.
CSPlainValue crossedLeft(Arguments arguments);
// From its left side to its right.
CSPlainValue crossedRight(Arguments arguments);

} // namespace scenariomatch
