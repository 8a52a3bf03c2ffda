#include "store/IdIndex.h"

#include <algorithm>
#include <bit>

namespace obmgr {

void IdIndex::Insert(std::int32_t id, std::uint32_t position)
{
    if ((m_count + 1) * 10 > m_slots.size() * 7) Grow();
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = Home(id);
    while (m_slots[at].position != kNone)
        at = (at + 1) & mask;
    m_slots[at] = {id, position};
    ++m_count;
}

void IdIndex::Replace(std::int32_t id, std::uint32_t position)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = Home(id);
    while (m_slots[at].id != id || m_slots[at].position == kNone)
        at = (at + 1) & mask;
    m_slots[at].position = position;
}

// Closes the gap, so that no search ends at it too early.
void IdIndex::Erase(std::int32_t id)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t gap = Home(id);
    while (m_slots[gap].id != id || m_slots[gap].position == kNone)
        gap = (gap + 1) & mask;
    for (std::size_t at = (gap + 1) & mask; m_slots[at].position != kNone; at = (at + 1) & mask) {
        const std::size_t home = Home(m_slots[at].id);
        if (((at - home) & mask) < ((at - gap) & mask)) continue;
        m_slots[gap] = m_slots[at];
        gap = at;
    }
    m_slots[gap] = {};
    --m_count;
}

void IdIndex::Clear()
{
    m_slots = {};
    m_count = 0;
}

void IdIndex::ClearKeepingRoom()
{
    std::fill(m_slots.begin(), m_slots.end(), Slot());
    m_count = 0;
}

void IdIndex::Grow()
{
    constexpr std::size_t kFirstSize = 16;
    std::vector<Slot> old(m_slots.empty() ? kFirstSize : m_slots.size() * 2);
    old.swap(m_slots);
    m_shift = 64 - static_cast<unsigned>(std::bit_width(m_slots.size() >> 4));
    m_count = 0;
    for (const Slot& slot : old)
        if (slot.position != kNone) Insert(slot.id, slot.position);
}

} // namespace obmgr
