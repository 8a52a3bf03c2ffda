// Object ids to list positions: the index behind every look-up by id.
#pragma once

#include "common/Export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace obmgr {

// Open addressing. Ids that follow one another stand beside one another.
class RIVELTA_API IdIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    std::uint32_t Find(std::int32_t id) const
    {
        if (m_slots.empty()) return kNone;
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t at = Home(id);; at = (at + 1) & mask) {
            const Slot& slot = m_slots[at];
            if (slot.position == kNone) return kNone;
            if (slot.id == id) return slot.position;
        }
    }
    void Insert(std::int32_t id, std::uint32_t position);  // the id is not in it
    void Replace(std::int32_t id, std::uint32_t position); // the id is in it
    void Erase(std::int32_t id);                           // the id is in it
    void Clear();
    void ClearKeepingRoom();

private:
    struct Slot {
        std::int32_t id = 0;
        std::uint32_t position = kNone;
    };
    // Blocks of eight ids are scattered, the ids of a block stay together: designs number their objects in runs.
    std::size_t Home(std::int32_t id) const
    {
        const auto bits = static_cast<std::uint32_t>(id);
        const std::uint64_t block = (bits >> 3) * std::uint64_t{0x9E3779B97F4A7C15};
        return ((block >> m_shift) << 3) | (bits & 7);
    }
    void Grow();

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_count = 0;
    unsigned m_shift = 64;
};

} // namespace obmgr
