#include "app/GroundMapper.h"

#include <cmath>

namespace scenariomatch
{

namespace
{

// False for a NaN as well.
bool isUsable(double value)
{
    return std::abs(value) <= GroundMapper::kGreatest;
}

int rounded(double value)
{
    const int whole = static_cast<int>(value);
    return static_cast<double>(whole) == value ? whole : static_cast<int>(std::lround(value));
}

} // namespace

std::optional<TrackPoint> GroundMapper::position(PlanePoint foot) const
{
    const std::optional<PlanePoint> ground = onGround(foot);
    return ground ? givenPosition(ground->x, ground->y, 0.0) : std::nullopt;
}

std::optional<TrackSize> GroundMapper::size(const MeasuredBox& box) const
{
    const std::optional<double> unit = metresPerPixel(foot(box));
    return unit ? givenSize(box.width * *unit, box.height * *unit, box.width * *unit)
                : std::nullopt;
}

std::optional<TrackPoint> GroundMapper::givenPosition(double x, double y, double z) const
{
    x *= m_scale;
    y *= m_scale;
    z *= m_scale;
    if (!isUsable(x) || !isUsable(y) || !isUsable(z)) {
        return std::nullopt;
    }
    return TrackPoint{static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

std::optional<TrackSize> GroundMapper::givenSize(double width, double height, double depth) const
{
    width *= m_scale;
    height *= m_scale;
    depth *= m_scale;
    if (!isUsable(width) || !isUsable(height) || !isUsable(depth)) {
        return std::nullopt;
    }
    return TrackSize{
        static_cast<float>(width), static_cast<float>(height), static_cast<float>(depth)};
}

PlanePoint GroundMapper::foot(const MeasuredBox& box)
{
    return {box.x + box.width / 2.0, box.y + box.height};
}

std::optional<TrackBox> GroundMapper::roundedBox(const MeasuredBox& box)
{
    if (!isUsable(box.x) || !isUsable(box.y) || !isUsable(box.width) || !isUsable(box.height) ||
        isNegative(box)) {
        return std::nullopt;
    }
    return TrackBox{rounded(box.x), rounded(box.y), rounded(box.width), rounded(box.height)};
}

std::optional<PlanePoint> GroundMapper::onGround(PlanePoint image) const
{
    if (!m_homography) {
        return image;
    }
    const Matrix& m = *m_homography;
    const double weight = m[6] * image.x + m[7] * image.y + m[8];
    if (weight == 0.0) {
        return std::nullopt;
    }
    return PlanePoint{
        (m[0] * image.x + m[1] * image.y + m[2]) / weight,
        (m[3] * image.x + m[4] * image.y + m[5]) / weight};
}

// Length of the step on the ground that one pixel to the right makes: the first column of the map's
// derivative.
std::optional<double> GroundMapper::metresPerPixel(PlanePoint image) const
{
    if (!m_homography) {
        return 1.0;
    }
    const std::optional<PlanePoint> ground = onGround(image);
    if (!ground) {
        return std::nullopt;
    }
    const Matrix& m = *m_homography;
    const double weight = m[6] * image.x + m[7] * image.y + m[8];
    return std::hypot((m[0] - m[6] * ground->x) / weight, (m[3] - m[6] * ground->y) / weight);
}

} // namespace scenariomatch
