#include "operators/logic/Logic.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

bool isPair(Arguments arguments)
{
    return arguments.size() == 2 && isTruth(arguments[0]) && isTruth(arguments[1]);
}

double confidenceOfEither(const CSPlainValue& left, const CSPlainValue& right)
{
    if (left.m_truth && right.m_truth) {
        return std::max(left.m_number, right.m_number);
    }
    if (left.m_truth) {
        return left.m_number;
    }
    return right.m_truth ? right.m_number : left.m_number * right.m_number;
}

} // namespace

CSPlainValue conjunction(Arguments arguments)
{
    if (!isPair(arguments)) {
        return relation(false);
    }
    const CSPlainValue& left = arguments[0];
    const CSPlainValue& right = arguments[1];
    return CSPlainValue::boolean(left.m_truth && right.m_truth, left.m_number * right.m_number);
}

CSPlainValue disjunction(Arguments arguments)
{
    if (!isPair(arguments)) {
        return relation(false);
    }
    const CSPlainValue& left = arguments[0];
    const CSPlainValue& right = arguments[1];
    return CSPlainValue::boolean(left.m_truth || right.m_truth, confidenceOfEither(left, right));
}

CSPlainValue negation(Arguments arguments)
{
    if (arguments.size() != 1 || !isTruth(arguments[0])) {
        return relation(false);
    }
    return CSPlainValue::boolean(!arguments[0].m_truth, arguments[0].m_number);
}

} // namespace scenariomatch
