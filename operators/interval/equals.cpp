#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return tolerantRelation(
        "equals", "Whether both start together and end together.", std::nullopt, equals);
}

} // namespace scenariomatch
