#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return intervalRelation(
        "during", "Whether the first starts later and ends earlier than the second.", 0, isDuring);
}

} // namespace scenariomatch
