#include "operators/comparison/Comparison.h"

#include <algorithm>
#include <cmath>
#include <compare>

namespace scenariomatch
{

namespace
{

// Unordered for values that have no order.
std::partial_ordering order(const Value& left, const Value& right)
{
    if (const auto a = number(left)) {
        const auto b = number(right);
        return b ? *a <=> *b : std::partial_ordering::unordered;
    }
    if (const auto* a = text(left)) {
        const auto* b = text(right);
        return b != nullptr ? a->m_value <=> b->m_value : std::partial_ordering::unordered;
    }
    const auto* a = timeStamp(left);
    const auto* b = timeStamp(right);
    if (a == nullptr || b == nullptr) {
        return std::partial_ordering::unordered;
    }
    return secondsBetween(*b, *a) <=> 0.0;
}

std::optional<bool> sameInterval(const CSInterval& left, const CSInterval& right)
{
    if (!left.m_start || !left.m_end || !right.m_start || !right.m_end) {
        return std::nullopt;
    }
    const double starts = secondsBetween(*left.m_start, *right.m_start);
    const double ends = secondsBetween(*left.m_end, *right.m_end);
    if (std::isnan(starts) || std::isnan(ends)) {
        return std::nullopt;
    }
    return starts == 0.0 && ends == 0.0;
}

bool samePosition(const CS3DDPoint& a, const CS3DDPoint& b)
{
    return a.m_x == b.m_x && a.m_y == b.m_y && a.m_z == b.m_z;
}

// Nothing for values that cannot be compared.
std::optional<bool> sameUnordered(const Value& left, const Value& right)
{
    if (const auto a = point(left)) {
        const auto b = point(right);
        if (!b || a->hasHeight != b->hasHeight) {
            return std::nullopt;
        }
        return a->x == b->x && a->y == b->y && a->z == b->z;
    }
    if (const auto* a = truth(left)) {
        const auto* b = truth(right);
        return b != nullptr ? std::optional(a->m_value == b->m_value) : std::nullopt;
    }
    if (const auto* a = interval(left)) {
        const auto* b = interval(right);
        return b != nullptr ? sameInterval(*a, *b) : std::nullopt;
    }
    const auto* a = points(left);
    const auto* b = points(right);
    if (a == nullptr || b == nullptr) {
        return std::nullopt;
    }
    return std::equal(a->begin(), a->end(), b->begin(), b->end(), samePosition);
}

std::optional<bool> same(const Arguments& arguments)
{
    if (arguments.size() != 2) {
        return std::nullopt;
    }
    const std::partial_ordering found = order(arguments[0], arguments[1]);
    if (found != std::partial_ordering::unordered) {
        return found == std::partial_ordering::equivalent;
    }
    return sameUnordered(arguments[0], arguments[1]);
}

std::partial_ordering order(const Arguments& arguments)
{
    if (arguments.size() != 2) {
        return std::partial_ordering::unordered;
    }
    return order(arguments[0], arguments[1]);
}

} // namespace

Value isEqual(const Arguments& arguments)
{
    return relation(same(arguments) == true);
}

Value isDifferent(const Arguments& arguments)
{
    return relation(same(arguments) == false);
}

Value isLess(const Arguments& arguments)
{
    return relation(std::is_lt(order(arguments)));
}

Value isLessOrEqual(const Arguments& arguments)
{
    return relation(std::is_lteq(order(arguments)));
}

Value isGreater(const Arguments& arguments)
{
    return relation(std::is_gt(order(arguments)));
}

Value isGreaterOrEqual(const Arguments& arguments)
{
    return relation(std::is_gteq(order(arguments)));
}

std::vector<std::string> orderedTypes()
{
    return {"INT", "DOUBLE", "STRING", "TIMESTAMP"};
}

std::vector<std::string> equalityTypes()
{
    return {
        "INT",
        "DOUBLE",
        "STRING",
        "TIMESTAMP",
        "BOOL",
        "3DDPOINT",
        "3DIPOINT",
        "2DDPOINT",
        "2DIPOINT",
        "3DDPOINTS",
        "INTERVAL"};
}

} // namespace scenariomatch
