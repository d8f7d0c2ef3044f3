#include "operators/arithmetic/Arithmetic.h"
#include "operators/OperatorDefinition.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return {
        "-",
        false,
        {"The first less the second.", {numberTypes(), numberTypes()}, 2, "DOUBLE", true, {}},
        difference};
}

} // namespace scenariomatch
