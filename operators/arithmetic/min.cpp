#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    const std::vector<std::vector<std::string>> operands(kMaximumOperands, numberTypes());
    return {
        "min",
        false,
        {"The smallest of two to eight numbers.", operands, 2, "DOUBLE", true, {}},
        least};
}

} // namespace scenariomatch
