#include "engine/SlowOperators.h"

#include "types/CSOperatorInterfaceAbstract.h"

#include <algorithm>
#include <ratio>
#include <utility>
#include <vector>

namespace scenariomatch
{

namespace
{

std::string messageFor(const std::string& name, SlowOperators::Clock::duration time)
{
    const auto hundredths =
        std::chrono::duration_cast<std::chrono::duration<long, std::centi>>(time).count();
    const std::string part = std::to_string(100 + hundredths % 100).substr(1);
    return "Operator " + name + " is slow: its calls took " + std::to_string(hundredths / 100) +
           "." + part + " s of a frame";
}

} // namespace

void SlowOperators::startFrame()
{
    if (m_isTiming) {
        m_times.clear();
        setOperatorTimes(&m_times);
    }
    m_start = Clock::now();
}

void SlowOperators::endFrame(const std::function<void(const std::string& message)>& report)
{
    const bool isSlow = Clock::now() - m_start > m_bound;
    if (m_isTiming) {
        setOperatorTimes(nullptr);
        this->report(report);
    }
    m_isTiming = isSlow;
}

void SlowOperators::report(const std::function<void(const std::string& message)>& report)
{
    std::vector<std::pair<std::string, Clock::duration>> slow;
    for (const auto& [op, time] : m_times) {
        if (time >= m_bound / 2 && m_reported.insert(op->m_name).second) {
            slow.emplace_back(op->m_name, time);
        }
    }
    std::sort(slow.begin(), slow.end());
    for (const auto& [name, time] : slow) {
        if (report) {
            report(messageFor(name, time));
        }
    }
}

} // namespace scenariomatch
