#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return intervalRelation(
        "before", "Whether the first ends before the second starts.", 0, isBefore);
}

} // namespace scenariomatch
