#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return intervalRelation(
        "overlaps", "Whether the first starts earlier and ends inside the second.", 0, overlaps);
}

} // namespace scenariomatch
