#include "operators/comparison/Comparison.h"

#include <algorithm>
#include <cmath>
#include <compare>

namespace scenariomatch
{

namespace
{

// Unordered for values that have no order, and where one is NaN.
std::partial_ordering order(const CSPlainValue& left, const CSPlainValue& right)
{
    if (left.isNumber() && right.isNumber()) {
        return left.m_number <=> right.m_number;
    }
    if (left.text() != nullptr && right.text() != nullptr) {
        return left.text()->m_value <=> right.text()->m_value;
    }
    if (left.timeStamp() != nullptr && right.timeStamp() != nullptr) {
        return secondsBetween(*right.timeStamp(), *left.timeStamp()) <=> 0.0;
    }
    return std::partial_ordering::unordered;
}

std::partial_ordering order(Arguments arguments)
{
    if (arguments.size() != 2) {
        return std::partial_ordering::unordered;
    }
    return order(arguments[0], arguments[1]);
}

// Whether values are the same; nothing for those that cannot be compared.
using Sameness = std::optional<bool>;

Sameness sameOrder(const CSPlainValue& left, const CSPlainValue& right)
{
    const std::partial_ordering found = order(left, right);
    return found != std::partial_ordering::unordered ? Sameness(std::is_eq(found)) : std::nullopt;
}

Sameness sameText(const CSPlainValue& left, const CSPlainValue& right)
{
    const CSString* a = left.text();
    const CSString* b = right.text();
    return a != nullptr && b != nullptr ? Sameness(a->m_value == b->m_value) : std::nullopt;
}

Sameness sameTruth(const CSPlainValue& left, const CSPlainValue& right)
{
    return isTruth(left) && isTruth(right) ? Sameness(left.m_truth == right.m_truth) : std::nullopt;
}

Sameness samePoint(const CSPlainValue& left, const CSPlainValue& right)
{
    const Point* a = point(left);
    const Point* b = point(right);
    if (a == nullptr || b == nullptr || a->hasHeight != b->hasHeight) {
        return std::nullopt;
    }
    return a->x == b->x && a->y == b->y && a->z == b->z;
}

Sameness sameInterval(const CSPlainValue& left, const CSPlainValue& right)
{
    if (!hasBothEnds(left) || !hasBothEnds(right)) {
        return std::nullopt;
    }
    const double starts = secondsBetween(*left.m_interval.start, *right.m_interval.start);
    const double ends = secondsBetween(*left.m_interval.end, *right.m_interval.end);
    if (std::isnan(starts) || std::isnan(ends)) {
        return std::nullopt;
    }
    return starts == 0.0 && ends == 0.0;
}

bool samePosition(const CS3DDPoint& a, const CS3DDPoint& b)
{
    return a.m_x == b.m_x && a.m_y == b.m_y && a.m_z == b.m_z;
}

Sameness samePoints(const CSPlainValue& left, const CSPlainValue& right)
{
    const auto* a = points(left);
    const auto* b = points(right);
    if (a == nullptr || b == nullptr) {
        return std::nullopt;
    }
    return std::equal(a->begin(), a->end(), b->begin(), b->end(), samePosition);
}

Sameness same(const CSPlainValue& left, const CSPlainValue& right)
{
    switch (left.m_kind) {
    case CSPlainValue::Kind::Number:
    case CSPlainValue::Kind::TimeStamp:
        return sameOrder(left, right);
    case CSPlainValue::Kind::Text:
        return sameText(left, right);
    case CSPlainValue::Kind::Bool:
        return sameTruth(left, right);
    case CSPlainValue::Kind::Point:
        return samePoint(left, right);
    case CSPlainValue::Kind::Interval:
        return sameInterval(left, right);
    case CSPlainValue::Kind::Points:
        return samePoints(left, right);
    case CSPlainValue::Kind::None:
    case CSPlainValue::Kind::Other:
        break;
    }
    return std::nullopt;
}

Sameness same(Arguments arguments)
{
    return arguments.size() == 2 ? same(arguments[0], arguments[1]) : std::nullopt;
}

} // namespace

CSPlainValue isEqual(Arguments arguments)
{
    return relation(same(arguments) == true);
}

CSPlainValue isDifferent(Arguments arguments)
{
    return relation(same(arguments) == false);
}

CSPlainValue isLess(Arguments arguments)
{
    return relation(std::is_lt(order(arguments)));
}

CSPlainValue isLessOrEqual(Arguments arguments)
{
    return relation(std::is_lteq(order(arguments)));
}

CSPlainValue isGreater(Arguments arguments)
{
    return relation(std::is_gt(order(arguments)));
}

CSPlainValue isGreaterOrEqual(Arguments arguments)
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
