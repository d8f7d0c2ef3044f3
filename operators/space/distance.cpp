#include "operators/OperatorDefinition.h"
#include "operators/space/Space.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "distance",
        false,
        {"The distance between two points, or between a point and a polygon (0 inside it).",
         {placeTypes(), placeTypes()},
         2,
         "DOUBLE",
         true,
         {},
         true,
         CSOperatorMeaning::Distance},
        distance};
}

} // namespace scenariomatch
