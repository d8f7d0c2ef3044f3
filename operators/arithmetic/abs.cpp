#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "abs",
        false,
        {"The number without its sign.", {numberTypes()}, 1, "DOUBLE", true, {}},
        absolute};
}

} // namespace scenariomatch
