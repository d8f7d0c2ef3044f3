#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "value",
        false,
        {"The argument itself, so that an attribute can stand beside a call.",
         {anyTypes()},
         1,
         "",
         true,
         {}},
        handOn};
}

} // namespace scenariomatch
