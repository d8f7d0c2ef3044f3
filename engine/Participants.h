#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <vector>

namespace scenariomatch
{

// Identifiers of the agents that an instance binds, in the order of the variables' names. A few,
// as nearly all instances have, take no allocation of their own.
class Participants
{
public:
    Participants() = default;

    Participants(std::initializer_list<int> identifiers)
    {
        for (const int identifier : identifiers) {
            append(identifier);
        }
    }

    void append(int identifier)
    {
        if (m_count == m_few.size()) {
            m_all.assign(m_few.begin(), m_few.end());
        }
        if (m_count < m_few.size()) {
            m_few[m_count] = identifier;
        } else {
            m_all.push_back(identifier);
        }
        ++m_count;
    }

    std::span<const int> all() const
    {
        return m_count <= m_few.size() ? std::span(m_few).first(m_count) : std::span(m_all);
    }

private:
    std::size_t m_count = 0;
    std::array<int, 4> m_few{};
    // All of them where they are more.
    std::vector<int> m_all;
};

} // namespace scenariomatch
