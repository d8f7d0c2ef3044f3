#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return tolerantRelation(
        "finishes",
        "Whether both end together and the first starts later.",
        std::nullopt,
        finishes);
}

} // namespace scenariomatch
