#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return tolerantRelation(
        "startedBy", "Whether both start together and the second ends earlier.", 1, isStartedBy);
}

} // namespace scenariomatch
