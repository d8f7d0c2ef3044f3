#pragma once

#include "operators/motion/Motion.h"
#include "Samples.h"

#include <utility>
#include <vector>

// Positions over time for the tests of motion.
namespace scenariomatch
{

constexpr int kMillisecondsPerFrame = 40;

// A position and the frames before it, as an agent's attribute holds them: the last one is the
// current value.
inline Value walked(const std::vector<std::pair<int, Value>>& positions)
{
    Value current = positions.back().second;
    current->m_frame = positions.back().first;
    for (std::size_t i = 0; i + 1 < positions.size(); ++i) {
        current->m_history[positions[i].first] = positions[i].second;
    }
    return current;
}

// One position per frame from frame 0 on.
inline Value walked(const std::vector<Value>& positions)
{
    std::vector<std::pair<int, Value>> numbered;
    numbered.reserve(positions.size());
    for (const Value& position : positions) {
        numbered.emplace_back(static_cast<int>(numbered.size()), position);
    }
    return walked(numbered);
}

// Time stamps of 25 frames a second.
inline FrameTimes framesUpTo(int last)
{
    FrameTimes times;
    for (int frame = 0; frame <= last; ++frame) {
        times[frame] = stamp(frame * kMillisecondsPerFrame);
    }
    return times;
}

} // namespace scenariomatch
