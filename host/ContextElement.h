#pragma once

#include <string>
#include <vector>

namespace scenariomatch
{

// A corner of a context element, in the unit of the actors' positions.
struct Vertex3D
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

} // namespace scenariomatch

// One fixed element of the scene: a zone, a piece of equipment, a wall, a camera. A value.
struct ContextElement
{
    // "zone", "object", "wall" or anything else.
    std::string kind;
    std::string name;
    // "polygon", "circle" or anything else.
    std::string shape;
    // Corners in order; a circle's first vertex is its centre.
    std::vector<scenariomatch::Vertex3D> vertices;
    double height = 0.0;
    double radius = 0.0;
};
