#pragma once

#include "host/ContextElement.h"

#include <string>
#include <utility>
#include <vector>

namespace scenariomatch
{

// An object of the scene as recognition knows it, and its outline on the ground.
struct PlanObject
{
    // The host's identifier; tracked objects may have the same.
    int id = 0;
    // "Zone", "Wall", "Equipment" or "Camera".
    std::string type;
    std::string name;
    bool isClosed = true;
    // Corners; of a circle those of a polygon that looks like one.
    std::vector<std::pair<double, double>> shape;
};

std::vector<PlanObject> sceneObjects(const std::vector<ContextElement>& context);

// Whether objects of the type are tracked; all others are of the scene.
bool isTracked(const std::string& type);

// The larger side of the ground that the objects cover; 0 without any.
double sideOf(const std::vector<PlanObject>& objects);

} // namespace scenariomatch
