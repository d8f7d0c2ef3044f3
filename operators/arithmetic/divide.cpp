#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "/",
        false,
        {"The first divided by the second; no value where that is zero.",
         {numberTypes(), numberTypes()},
         2,
         "DOUBLE",
         true,
         {}},
        quotient};
}

} // namespace scenariomatch
