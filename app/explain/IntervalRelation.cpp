#include "app/explain/IntervalRelation.h"

#include "app/explain/NumberWords.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <utility>

namespace scenariomatch
{

namespace
{

using Condition = IntervalRelation::Condition;
using Ends = Condition::Ends;
using Order = Condition::Order;

constexpr Condition kStartsEarlier{Ends::Starts, Order::Earlier};
constexpr Condition kStartsLater{Ends::Starts, Order::Later};
constexpr Condition kStartsSame{Ends::Starts, Order::Same};
constexpr Condition kEndsEarlier{Ends::Ends, Order::Earlier};
constexpr Condition kEndsLater{Ends::Ends, Order::Later};
constexpr Condition kEndsSame{Ends::Ends, Order::Same};

struct Named
{
    std::string_view name;
    std::vector<Condition> conditions;
};

const std::array<Named, 13>& relations()
{
    static const std::array<Named, 13> all{{
        {"before", {{Ends::EndAndStart, Order::Earlier}}},
        {"after", {{Ends::StartAndEnd, Order::Later}}},
        {"meets", {{Ends::EndAndStart, Order::Same}, kStartsEarlier, kEndsEarlier}},
        {"metBy", {{Ends::StartAndEnd, Order::Same}, kStartsLater, kEndsLater}},
        {"overlaps", {kStartsEarlier, kEndsEarlier, {Ends::EndAndStart, Order::Later}}},
        {"overlappedBy", {kStartsLater, kEndsLater, {Ends::StartAndEnd, Order::Earlier}}},
        {"starts", {kStartsSame, kEndsEarlier}},
        {"startedBy", {kStartsSame, kEndsLater}},
        {"during", {kStartsLater, kEndsEarlier}},
        {"contains", {kStartsEarlier, kEndsLater}},
        {"finishes", {kStartsLater, kEndsSame}},
        {"finishedBy", {kStartsEarlier, kEndsSame}},
        {"equals", {kStartsSame, kEndsSame}},
    }};
    return all;
}

// As exact as the milliseconds of time stamps.
double secondsBetween(const CSTimeStamp& from, const CSTimeStamp& to)
{
    constexpr double kMilliseconds = 1000.0;
    return ((to.m_seconds - from.m_seconds) * kMilliseconds +
            (to.m_milliseconds - from.m_milliseconds)) /
           kMilliseconds;
}

struct Pair
{
    CSPlainValue::Span a;
    CSPlainValue::Span b;
    double tolerance = 0.0;
};

bool isWhole(const CSPlainValue& value)
{
    return value.isInterval() && value.m_interval.start != nullptr &&
           value.m_interval.end != nullptr;
}

std::optional<Pair> pairOf(std::span<const CSPlainValue> arguments)
{
    const bool isPair =
        (arguments.size() == 2 || (arguments.size() == 3 && arguments[2].isNumber())) &&
        isWhole(arguments[0]) && isWhole(arguments[1]);
    if (!isPair) {
        return std::nullopt;
    }
    return Pair{
        arguments[0].m_interval,
        arguments[1].m_interval,
        arguments.size() == 3 ? arguments[2].m_number : 0.0};
}

// By how much a's end is later than b's.
double laterBy(const Pair& pair, Ends ends)
{
    const CSTimeStamp* const a =
        ends == Ends::Starts || ends == Ends::StartAndEnd ? pair.a.start : pair.a.end;
    const CSTimeStamp* const b =
        ends == Ends::Starts || ends == Ends::EndAndStart ? pair.b.start : pair.b.end;
    return secondsBetween(*b, *a);
}

// Greater than or equal to 0 where the condition is not met; less where it is, by as much as can
// change.
double excess(const Pair& pair, const Condition& condition)
{
    const double later = laterBy(pair, condition.ends);
    switch (condition.order) {
    case Order::Earlier:
        return later;
    case Order::Later:
        return -later;
    case Order::Same:
        break;
    }
    return std::fabs(later) - pair.tolerance;
}

// The ends alone are met when they are exactly as far apart as may be.
bool isMet(const Pair& pair, const Condition& condition)
{
    const double missing = excess(pair, condition);
    return condition.order == Order::Same ? missing <= 0.0 : missing < 0.0;
}

const char* verbOf(Ends ends, bool isFirst)
{
    const bool isStart = ends == Ends::Starts || (ends == Ends::StartAndEnd && isFirst) ||
                         (ends == Ends::EndAndStart && !isFirst);
    return isStart ? "began" : "ended";
}

const char* presentVerbOf(Ends ends, bool isFirst)
{
    return std::string_view(verbOf(ends, isFirst)) == "began" ? "begins" : "ends";
}

} // namespace

std::optional<IntervalRelation> IntervalRelation::named(std::string_view name)
{
    const auto* const found = std::find_if(
        relations().begin(), relations().end(), [&](const Named& one) { return one.name == name; });
    if (found == relations().end()) {
        return std::nullopt;
    }
    return IntervalRelation(found->conditions);
}

std::optional<std::vector<IntervalRelation::Miss>>
IntervalRelation::misses(std::span<const CSPlainValue> arguments) const
{
    const std::optional<Pair> pair = pairOf(arguments);
    if (!pair) {
        return std::nullopt;
    }
    std::vector<Miss> misses;
    for (const Condition& condition : m_conditions) {
        if (!isMet(*pair, condition)) {
            misses.push_back({condition, laterBy(*pair, condition.ends), excess(*pair, condition)});
        }
    }
    return misses;
}

std::optional<double> IntervalRelation::reserve(std::span<const CSPlainValue> arguments) const
{
    const std::optional<Pair> pair = pairOf(arguments);
    if (!pair) {
        return std::nullopt;
    }
    double least = std::numeric_limits<double>::infinity();
    for (const Condition& condition : m_conditions) {
        least = std::min(least, -excess(*pair, condition));
    }
    return least;
}

std::string IntervalRelation::textOf(const Miss& miss, const std::string& a, const std::string& b)
{
    const char* const own = verbOf(miss.condition.ends, true);
    const char* const other = verbOf(miss.condition.ends, false);
    if (miss.later == 0.0) {
        return fmt::format("{} {} when {} {}", a, own, b, other);
    }
    return fmt::format(
        "{} {} {} s {} {} {}",
        a,
        own,
        numberText(std::fabs(miss.later)),
        miss.later > 0.0 ? "after" : "before",
        b,
        other);
}

std::string IntervalRelation::requirement(
    const std::string& a, const std::string& b, std::span<const CSPlainValue> arguments) const
{
    const std::optional<Pair> pair = pairOf(arguments);
    std::string text;
    for (const Condition& condition : m_conditions) {
        text += text.empty() ? "" : " and ";
        const char* const own = presentVerbOf(condition.ends, true);
        const char* const other = presentVerbOf(condition.ends, false);
        if (condition.order != Order::Same) {
            const char* const order = condition.order == Order::Earlier ? "before" : "after";
            text += fmt::format("{} {} {} {} {}", a, own, order, b, other);
        } else if (!pair || pair->tolerance == 0.0) {
            text += fmt::format("{} {} when {} {}", a, own, b, other);
        } else {
            text += fmt::format(
                "{} {} within {} s of when {} {}", a, own, numberText(pair->tolerance), b, other);
        }
    }
    return text;
}

} // namespace scenariomatch
