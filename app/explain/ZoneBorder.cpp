#include "app/explain/ZoneBorder.h"

#include <algorithm>
#include <cmath>

namespace scenariomatch
{

namespace
{

NearestBorder
nearestOnEdge(const CSPlainValue::Position& place, const CS3DDPoint& a, const CS3DDPoint& b)
{
    const double dx = b.m_x - a.m_x;
    const double dy = b.m_y - a.m_y;
    const double squaredLength = dx * dx + dy * dy;
    double share = 0.0;
    if (squaredLength > 0.0) {
        share = ((place.x - a.m_x) * dx + (place.y - a.m_y) * dy) / squaredLength;
        share = std::clamp(share, 0.0, 1.0);
    }
    const double x = a.m_x + share * dx;
    const double y = a.m_y + share * dy;
    return {x, y, std::hypot(place.x - x, place.y - y)};
}

} // namespace

std::optional<NearestBorder>
nearestBorder(const CSPlainValue::Position& place, const std::vector<CS3DDPoint>& zone)
{
    std::optional<NearestBorder> nearest;
    for (std::size_t i = 0; i < zone.size(); ++i) {
        const NearestBorder here =
            nearestOnEdge(place, zone[i == 0 ? zone.size() - 1 : i - 1], zone[i]);
        if (!std::isfinite(here.distance)) {
            return std::nullopt;
        }
        if (!nearest || here.distance < nearest->distance) {
            nearest = here;
        }
    }
    return nearest;
}

double halfSize(const std::vector<CS3DDPoint>& zone)
{
    if (zone.empty()) {
        return 0.0;
    }
    const auto extent = [&zone](double CS3DDPoint::*coordinate) {
        const auto [least, most] = std::minmax_element(
            zone.begin(), zone.end(), [coordinate](const CS3DDPoint& a, const CS3DDPoint& b) {
                return a.*coordinate < b.*coordinate;
            });
        return *most.*coordinate - *least.*coordinate;
    };
    return std::max(extent(&CS3DDPoint::m_x), extent(&CS3DDPoint::m_y)) / 2.0;
}

} // namespace scenariomatch
