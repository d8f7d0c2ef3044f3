#include "operators/motion/FrameTimes.h"
#include "operators/motion/Motion.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "displacement",
        false,
        {"Straight distance from the oldest position of the last so many seconds.",
         {pointTypes(), numberTypes()},
         2,
         "DOUBLE",
         true,
         {}},
        [](Arguments arguments) { return displacement(arguments, frameTimes()); }};
}

} // namespace scenariomatch
