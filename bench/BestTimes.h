#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace scenariomatch
{

// How long each frame takes, in microseconds, at its best of several passes over the same frames.
//
// A frame means the same work in every pass, so all above its best time is the machine's doing.
// Passes may stop early; what counts are the frames that every pass has reached.
class BestTimes
{
public:
    // Of the next frame of the current pass.
    void add(double microseconds);
    void endPass();

    // Keeps the first so many frames, which have been reached.
    void cut(std::size_t frames) { m_best.resize(frames); }

    std::size_t frames() const { return m_best.size(); }

    // Over all frames but the first so many; at least over the last one. 0 without frames.
    double mean(std::size_t without = 0) const;
    double median(std::size_t without = 0) const;
    double greatest(std::size_t without = 0) const;

private:
    std::vector<double> kept(std::size_t without) const;

    std::vector<double> m_best;
    std::size_t m_frame = 0;
    bool m_isFirstPass = true;
};

// Says when a pass has taken long enough.
class PassLimit
{
public:
    bool isReached() const;

private:
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

// The microseconds that a call takes, without those of looking at the clock.
double clockCost();

template <typename Function>
double microsecondsOf(Function&& function)
{
    static const double cost = clockCost();
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    function();
    const auto end = Clock::now();
    return std::chrono::duration<double, std::micro>(end - begin).count() - cost;
}

} // namespace scenariomatch
