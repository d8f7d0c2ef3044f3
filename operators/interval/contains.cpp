#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return intervalRelation(
        "contains",
        "Whether the first starts earlier and ends later than the second.",
        1,
        contains);
}

} // namespace scenariomatch
