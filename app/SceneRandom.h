#pragma once

#include <cstdint>

namespace scenariomatch
{

// Random numbers that are the same on every machine: SplitMix64 written out, integers only.
//
// Each object of a scene has a stream of its own, so that a change of one leaves the others as they
// were.
class SceneRandom
{
public:
    SceneRandom(std::uint64_t seed, std::uint64_t stream)
        : m_state(mixed(seed) ^ mixed(~stream))
    {
    }

    std::uint64_t next()
    {
        m_state += kStep;
        return mixed(m_state);
    }

    // Any of the numbers from low to high, each as likely as the others.
    std::int64_t between(std::int64_t low, std::int64_t high)
    {
        const std::uint64_t count =
            static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low) + 1;
        // The numbers of the last, incomplete round would make small results more likely.
        const std::uint64_t tooSmall = (0 - count) % count;
        std::uint64_t number = next();
        while (number < tooSmall) {
            number = next();
        }
        return low + static_cast<std::int64_t>(number % count);
    }

    // True in so many of a thousand cases.
    bool isChosen(std::int64_t perMille) { return between(0, 999) < perMille; }

private:
    static constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15U;

    static std::uint64_t mixed(std::uint64_t value)
    {
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }

    std::uint64_t m_state;
};

} // namespace scenariomatch
