#include "operators/comparison/Comparison.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "=",
        false,
        {"Whether two values of one kind are the same.",
         {equalityTypes(), equalityTypes()},
         2,
         "BOOL",
         true,
         {}},
        isEqual};
}

} // namespace scenariomatch
