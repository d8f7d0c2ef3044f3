#include "operators/motion/Motion.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "crossed",
        false,
        {"Whether the last step leads through a line, given as a list of points or as two points.",
         {pointTypes(), placeTypes(), pointTypes()},
         2,
         "BOOL",
         true,
         {}},
        crossed};
}

} // namespace scenariomatch
