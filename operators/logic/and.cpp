#include "operators/logic/Logic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "and",
        false,
        {"Whether both are true; the confidence is the product of both.",
         {{"BOOL"}, {"BOOL"}},
         2,
         "BOOL",
         true,
         {},
         true,
         CSOperatorMeaning::Conjunction},
        conjunction};
}

} // namespace scenariomatch
