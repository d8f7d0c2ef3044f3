#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "*",
        false,
        {"The product.", {numberTypes(), numberTypes()}, 2, "DOUBLE", true, {}},
        product};
}

} // namespace scenariomatch
