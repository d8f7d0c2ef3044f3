#include "operators/OperatorDefinition.h"
#include "operators/space/Space.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "near",
        false,
        {"Whether the distance of two places is at most the third argument.",
         {placeTypes(), placeTypes(), numberTypes()},
         3,
         "BOOL",
         true,
         {},
         true,
         CSOperatorMeaning::Nearness},
        isNear};
}

} // namespace scenariomatch
