#include "app/report/SceneObjects.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace scenariomatch
{

namespace
{

std::string typeOf(const ContextElement& element)
{
    const bool isPolygon = element.shape == "polygon";
    if (element.kind == "zone" && isPolygon) {
        return "Zone";
    }
    if (element.kind == "wall" && isPolygon) {
        return "Wall";
    }
    const bool isObject = element.kind == "object" && (isPolygon || element.shape == "circle");
    return isObject ? "Equipment" : "Camera";
}

std::vector<std::pair<double, double>> shapeOf(const ContextElement& element)
{
    std::vector<std::pair<double, double>> shape;
    if (element.shape == "circle" && !element.vertices.empty()) {
        constexpr int kCorners = 24;
        const Vertex3D& centre = element.vertices.front();
        for (int i = 0; i < kCorners; ++i) {
            const double angle = 2.0 * std::numbers::pi * i / kCorners;
            shape.emplace_back(
                centre.x + element.radius * std::cos(angle),
                centre.y + element.radius * std::sin(angle));
        }
        return shape;
    }
    for (const Vertex3D& vertex : element.vertices) {
        shape.emplace_back(vertex.x, vertex.y);
    }
    return shape;
}

} // namespace

// Identifiers as the process gives them: what is not known, such as a camera, gives its own away.
std::vector<PlanObject> sceneObjects(const std::vector<ContextElement>& context)
{
    std::vector<PlanObject> objects;
    int id = 0;
    for (const ContextElement& element : context) {
        const std::string type = typeOf(element);
        objects.push_back({id, type, element.name, type != "Wall", shapeOf(element)});
        id += type == "Camera" ? 0 : 1;
    }
    return objects;
}

bool isTracked(const std::string& type)
{
    return type == "Person" || type == "Group" || type == "Mobile";
}

double sideOf(const std::vector<PlanObject>& objects)
{
    std::vector<double> xs;
    std::vector<double> ys;
    for (const PlanObject& object : objects) {
        for (const auto& [x, y] : object.shape) {
            xs.push_back(x);
            ys.push_back(y);
        }
    }
    if (xs.empty()) {
        return 0.0;
    }
    const auto [left, right] = std::minmax_element(xs.begin(), xs.end());
    const auto [lowest, highest] = std::minmax_element(ys.begin(), ys.end());
    return std::max(*right - *left, *highest - *lowest);
}

} // namespace scenariomatch
