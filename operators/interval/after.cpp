#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return intervalRelation("after", "Whether the first starts after the second ends.", 1, isAfter);
}

} // namespace scenariomatch
