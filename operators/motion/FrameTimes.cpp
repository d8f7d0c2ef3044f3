#include "operators/motion/FrameTimes.h"

#include "engine/CSEngine.h"

namespace scenariomatch
{

const FrameTimes& frameTimes()
{
    return CSEngine::h_currentTime;
}

} // namespace scenariomatch
