#pragma once

#include <cstdint>
#include <limits>

namespace scenariomatch
{

// How many candidates of a model are tried in a frame before the others are left out.
//
// The number of candidates is factorial in the number of a model's variables. What counts is every
// agent, or recognised instance, that is tried for a variable, however early the candidate is given
// up.
class CandidateLimit
{
public:
    // 0 for none, which is the default.
    void set(std::uint64_t most) { m_most = most == 0 ? kNone : most; }

    std::uint64_t most() const { return m_most; }

    // A model's candidates come, of which so many were tried before.
    void start(std::uint64_t tried = 0)
    {
        m_tried = tried;
        m_isReached = false;
    }

    // False where that would be one too many.
    bool tryOne()
    {
        if (m_tried >= m_most) {
            m_isReached = true;
            return false;
        }
        ++m_tried;
        return true;
    }

    std::uint64_t tried() const { return m_tried; }

    // Whether candidates were left out since the start.
    bool isReached() const { return m_isReached; }

private:
    static constexpr std::uint64_t kNone = std::numeric_limits<std::uint64_t>::max();

    std::uint64_t m_most = kNone;
    std::uint64_t m_tried = 0;
    bool m_isReached = false;
};

} // namespace scenariomatch
