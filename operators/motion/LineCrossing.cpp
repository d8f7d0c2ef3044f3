#include "operators/motion/LineCrossing.h"

namespace scenariomatch
{

namespace
{

// Twice the signed area of the triangle: positive where c lies to the left of the line from a to b.
double area(const Point& a, const Point& b, const Point& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Whether a walker's position is on the left of the line. On the line itself the hair's breadth
// decides: to the right of a line that leads upwards, to the left of one that leads downwards; the
// smaller one decides for a level line.
bool isLeft(const Point& begin, const Point& end, const Point& walker)
{
    const double side = area(begin, end, walker);
    if (side != 0.0) {
        return side > 0.0;
    }
    return begin.y != end.y ? end.y < begin.y : end.x > begin.x;
}

// Whether a corner of the line is on the left of a walker's step. Moving the step by a hair moves
// the corner, seen from it, the other way.
bool isCornerLeft(const Point& from, const Point& to, const Point& corner)
{
    const double side = area(from, to, corner);
    if (side != 0.0) {
        return side > 0.0;
    }
    return from.y != to.y ? to.y > from.y : to.x < from.x;
}

Point planePoint(const CS3DDPoint& point)
{
    return {point.m_x, point.m_y, 0.0, false};
}

} // namespace

int passage(const Point& from, const Point& to, const Point& lineBegin, const Point& lineEnd)
{
    const bool endsLeft = isLeft(lineBegin, lineEnd, to);
    if (isLeft(lineBegin, lineEnd, from) == endsLeft) {
        return 0;
    }
    if (isCornerLeft(from, to, lineBegin) == isCornerLeft(from, to, lineEnd)) {
        return 0;
    }
    return endsLeft ? 1 : -1;
}

int passage(const Point& from, const Point& to, const std::vector<CS3DDPoint>& line)
{
    int sum = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
        sum += passage(from, to, planePoint(line[i - 1]), planePoint(line[i]));
    }
    return sum;
}

} // namespace scenariomatch
