#pragma once

#include "app/RuleRun.h"
#include "app/RuleTest.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scenariomatch
{

// How what was found in a case differs from what it expects.
struct RuleVerdict
{
    // Why the case could not be run.
    std::optional<std::string> fault;
    // "- ..." for an event that is missing and "+ ..." for one that is too many, in order of time.
    std::vector<std::string> differences;

    // An expected event that is missing, and its place among the differences; in their order.
    struct Missing
    {
        std::size_t difference = 0;
        std::size_t expected = 0;
    };

    std::vector<Missing> missing;
    // Those of them that tell of an event that must be absent.
    std::vector<std::string> forbidden;
    // The events that were compared, in order of time, and for each the expected one that it is.
    std::vector<FoundEvent> found;
    std::vector<std::optional<std::size_t>> expectedOf;

    bool isPassed() const { return !fault && differences.empty(); }
};

RuleVerdict judge(const RuleCase& ruleCase, RuleRun run);

// Milliseconds as seconds, with as many decimals as it takes.
std::string secondsText(std::int64_t milliseconds);

// The object's name, or its identifier where it has none: what a test calls it.
std::string objectText(const EventObject& object);

} // namespace scenariomatch
