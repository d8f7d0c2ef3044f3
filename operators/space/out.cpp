#include "operators/OperatorDefinition.h"
#include "operators/space/Space.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "out",
        false,
        {"Whether a point lies outside a polygon.",
         {pointTypes(), {"3DDPOINTS"}},
         2,
         "BOOL",
         true,
         {}},
        isOut};
}

} // namespace scenariomatch
