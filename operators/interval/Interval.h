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

CSPlainValue isBefore(Arguments arguments);
CSPlainValue isAfter(Arguments arguments);
CSPlainValue meets(Arguments arguments);
CSPlainValue isMetBy(Arguments arguments);
CSPlainValue overlaps(Arguments arguments);
CSPlainValue isOverlappedBy(Arguments arguments);
CSPlainValue starts(Arguments arguments);
CSPlainValue isStartedBy(Arguments arguments);
CSPlainValue isDuring(Arguments arguments);
CSPlainValue contains(Arguments arguments);
CSPlainValue finishes(Arguments arguments);
CSPlainValue isFinishedBy(Arguments arguments);
CSPlainValue equals(Arguments arguments);

// The definition of one of them; the first argument ends first when endsFirst is 0, the second when
// it is 1.
OperatorDefinition intervalRelation(
    std::string name,
    std::string summary,
    std::optional<std::size_t> endsFirst,
    CSPlainValue (*evaluate)(Arguments));
// The same with the tolerance as an optional third argument.
OperatorDefinition tolerantRelation(
    std::string name,
    std::string summary,
    std::optional<std::size_t> endsFirst,
    CSPlainValue (*evaluate)(Arguments));

} // namespace scenariomatch
