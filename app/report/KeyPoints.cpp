#include "app/report/KeyPoints.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace scenariomatch
{

namespace
{

std::int64_t countQuanta(double length, double quantum)
{
    // What is farther away is no place; whole numbers up to there are exact everywhere.
    constexpr double kMost = 1e15;
    const double quanta = length / quantum;
    return std::isnan(quanta)
               ? 0
               : static_cast<std::int64_t>(std::llround(std::clamp(quanta, -kMost, kMost)));
}

} // namespace

KeyPoints::KeyPoints(double quantum, double mostDeparture)
    : m_quantum(quantum)
    , m_tolerance(mostDeparture / std::numbers::sqrt2)
{
}

void KeyPoints::Speeds::narrow(double distance, double tolerance, double time)
{
    least = std::max(least, (distance - tolerance) / time);
    most = std::min(most, (distance + tolerance) / time);
}

KeyPoint KeyPoints::quantised(const TrackSample& sample) const
{
    return {sample.time, countQuanta(sample.x, m_quantum), countQuanta(sample.y, m_quantum), false};
}

double KeyPoints::speedTo(std::int64_t from, std::int64_t to, double time) const
{
    return static_cast<double>(to - from) * m_quantum / time;
}

// Whether the line from the last key point to this one passes all samples between them.
bool KeyPoints::isReached(const KeyPoint& point) const
{
    const KeyPoint& from = m_kept.back();
    const auto time = static_cast<double>(point.time - from.time);
    return m_speedsX.contains(speedTo(from.x, point.x, time)) &&
           m_speedsY.contains(speedTo(from.y, point.y, time));
}

void KeyPoints::narrowTo(const TrackSample& sample)
{
    const KeyPoint& from = m_kept.back();
    const auto time = static_cast<double>(sample.time - from.time);
    m_speedsX.narrow(sample.x - static_cast<double>(from.x) * m_quantum, m_tolerance, time);
    m_speedsY.narrow(sample.y - static_cast<double>(from.y) * m_quantum, m_tolerance, time);
}

void KeyPoints::keepLast()
{
    constexpr double kAny = std::numeric_limits<double>::infinity();
    if (m_last) {
        m_kept.push_back(*std::exchange(m_last, std::nullopt));
    }
    m_speedsX = {-kAny, kAny};
    m_speedsY = {-kAny, kAny};
}

void KeyPoints::add(const TrackSample& sample)
{
    if (m_lastTime && sample.time <= *m_lastTime) {
        return;
    }
    m_lastTime = sample.time;
    KeyPoint point = quantised(sample);
    if (m_kept.empty() || m_isInterrupted) {
        point.isAfterGap = !m_kept.empty();
        m_isInterrupted = false;
        m_last = point;
        keepLast();
        return;
    }
    if (m_last && !isReached(point)) {
        keepLast();
    }
    m_last = point;
    narrowTo(sample);
}

void KeyPoints::interrupt()
{
    if (!m_kept.empty()) {
        keepLast();
        m_isInterrupted = true;
    }
}

std::vector<KeyPoint> KeyPoints::take()
{
    keepLast();
    return std::exchange(m_kept, {});
}

} // namespace scenariomatch
