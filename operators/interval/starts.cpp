#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return tolerantRelation(
        "starts", "Whether both start together and the first ends earlier.", 0, starts);
}

} // namespace scenariomatch
