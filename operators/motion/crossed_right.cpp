#include "operators/motion/Motion.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "crossedRight",
        false,
        {"Whether the last step leads through a line from its left side to its right.",
         {pointTypes(), placeTypes(), pointTypes()},
         2,
         "BOOL",
         true,
         {}},
        crossedRight};
}

} // namespace scenariomatch
