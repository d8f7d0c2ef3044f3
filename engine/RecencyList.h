#pragma once

#include <cstdint>
#include <iterator>
#include <list>
#include <utility>

namespace scenariomatch
{

// A list in which what was touched last stands in front, and what was touched in the same turn
// stands in the order in which it was touched.
//
// That is the order that a stable sort by falling end time gives when each turn sets the ends it
// touches to a later time than any before; touching is constant time where the sort is not.
//
// Example: after touching a, b in turn 1 and c, a in turn 2 the list reads c, a, b.
template <class T>
class RecencyList
{
public:
    using Place = typename std::list<T>::iterator;

    RecencyList() = default;
    RecencyList(const RecencyList&) = delete;
    RecencyList(RecencyList&&) = delete;
    RecencyList& operator=(const RecencyList&) = delete;
    RecencyList& operator=(RecencyList&&) = delete;
    ~RecencyList() = default;

    // Adds at the very end, where what has not been touched yet stands.
    Place append(T value) { return m_items.insert(m_items.end(), std::move(value)); }

    // Moves behind what was touched in this turn before and in front of all else. Turns only grow.
    void touch(Place place, std::uint64_t turn)
    {
        startTurn(turn);
        if (place == m_turnEnd) {
            ++m_turnEnd;
            return;
        }
        m_items.splice(m_turnEnd, m_items, place);
    }

    // Moves to the very end, as one that no turn has touched: for who lays out the whole list anew.
    void restart(Place place)
    {
        m_items.splice(m_items.end(), m_items, place);
        m_turn = 0;
    }

    void erase(Place place)
    {
        if (place == m_turnEnd) {
            ++m_turnEnd;
        }
        m_items.erase(place);
    }

    std::list<T>& items() { return m_items; }

    const std::list<T>& items() const { return m_items; }

    bool empty() const { return m_items.empty(); }

private:
    void startTurn(std::uint64_t turn)
    {
        if (m_turn != turn) {
            m_turn = turn;
            m_turnEnd = m_items.begin();
        }
    }

    std::list<T> m_items;
    std::uint64_t m_turn = 0;
    // Behind what was touched in the turn m_turn.
    Place m_turnEnd = m_items.begin();
};

} // namespace scenariomatch
