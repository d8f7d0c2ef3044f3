#include "operators/measure/Measure.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "gap",
        true,
        {"Seconds from the end of the first to the start of the second.",
         {{"INTERVAL"}, {"INTERVAL"}},
         2,
         "DOUBLE",
         true,
         0},
        gap};
}

} // namespace scenariomatch
