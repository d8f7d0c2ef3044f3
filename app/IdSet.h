#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace scenariomatch
{

// The identifiers seen in one frame, emptied for the next one at no cost.
//
// The places of identifiers are chosen with a random seed, so that no file can make them collide on
// purpose; what the set answers does not depend on it.
class IdSet
{
public:
    IdSet();

    // False when the identifier is in the set already.
    bool insert(int id);

    void clear();

private:
    struct Slot
    {
        int id = 0;
        // The slot is used when this is the set's own generation.
        std::uint64_t generation = 0;
    };

    std::size_t firstSlot(int id) const;
    void grow();

    std::vector<Slot> m_slots;
    std::size_t m_used = 0;
    std::uint64_t m_generation = 1;
    std::uint64_t m_seed;
};

} // namespace scenariomatch
