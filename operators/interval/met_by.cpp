#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return tolerantRelation("metBy", "Whether the first starts where the second ends.", 1, isMetBy);
}

} // namespace scenariomatch
