#pragma once

#include "types/CSPlainValue.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace scenariomatch
{

// One of the thirteen relations between two times, as conditions on where their ends lie.
//
// It tells what is missing, and how much; the operator alone decides whether the relation holds.
//
// Example: before is the one condition that the first ends before the second begins; not met, it
// reads "c1 ended 0.4 s after c2 began".
class IntervalRelation
{
public:
    // Nothing for a name that is none of the thirteen.
    static std::optional<IntervalRelation> named(std::string_view name);

    // How two ends lie: by how much the one is later than the other, in seconds.
    struct Condition
    {
        // Which ends of a and b.
        enum class Ends { Starts, Ends, EndAndStart, StartAndEnd };
        enum class Order { Earlier, Later, Same };

        Ends ends = Ends::Starts;
        // Whether a's end is to be the earlier one.
        Order order = Order::Earlier;
    };

    struct Miss
    {
        Condition condition;
        // By how much a's end is later than b's, and by how much that is too much or too little.
        double later = 0.0;
        double margin = 0.0;
    };

    // The conditions that two intervals, and a tolerance if there is one, do not meet. Nothing
    // where the arguments are no such thing.
    std::optional<std::vector<Miss>> misses(std::span<const CSPlainValue> arguments) const;
    // How far the nearest condition is from not being met, where all are.
    std::optional<double> reserve(std::span<const CSPlainValue> arguments) const;

    // "c1 ended 0.4 s after c2 began".
    static std::string textOf(const Miss& miss, const std::string& a, const std::string& b);

    // What the relation asks: "c1 ends before c2 begins".
    std::string requirement(
        const std::string& a, const std::string& b, std::span<const CSPlainValue> arguments) const;

private:
    explicit IntervalRelation(std::vector<Condition> conditions)
        : m_conditions(std::move(conditions))
    {
    }

    std::vector<Condition> m_conditions;
};

} // namespace scenariomatch
