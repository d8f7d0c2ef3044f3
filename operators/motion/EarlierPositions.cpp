#include "operators/motion/EarlierPositions.h"

#include <iterator>

namespace scenariomatch
{

namespace
{

// Entries of the frames before the value's own, the newest first. A value stored twice in a frame
// has filed the first under the frame of the second; that one is no earlier position.
auto newestBefore(const CSBasicType& current)
{
    const auto& history = current.m_history;
    const bool isAllBefore = !history.empty() && history.rbegin()->first < current.m_frame;
    return std::make_reverse_iterator(
        isAllBefore ? history.end() : history.lower_bound(current.m_frame));
}

} // namespace

EarlierPositions::EarlierPositions(const CSBasicType& current, const FrameTimes& times)
    : m_times(times)
    , m_time(times.end())
    , m_now(timeOf(current.m_frame))
    , m_next(newestBefore(current))
    , m_end(current.m_history.rend())
{
}

bool EarlierPositions::next()
{
    if (m_now == nullptr) {
        return false;
    }
    while (m_next != m_end) {
        if (read(*m_next++)) {
            return true;
        }
    }
    return false;
}

bool EarlierPositions::read(const History::value_type& entry)
{
    const CSTimeStamp* then = timeOf(entry.first);
    if (then == nullptr) {
        return false;
    }
    const CSPlainValue view(entry.second.get());
    const Point* found = point(view);
    m_age = secondsBetween(*then, *m_now);
    if (found == nullptr || !(m_age > 0.0)) {
        return false;
    }
    m_position = *found;
    return true;
}

const CSTimeStamp* EarlierPositions::timeOf(int frame)
{
    if (m_time != m_times.begin() && std::prev(m_time)->first == frame) {
        --m_time;
    } else {
        m_time = m_times.find(frame);
    }
    return m_time != m_times.end() ? m_time->second.get() : nullptr;
}

std::optional<Point> previousPosition(const CSBasicType& current)
{
    for (auto entry = newestBefore(current); entry != current.m_history.rend(); ++entry) {
        const CSPlainValue view(entry->second.get());
        if (const Point* found = point(view)) {
            return *found;
        }
    }
    return std::nullopt;
}

} // namespace scenariomatch
