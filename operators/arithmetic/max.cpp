#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    const std::vector<std::vector<std::string>> operands(kMaximumOperands, numberTypes());
    return {
        "max",
        false,
        {"The greatest of two to eight numbers.", operands, 2, "DOUBLE", true, {}},
        greatest};
}

} // namespace scenariomatch
