#include "operators/space/Space.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace scenariomatch
{

namespace
{

using Ring = std::vector<CS3DDPoint>;

constexpr std::size_t kFewestCorners = 3;

bool isOnEdge(const Point& place, const CS3DDPoint& a, const CS3DDPoint& b)
{
    const double area = (b.m_x - a.m_x) * (place.y - a.m_y) - (b.m_y - a.m_y) * (place.x - a.m_x);
    return area == 0.0 && place.x >= std::min(a.m_x, b.m_x) && place.x <= std::max(a.m_x, b.m_x) &&
           place.y >= std::min(a.m_y, b.m_y) && place.y <= std::max(a.m_y, b.m_y);
}

// Whether the ray from the place towards greater x crosses the edge. The lower end of an edge
// belongs to it and the upper does not, so a ray through a corner counts once.
bool isCrossedByRay(const Point& place, const CS3DDPoint& a, const CS3DDPoint& b)
{
    if ((a.m_y <= place.y) == (b.m_y <= place.y)) {
        return false;
    }
    return place.x < a.m_x + (place.y - a.m_y) / (b.m_y - a.m_y) * (b.m_x - a.m_x);
}

bool isInside(const Point& place, const Ring& ring)
{
    if (ring.size() < kFewestCorners) {
        return false;
    }
    bool inside = false;
    const CS3DDPoint* previous = &ring.back();
    for (const CS3DDPoint& corner : ring) {
        if (isOnEdge(place, *previous, corner)) {
            return true;
        }
        if (isCrossedByRay(place, *previous, corner)) {
            inside = !inside;
        }
        previous = &corner;
    }
    return inside;
}

double squaredDistanceToEdge(const Point& place, const CS3DDPoint& a, const CS3DDPoint& b)
{
    const double dx = b.m_x - a.m_x;
    const double dy = b.m_y - a.m_y;
    const double squaredLength = dx * dx + dy * dy;
    double share = 0.0;
    if (squaredLength > 0.0) {
        share = ((place.x - a.m_x) * dx + (place.y - a.m_y) * dy) / squaredLength;
        share = std::clamp(share, 0.0, 1.0);
    }
    return squaredDistance(place, {a.m_x + share * dx, a.m_y + share * dy, 0.0, false});
}

std::optional<double> distanceToRing(const Point& place, const Ring& ring)
{
    if (ring.empty()) {
        return std::nullopt;
    }
    if (isInside(place, ring)) {
        return 0.0;
    }
    double nearest = std::numeric_limits<double>::infinity();
    const CS3DDPoint* previous = &ring.back();
    for (const CS3DDPoint& corner : ring) {
        nearest = std::min(nearest, squaredDistanceToEdge(place, *previous, corner));
        previous = &corner;
    }
    // The root of the least square is the least distance, rounded or not.
    return std::sqrt(nearest);
}

std::optional<double> distanceOf(const CSPlainValue& left, const CSPlainValue& right)
{
    const Point* leftPoint = point(left);
    const Point* rightPoint = point(right);
    if (leftPoint != nullptr && rightPoint != nullptr) {
        return distanceBetween(*leftPoint, *rightPoint);
    }
    if (leftPoint != nullptr) {
        const Ring* ring = points(right);
        return ring != nullptr ? distanceToRing(*leftPoint, *ring) : std::nullopt;
    }
    const Ring* ring = rightPoint != nullptr ? points(left) : nullptr;
    return ring != nullptr ? distanceToRing(*rightPoint, *ring) : std::nullopt;
}

// Whether the arguments are a point and a polygon, and the answer to whether it is inside holds.
// Mostly it does not; whether the polygon is one at all is looked at only where it does.
bool isAnswer(Arguments arguments, bool inside)
{
    if (arguments.size() != 2) {
        return false;
    }
    const Point* place = point(arguments[0]);
    const CS3DDPoints* ring = arguments[1].points();
    if (place == nullptr || ring == nullptr || ring->m_points.size() < kFewestCorners) {
        return false;
    }
    return isInside(*place, ring->m_points) == inside && areFinite(ring->m_points);
}

} // namespace

CSPlainValue distance(Arguments arguments)
{
    return arguments.size() == 2 ? measure(distanceOf(arguments[0], arguments[1])) : CSPlainValue();
}

CSPlainValue isIn(Arguments arguments)
{
    return relation(isAnswer(arguments, true));
}

CSPlainValue isOut(Arguments arguments)
{
    return relation(isAnswer(arguments, false));
}

CSPlainValue isNear(Arguments arguments)
{
    if (arguments.size() != 3) {
        return relation(false);
    }
    const auto between = distanceOf(arguments[0], arguments[1]);
    const auto limit = number(arguments[2]);
    return relation(between && limit && *between <= *limit);
}

} // namespace scenariomatch
