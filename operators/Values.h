#pragma once

#include "types/CSAllTypes.h"
#include "types/CSPlainValue.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <vector>

// How the standard operators read their arguments and make their results.
//
// An argument can be anything: missing, of another type, or a converted value whose tag is not its
// class's. Every reader answers "nothing" for what it cannot use, so an operator asks for what it
// needs and gives up when it does not get it: a relation is false then, a measure has no value.
//
// Readers are called for every candidate in every frame: they are short, inline and never allocate.
namespace scenariomatch
{

using Arguments = std::span<const CSPlainValue>;

// A position: in space, or in the ground plane alone (z is 0 then).
using Point = CSPlainValue::Position;

inline bool isFinite(double x, double y, double z)
{
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(z);
}

// INT and DOUBLE; NaN is no number.
inline std::optional<double> number(const CSPlainValue& value)
{
    return value.isNumber() && !std::isnan(value.m_number) ? std::optional(value.m_number)
                                                           : std::nullopt;
}

// BOOL: m_truth, with the confidence in m_number; a truth value whose confidence is NaN is none.
inline bool isTruth(const CSPlainValue& value)
{
    return value.isBool() && !std::isnan(value.m_number);
}

// INTERVAL with start and end.
inline bool hasBothEnds(const CSPlainValue& value)
{
    return value.isInterval() && value.m_interval.start != nullptr &&
           value.m_interval.end != nullptr;
}

// The four kinds of points, with finite coordinates; else null. Belongs to the argument.
inline const Point* point(const CSPlainValue& value)
{
    if (!value.isPoint()) {
        return nullptr;
    }
    const Point& found = value.m_point;
    return isFinite(found.x, found.y, found.z) ? &found : nullptr;
}

const Point* point(const CSPlainValue&& value) = delete;

inline bool areFinite(const std::vector<CS3DDPoint>& list)
{
    return std::all_of(list.begin(), list.end(), [](const CS3DDPoint& vertex) {
        return isFinite(vertex.m_x, vertex.m_y, vertex.m_z);
    });
}

// A list of points, all with finite coordinates; else null.
inline const std::vector<CS3DDPoint>* points(const CSPlainValue& value)
{
    const CS3DDPoints* list = value.points();
    return list != nullptr && areFinite(list->m_points) ? &list->m_points : nullptr;
}

// The type tags that the readers of the same names accept.
std::vector<std::string> numberTypes();
std::vector<std::string> pointTypes();
// Points and lists of points.
std::vector<std::string> placeTypes();
// Those of all values.
std::vector<std::string> anyTypes();

// Straight distance: in space between two positions that have a height, else in the ground plane.
inline double squaredDistance(const Point& a, const Point& b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double dz = a.hasHeight && b.hasHeight ? b.z - a.z : 0.0;
    return dx * dx + dy * dy + dz * dz;
}

inline double distanceBetween(const Point& a, const Point& b)
{
    return std::sqrt(squaredDistance(a, b));
}

// Seconds between two time stamps, as exact as their milliseconds: 0.04 is the 0.04 that a model
// says.
inline double secondsBetween(const CSTimeStamp& from, const CSTimeStamp& to)
{
    constexpr double kMillisecondsPerSecond = 1000.0;
    const double milliseconds = (to.m_seconds - from.m_seconds) * kMillisecondsPerSecond +
                                (to.m_milliseconds - from.m_milliseconds);
    return milliseconds / kMillisecondsPerSecond;
}

// The result of a relation, with confidence 1.
inline CSPlainValue relation(bool holds)
{
    return CSPlainValue::boolean(holds);
}

// The result of a measure; no value for nothing and for what is no finite number.
inline CSPlainValue measure(std::optional<double> value)
{
    return value && std::isfinite(*value) ? CSPlainValue::number(*value) : CSPlainValue();
}

} // namespace scenariomatch
