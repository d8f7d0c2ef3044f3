#include "operators/logic/Logic.h"

#include <algorithm>

namespace scenariomatch
{

namespace
{

struct Pair
{
    const CSBool* left = nullptr;
    const CSBool* right = nullptr;
};

std::optional<Pair> pair(const Arguments& arguments)
{
    if (arguments.size() != 2) {
        return std::nullopt;
    }
    const Pair found{truth(arguments[0]), truth(arguments[1])};
    return found.left != nullptr && found.right != nullptr ? std::optional(found) : std::nullopt;
}

double confidenceOfEither(const CSBool& left, const CSBool& right)
{
    if (left.m_value && right.m_value) {
        return std::max(left.m_confidence, right.m_confidence);
    }
    if (left.m_value) {
        return left.m_confidence;
    }
    return right.m_value ? right.m_confidence : left.m_confidence * right.m_confidence;
}

} // namespace

Value conjunction(const Arguments& arguments)
{
    const auto both = pair(arguments);
    if (!both) {
        return relation(false);
    }
    return std::make_shared<CSBool>(
        both->left->m_value && both->right->m_value,
        both->left->m_confidence * both->right->m_confidence);
}

Value disjunction(const Arguments& arguments)
{
    const auto both = pair(arguments);
    if (!both) {
        return relation(false);
    }
    return std::make_shared<CSBool>(
        both->left->m_value || both->right->m_value, confidenceOfEither(*both->left, *both->right));
}

Value negation(const Arguments& arguments)
{
    const CSBool* operand = arguments.size() == 1 ? truth(arguments[0]) : nullptr;
    if (operand == nullptr) {
        return relation(false);
    }
    return std::make_shared<CSBool>(!operand->m_value, operand->m_confidence);
}

} // namespace scenariomatch
