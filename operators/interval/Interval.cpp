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

bool isInOrder(const CSPlainValue& value)
{
    return hasBothEnds(value) &&
           secondsBetween(*value.m_interval.start, *value.m_interval.end) >= 0.0;
}

std::optional<Position>
position(const CSPlainValue& first, const CSPlainValue& second, double tolerance)
{
    if (!isInOrder(first) || !isInOrder(second)) {
        return std::nullopt;
    }
    const CSPlainValue::Span& a = first.m_interval;
    const CSPlainValue::Span& b = second.m_interval;
    return Position{
        secondsBetween(*b.start, *a.start),
        secondsBetween(*b.end, *a.end),
        secondsBetween(*a.end, *b.start),
        secondsBetween(*b.end, *a.start),
        tolerance};
}

template <typename Condition>
CSPlainValue exact(Arguments arguments, Condition condition)
{
    const auto found =
        arguments.size() == 2 ? position(arguments[0], arguments[1], 0.0) : std::nullopt;
    return relation(found && condition(*found));
}

template <typename Condition>
CSPlainValue tolerant(Arguments arguments, Condition condition)
{
    if (arguments.size() != 3) {
        return exact(arguments, condition);
    }
    const auto tolerance = number(arguments[2]);
    const auto found = tolerance ? position(arguments[0], arguments[1], *tolerance) : std::nullopt;
    return relation(found && condition(*found));
}

} // namespace

CSPlainValue isBefore(Arguments arguments)
{
    return exact(arguments, [](const Position& p) { return p.gapAfterFirst > 0.0; });
}

CSPlainValue isAfter(Arguments arguments)
{
    return exact(arguments, [](const Position& p) { return p.gapAfterSecond > 0.0; });
}

CSPlainValue meets(Arguments arguments)
{
    return tolerant(arguments, [](const Position& p) {
        return p.same(p.gapAfterFirst) && p.starts < 0.0 && p.ends < 0.0;
    });
}

CSPlainValue isMetBy(Arguments arguments)
{
    return tolerant(arguments, [](const Position& p) {
        return p.same(p.gapAfterSecond) && p.starts > 0.0 && p.ends > 0.0;
    });
}

CSPlainValue overlaps(Arguments arguments)
{
    return exact(arguments, [](const Position& p) {
        return p.starts < 0.0 && p.ends < 0.0 && p.gapAfterFirst < 0.0;
    });
}

CSPlainValue isOverlappedBy(Arguments arguments)
{
    return exact(arguments, [](const Position& p) {
        return p.starts > 0.0 && p.ends > 0.0 && p.gapAfterSecond < 0.0;
    });
}

CSPlainValue starts(Arguments arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.same(p.starts) && p.ends < 0.0; });
}

CSPlainValue isStartedBy(Arguments arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.same(p.starts) && p.ends > 0.0; });
}

CSPlainValue isDuring(Arguments arguments)
{
    return exact(arguments, [](const Position& p) { return p.starts > 0.0 && p.ends < 0.0; });
}

CSPlainValue contains(Arguments arguments)
{
    return exact(arguments, [](const Position& p) { return p.starts < 0.0 && p.ends > 0.0; });
}

CSPlainValue finishes(Arguments arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.starts > 0.0 && p.same(p.ends); });
}

CSPlainValue isFinishedBy(Arguments arguments)
{
    return tolerant(arguments, [](const Position& p) { return p.starts < 0.0 && p.same(p.ends); });
}

CSPlainValue equals(Arguments arguments)
{
    return tolerant(
        arguments, [](const Position& p) { return p.same(p.starts) && p.same(p.ends); });
}

OperatorDefinition intervalRelation(
    std::string name,
    std::string summary,
    std::optional<std::size_t> endsFirst,
    CSPlainValue (*evaluate)(Arguments))
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
    CSPlainValue (*evaluate)(Arguments))
{
    OperatorDefinition definition =
        intervalRelation(std::move(name), std::move(summary), endsFirst, evaluate);
    definition.description.m_arguments.push_back(numberTypes());
    return definition;
}

} // namespace scenariomatch
