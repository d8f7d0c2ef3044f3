#include "operators/comparison/Comparison.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        ">=",
        false,
        {"Whether the first is greater, later or behind in the alphabet, or the same.",
         {orderedTypes(), orderedTypes()},
         2,
         "BOOL",
         true,
         {},
         true,
         CSOperatorMeaning::AtLeast},
        isGreaterOrEqual};
}

} // namespace scenariomatch
