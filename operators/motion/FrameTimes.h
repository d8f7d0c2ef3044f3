#pragma once

#include "operators/motion/Motion.h"

namespace scenariomatch
{

// The engine's time stamps of the latest frames.
const FrameTimes& frameTimes();

} // namespace scenariomatch
