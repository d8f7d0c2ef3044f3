#include "operators/motion/Motion.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "crossedLeft",
        false,
        {"Whether the last step leads through a line from its right side to its left.",
         {pointTypes(), placeTypes(), pointTypes()},
         2,
         "BOOL",
         true,
         {}},
        crossedLeft};
}

} // namespace scenariomatch
