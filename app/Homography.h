#pragma once

#include "app/GroundMapper.h"

#include <optional>
#include <string>

namespace scenariomatch
{

// Reads the first 3x3 matrix of a persistence file: it takes a point of the image, in pixels, to
// the ground, in metres. Nothing, and why in error, when there is none or it takes all points to
// one line.
std::optional<GroundMapper::Matrix> readHomography(const std::string& path, std::string& error);

} // namespace scenariomatch
