#include "operators/logic/Logic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "or",
        false,
        {"Whether at least one is true; the confidence is the greatest of the true ones.",
         {{"BOOL"}, {"BOOL"}},
         2,
         "BOOL",
         true,
         {}},
        disjunction};
}

} // namespace scenariomatch
