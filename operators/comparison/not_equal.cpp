#include "operators/comparison/Comparison.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "!=",
        false,
        {"Whether two values of one kind differ; values of unlike kinds do not.",
         {equalityTypes(), equalityTypes()},
         2,
         "BOOL",
         true,
         {}},
        isDifferent};
}

} // namespace scenariomatch
