#include "operators/motion/FrameTimes.h"
#include "operators/motion/Motion.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "stationary",
        false,
        {"Whether all positions of the last so many seconds lie within a radius of the current "
         "one.",
         {pointTypes(), numberTypes(), numberTypes()},
         3,
         "BOOL",
         true,
         {}},
        [](Arguments arguments) { return isStationary(arguments, frameTimes()); }};
}

} // namespace scenariomatch
