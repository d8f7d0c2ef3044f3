#include "operators/interval/Interval.h"

namespace scenariomatch
{

OperatorDefinition operatorDefinition()
{
    return tolerantRelation("meets", "Whether the first ends where the second starts.", 0, meets);
}

} // namespace scenariomatch
