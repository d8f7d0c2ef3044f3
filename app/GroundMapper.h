#pragma once

#include "app/TrackFrame.h"

#include <array>
#include <optional>

namespace scenariomatch
{

// A point of the image or of the ground.
struct PlanePoint
{
    double x = 0.0;
    double y = 0.0;
};

// A box as measured, before it is rounded to pixels.
struct MeasuredBox
{
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

// Makes positions and sizes of tracked objects from what the tracks carry.
//
// Without a homography the position of a box is its foot point (the middle of its lower edge) in
// pixels. With one it is where that point lies on the ground, in metres. A size is the box's width
// and height, the depth like the width; with a homography they are multiplied by the metres that
// one pixel to the right is worth at the foot point: people stand at right angles to the ground, so
// that a pixel upward is worth about the same. Positions and sizes, also those that the tracks
// carry, are multiplied by the scale at last.
class GroundMapper
{
public:
    // Rows of the matrix that takes a point of the image to the ground.
    using Matrix = std::array<double, 9>;

    // Greatest magnitude of a coordinate or size; what is beyond is refused.
    static constexpr double kGreatest = 1e9;

    GroundMapper() = default;

    GroundMapper(double scale, std::optional<Matrix> homography)
        : m_scale(scale)
        , m_homography(homography)
    {
    }

    double scale() const { return m_scale; }

    // Nothing when the result is beyond what a position may be, as it is for a point on the
    // horizon.
    std::optional<TrackPoint> position(PlanePoint foot) const;
    std::optional<TrackSize> size(const MeasuredBox& box) const;

    // A position and a size that the tracks carry.
    std::optional<TrackPoint> givenPosition(double x, double y, double z) const;
    std::optional<TrackSize> givenSize(double width, double height, double depth) const;

    // The middle of the lower edge.
    static PlanePoint foot(const MeasuredBox& box);

    // Whether the width or the height is negative.
    static bool isNegative(const MeasuredBox& box) { return box.width < 0.0 || box.height < 0.0; }

    // Rounded to the nearest whole pixels; nothing when a number is too great or a size negative.
    static std::optional<TrackBox> roundedBox(const MeasuredBox& box);

private:
    std::optional<PlanePoint> onGround(PlanePoint image) const;
    std::optional<double> metresPerPixel(PlanePoint image) const;

    double m_scale = 1.0;
    std::optional<Matrix> m_homography;
};

} // namespace scenariomatch
