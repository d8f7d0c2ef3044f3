#pragma once

#include "engine/CSEngine.h"

namespace scenariomatch
{

// Whether the instance ends at this very instant: it was recognised in the current frame.
inline bool endsAt(const CSScenarioInstance& instance, const CSTimeStamp& now)
{
    return instance.m_end->duration(now) == 0.0;
}

// Calls visit for every recognised instance that ends now, in list order. With a plain clock
// (milliseconds from 0 to 999 in all stamps) the walk stops at the first instance that ended
// earlier, because the list has the latest end first.
template <typename Visit>
void forEachCurrentInstance(const CSEngine& engine, bool isClockPlain, Visit visit)
{
    const auto& now = engine.currentTime();
    if (now == nullptr) {
        return;
    }
    for (const auto& instance : engine.recognisedScenarios()) {
        if (endsAt(*instance, *now)) {
            visit(*instance);
        } else if (isClockPlain && *instance->m_end < *now) {
            return;
        }
    }
}

} // namespace scenariomatch
