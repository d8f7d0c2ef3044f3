#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return intervalRelation(
        "overlappedBy",
        "Whether the second starts earlier and ends inside the first.",
        1,
        isOverlappedBy);
}

} // namespace scenariomatch
