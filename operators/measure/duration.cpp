#include "operators/measure/Measure.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "duration",
        false,
        {"Seconds from start to end.", {{"INTERVAL"}}, 1, "DOUBLE", true, {}},
        duration};
}

} // namespace scenariomatch
