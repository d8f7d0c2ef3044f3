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
    return static_cast<int>(std::lround(value));
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
    if (!isUsable(x * m_scale) || !isUsable(y * m_scale) || !isUsable(z * m_scale)) {
        return std::nullopt;
    }
    return TrackPoint{
        static_cast<float>(x * m_scale),
        static_cast<float>(y * m_scale),
        static_cast<float>(z * m_scale)};
}

std::optional<TrackSize> GroundMapper::givenSize(double width, double height, double depth) const
{
    if (!isUsable(width * m_scale) || !isUsable(height * m_scale) || !isUsable(depth * m_scale)) {
        return std::nullopt;
    }
    return TrackSize{
        static_cast<float>(width * m_scale),
        static_cast<float>(height * m_scale),
        static_cast<float>(depth * m_scale)};
}

PlanePoint GroundMapper::foot(const MeasuredBox& box)
{
    return {box.x + box.width / 2.0, box.y + box.height};
}

std::optional<TrackBox> GroundMapper::roundedBox(const MeasuredBox& box)
{
    if (!isUsable(box.x) || !isUsable(box.y) || !isUsable(box.width) || !isUsable(box.height) ||
        box.width < 0.0 || box.height < 0.0) {
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
