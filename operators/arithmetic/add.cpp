#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {"+", false, {"The sum.", {numberTypes(), numberTypes()}, 2, "DOUBLE", true, {}}, sum};
}

} // namespace scenariomatch
