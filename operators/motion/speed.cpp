#include "operators/motion/FrameTimes.h"
#include "operators/motion/Motion.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "speed",
        false,
        {"Distance per second since the position before, or since the oldest of the last so many "
         "seconds.",
         {pointTypes(), numberTypes()},
         1,
         "DOUBLE",
         true,
         {}},
        [](Arguments arguments) { return speed(arguments, frameTimes()); }};
}

} // namespace scenariomatch
