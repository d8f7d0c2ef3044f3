#pragma once

#include "types/CSPlainValue.h"

#include <optional>
#include <vector>

namespace scenariomatch
{

// The place on a zone's border that is nearest to a point, on the ground plane.
struct NearestBorder
{
    double x = 0.0;
    double y = 0.0;
    double distance = 0.0;
};

// Nothing where the zone has no points or a coordinate is not finite.
std::optional<NearestBorder>
nearestBorder(const CSPlainValue::Position& place, const std::vector<CS3DDPoint>& zone);

// Half of the zone's greatest width or height: what a distance to it is small or large against.
double halfSize(const std::vector<CS3DDPoint>& zone);

} // namespace scenariomatch
