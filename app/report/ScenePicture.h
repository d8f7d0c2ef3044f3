#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace scenariomatch
{

// A picture of the scene from above, and where it lies on the ground: its lower left and its upper
// right corner.
struct ScenePicture
{
    // Bytes of a file.
    static constexpr std::size_t kLargest = std::size_t{16} << 20U;

    // "data:image/png;base64,...".
    std::string image;
    // x and y of the one corner, x and y of the other.
    std::array<double, 4> placement{};
};

// Reads a PNG or JPEG file, told by its first bytes. Nothing, and "FILE: reason" in error, when
// it is none.
std::optional<std::string> readImage(const std::string& path, std::string& error);

// Reads "X0,Y0,X1,Y1"; nothing when it is no place for a picture. Y0 is greater than Y1 where y
// grows downwards.
std::optional<std::array<double, 4>> parsePlacement(const std::string& text);

} // namespace scenariomatch
