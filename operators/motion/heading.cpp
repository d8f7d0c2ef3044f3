#include "operators/motion/FrameTimes.h"
#include "operators/motion/Motion.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "heading",
        false,
        {"Direction of the last move in degrees (0 along x, 90 along y), or of that of the last so "
         "many seconds.",
         {pointTypes(), numberTypes()},
         1,
         "DOUBLE",
         true,
         {}},
        [](Arguments arguments) { return heading(arguments, frameTimes()); }};
}

} // namespace scenariomatch
