#pragma once

#include "operators/OperatorDefinition.h"
#include "operators/Values.h"

#include <cstddef>
#include <optional>
#include <string>

// The thirteen relations of two intervals a and b:
//
//     c1->Interval before c2->Interval
//     meets(c1->Interval, c2->Interval, 0.5)
//
// Without a tolerance exactly one of them holds for any two intervals, intervals of a single
// instant (start = end) included. The relations that ask for two times to be the same take a
// tolerance in seconds as a third argument: the two may then lie that far apart. An interval
// without start or end, or one that ends before it starts, stands in no relation.
namespace scenariomatch
{

Value isBefore(const Arguments& arguments);
Value isAfter(const Arguments& arguments);
Value meets(const Arguments& arguments);
Value isMetBy(const Arguments& arguments);
Value overlaps(const Arguments& arguments);
Value isOverlappedBy(const Arguments& arguments);
Value starts(const Arguments& arguments);
Value isStartedBy(const Arguments& arguments);
Value isDuring(const Arguments& arguments);
Value contains(const Arguments& arguments);
Value finishes(const Arguments& arguments);
Value isFinishedBy(const Arguments& arguments);
Value equals(const Arguments& arguments);

// The definition of one of them; the first argument ends first when endsFirst is 0, the second when
// it is 1.
OperatorDefinition intervalRelation(
    std::string name,
    std::string summary,
    std::optional<std::size_t> endsFirst,
    Value (*evaluate)(const Arguments&));
// The same with the tolerance as an optional third argument.
OperatorDefinition tolerantRelation(
    std::string name,
    std::string summary,
    std::optional<std::size_t> endsFirst,
    Value (*evaluate)(const Arguments&));

} // namespace scenariomatch
