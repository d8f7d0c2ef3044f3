#include "operators/interval/Interval.h"

#include <cmath>
#include <utility>

namespace scenariomatch
{

namespace
{

// How the ends of two intervals a and b lie, in seconds; the tolerance is that of the call.
struct Position
{
    // a's start less b's, a's end less b's.
    double starts = 0.0;
    double ends = 0.0;
    // b's start less a's end, a's start less b's end.
    double gapAfterFirst = 0.0;
    double gapAfterSecond = 0.0;
    double tolerance = 0.0;

    bool same(double difference) const { return std::fabs(difference) <= tolerance; }
};

bool isInOrder(const CSInterval* interval)
{
    return interval != nullptr && interval->m_start && interval->m_end &&
           secondsBetween(*interval->m_start, *interval->m_end) >= 0.0;
}

std::optional<Position> position(const Value& first, const Value& second, double tolerance)
{
    const CSInterval* a = interval(first);
    const CSInterval* b = interval(second);
    if (!isInOrder(a) || !isInOrder(b)) {
        return std::nullopt;
    }
    return Position{
        secondsBetween(*b->m_start, *a->m_start),
        secondsBetween(*b->m_end, *a->m_end),
        secondsBetween(*a->m_end, *b->m_start),
        secondsBetween(*b->m_end, *a->m_start),
        tolerance};
}

template <typename Condition>
Value exact(const Arguments& arguments, Condition condition)
{
    const auto found =
        arguments.size() == 2 ? position(arguments[0], arguments[1], 0.0) : std::nullopt;
    return relation(found && condition(*found));
}

template <typename Condition>
Value tolerant(const Arguments& arguments, Condition condition)
{
    if (arguments.size() != 3) {
        return exact(arguments, condition);
    }
    const auto tolerance = number(arguments[2]);
    const auto found = tolerance ? position(arguments[0], arguments[1], *tolerance) : std::nullopt;
    return relation(found && condition(*found));
}

} // namespace

Value isBefore(const Arguments& arguments)
{
    return exact(arguments, [](const Position& p) { return p.gapAfterFirst > 0.0; });
}

Value isAfter(const Arguments& arguments)
{
    return exact(arguments, [](const Position& p) { return p.gapAfterSecond > 0.0; });
}

Value meets(const Arguments& arguments)
{
    return tolerant(arguments, [](const Position& p) {
        return p.same(p.gapAfterFirst) && p.starts < 0.0 && p.ends < 0.0;
    });
}

Value isMetBy(const Arguments& arguments)
{
    return tolerant(arguments, [](const Position& p) {
        return p.same(p.gapAfterSecond) && p.starts > 0.0 && p.ends > 0.0;
    });
}

Value overlaps(const Arguments& arguments)
{
    return exact(arguments, [](const Position& p) {
        return p.starts < 0.0 && p.ends < 0.0 && p.gapAfterFirst < 0.0;
    });
}

Value isOverlappedBy(const Arguments& arguments)
{
    return exact(arguments, [](const Position& p) {
        return p.starts > 0.0 && p.ends > 0.0 && p.gapAfterSecond < 0.0;
    });
}

Value starts(const Arguments& arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.same(p.starts) && p.ends < 0.0; });
}

Value isStartedBy(const Arguments& arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.same(p.starts) && p.ends > 0.0; });
}

Value isDuring(const Arguments& arguments)
{
    return exact(arguments, [](const Position& p) { return p.starts > 0.0 && p.ends < 0.0; });
}

Value contains(const Arguments& arguments)
{
    return exact(arguments, [](const Position& p) { return p.starts < 0.0 && p.ends > 0.0; });
}

Value finishes(const Arguments& arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.starts > 0.0 && p.same(p.ends); });
}

Value isFinishedBy(const Arguments& arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.starts < 0.0 && p.same(p.ends); });
}

Value equals(const Arguments& arguments)
{
    return tolerant(
        arguments, [](const Position& p) { return p.same(p.starts) && p.same(p.ends); });
}

OperatorDefinition intervalRelation(
    std::string name,
    std::string summary,
    std::optional<std::size_t> endsFirst,
    Value (*evaluate)(const Arguments&))
{
    return {
        std::move(name),
        true,
        {std::move(summary), {{"INTERVAL"}, {"INTERVAL"}}, 2, "BOOL", true, endsFirst},
        evaluate};
}

OperatorDefinition tolerantRelation(
    std::string name,
    std::string summary,
    std::optional<std::size_t> endsFirst,
    Value (*evaluate)(const Arguments&))
{
    OperatorDefinition definition =
        intervalRelation(std::move(name), std::move(summary), endsFirst, evaluate);
    definition.description.m_arguments.push_back(numberTypes());
    return definition;
}

} // namespace scenariomatch
