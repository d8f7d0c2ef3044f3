#include "operators/OperatorDefinition.h"
#include "operators/space/Space.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "in",
        false,
        {"Whether a point lies inside a polygon or on its border.",
         {pointTypes(), {"3DDPOINTS"}},
         2,
         "BOOL",
         true,
         {}},
        isIn};
}

} // namespace scenariomatch
