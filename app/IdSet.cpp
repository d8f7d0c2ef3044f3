#include "app/IdSet.h"

#include <random>
#include <utility>

namespace scenariomatch
{

namespace
{

constexpr std::size_t kFirstSlots = 64;

std::uint64_t randomSeed()
{
    std::random_device device;
    return (std::uint64_t{device()} << 32U) | device();
}

} // namespace

IdSet::IdSet()
    : m_slots(kFirstSlots)
    , m_seed(randomSeed())
{
}

bool IdSet::insert(int id)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = firstSlot(id);
    while (m_slots[slot].generation == m_generation) {
        if (m_slots[slot].id == id) {
            return false;
        }
        slot = (slot + 1) & mask;
    }
    m_slots[slot] = {id, m_generation};
    ++m_used;
    if (m_used * 2 > m_slots.size()) {
        grow();
    }
    return true;
}

void IdSet::clear()
{
    ++m_generation;
    m_used = 0;
}

std::size_t IdSet::firstSlot(int id) const
{
    std::uint64_t mixed = (static_cast<std::uint32_t>(id) ^ m_seed) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 32U)) * 0xD6E8FEB86659FD93U;
    return (mixed >> 32U) & (m_slots.size() - 1);
}

void IdSet::grow()
{
    const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(m_slots.size() * 2));
    const std::uint64_t oldGeneration = m_generation;
    clear();
    for (const Slot& slot : old) {
        if (slot.generation == oldGeneration) {
            insert(slot.id);
        }
    }
}

} // namespace scenariomatch
