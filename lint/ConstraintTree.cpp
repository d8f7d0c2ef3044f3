#include "lint/ConstraintTree.h"

#include <algorithm>

namespace scenariomatch::lint
{

bool isSameTree(const ConstraintNode& left, const ConstraintNode& right)
{
    return left.kind == right.kind && left.name.text == right.name.text &&
           left.attribute.text == right.attribute.text &&
           std::equal(
               left.children.begin(),
               left.children.end(),
               right.children.begin(),
               right.children.end(),
               isSameTree);
}

} // namespace scenariomatch::lint
