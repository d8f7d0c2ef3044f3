#pragma once

#include "scenario/OperatorCall.h"

#include <chrono>
#include <functional>
#include <set>
#include <string>

namespace scenariomatch
{

// Finds the operators that make frames slow.
//
// The clock is read twice a frame. Only when a frame has taken longer than the bound are the calls
// of the next one timed, operator by operator; those that take half of the bound or more together
// are reported, each once. What is recognised never depends on it.
//
// Example:
//     SlowOperators slow;
//     slow.startFrame();
//     // ... operators are called ...
//     slow.endFrame(report);
class CS_EXPORT SlowOperators
{
public:
    using Clock = std::chrono::steady_clock;

    void setBound(std::chrono::milliseconds bound) { m_bound = bound; }

    void startFrame();
    // Is told "Operator reach is slow: its calls took 1.20 s of a frame"; may be empty.
    void endFrame(const std::function<void(const std::string& message)>& report);

private:
    void report(const std::function<void(const std::string& message)>& report);

    Clock::duration m_bound = std::chrono::seconds(1);
    Clock::time_point m_start;
    bool m_isTiming = false;
    OperatorTimes m_times;
    std::set<std::string> m_reported;
};

} // namespace scenariomatch
