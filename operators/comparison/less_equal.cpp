#include "operators/comparison/Comparison.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "<=",
        false,
        {"Whether the first is smaller, earlier or before in the alphabet, or the same.",
         {orderedTypes(), orderedTypes()},
         2,
         "BOOL",
         true,
         {},
         true,
         CSOperatorMeaning::AtMost},
        isLessOrEqual};
}

} // namespace scenariomatch
