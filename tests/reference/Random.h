#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace scenariomatch
{

// Choices that are the same for the same seed on every machine.
class Random
{
public:
    explicit Random(std::uint32_t seed)
        : m_engine(seed)
    {
    }

    // A number below `limit`.
    int pick(int limit) { return static_cast<int>(m_engine() % static_cast<std::uint32_t>(limit)); }

    bool oneIn(int times) { return pick(times) == 0; }

    template <class T>
    const T& of(const std::vector<T>& choices)
    {
        return choices[static_cast<std::size_t>(pick(static_cast<int>(choices.size())))];
    }

private:
    std::mt19937 m_engine;
};

} // namespace scenariomatch
