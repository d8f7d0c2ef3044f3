#pragma once

#include "app/explain/KnownEvents.h"
#include "app/explain/ModelSet.h"

#include <cstdint>
#include <string>

namespace scenariomatch
{

// A stretch of time, in milliseconds since 1970; both ends belong to it.
struct TimeWindow
{
    std::int64_t from = INT64_MIN;
    std::int64_t to = INT64_MAX;

    bool contains(std::int64_t time) const { return time >= from && time <= to; }

    // The same, so much later; an end that is open stays so.
    TimeWindow after(std::int64_t time) const
    {
        return {from == INT64_MIN ? from : from + time, to == INT64_MAX ? to : to + time};
    }
};

// Why the sub-events of a composite model never made a candidate although there were some of each:
// "c1 began 3.2 s after c2 had ended". Empty where that cannot be told. Sub-events are looked back
// at for so many seconds.
std::string apartText(
    const CSScenario& model,
    const ModelSet& models,
    const KnownEvents& events,
    double lookBack,
    const TimeWindow& window);

} // namespace scenariomatch
