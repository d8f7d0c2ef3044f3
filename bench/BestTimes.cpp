#include "bench/BestTimes.h"

#include "bench/BenchOptions.h"

#include <algorithm>
#include <numeric>

namespace scenariomatch
{

void BestTimes::add(double microseconds)
{
    if (m_isFirstPass) {
        m_best.push_back(microseconds);
    } else if (m_frame < m_best.size()) {
        m_best[m_frame] = std::min(m_best[m_frame], microseconds);
    }
    ++m_frame;
}

void BestTimes::endPass()
{
    m_best.resize(std::min(m_best.size(), m_frame));
    m_frame = 0;
    m_isFirstPass = false;
}

double BestTimes::mean(std::size_t without) const
{
    const std::vector<double> times = kept(without);
    const double sum = std::accumulate(times.begin(), times.end(), 0.0);
    return times.empty() ? 0.0 : sum / static_cast<double>(times.size());
}

double BestTimes::median(std::size_t without) const
{
    std::vector<double> times = kept(without);
    if (times.empty()) {
        return 0.0;
    }
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

double BestTimes::greatest(std::size_t without) const
{
    const std::vector<double> times = kept(without);
    return times.empty() ? 0.0 : *std::max_element(times.begin(), times.end());
}

std::vector<double> BestTimes::kept(std::size_t without) const
{
    const std::size_t most = m_best.empty() ? 0 : m_best.size() - 1;
    return {m_best.begin() + static_cast<std::ptrdiff_t>(std::min(without, most)), m_best.end()};
}

bool PassLimit::isReached() const
{
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - m_begin;
    return seconds.count() > benchOptions().secondsPerPass;
}

double clockCost()
{
    using Clock = std::chrono::steady_clock;
    constexpr int kTries = 1000;
    auto least = Clock::duration::max();
    for (int i = 0; i < kTries; ++i) {
        const auto begin = Clock::now();
        least = std::min(least, Clock::now() - begin);
    }
    return std::chrono::duration<double, std::micro>(least).count();
}

} // namespace scenariomatch
