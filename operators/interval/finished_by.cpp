#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return tolerantRelation(
        "finishedBy",
        "Whether both end together and the first starts earlier.",
        std::nullopt,
        isFinishedBy);
}

} // namespace scenariomatch
