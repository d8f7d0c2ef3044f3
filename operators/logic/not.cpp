#include "operators/logic/Logic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "!",
        false,
        {"Whether the argument is false; the confidence stays.", {{"BOOL"}}, 1, "BOOL", true, {}},
        negation};
}

} // namespace scenariomatch
