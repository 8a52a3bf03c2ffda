// Hashed keys to the objects that have them, for the indexes of a table. Open addressing, so that a look-up costs one
// step into the slots and one to the entries.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace obmgr {

class PositionMap {
public:
    struct Entry {
        std::uint32_t position; // in the list; entries rise by it
        std::int32_t id;
    };
    struct Slot {
        std::uint64_t key = kFree;
        bool isDoubtful = false; // an object of it has changed since: compare the entries with the objects
        std::vector<Entry> entries;
    };

    // Null when the key never had an entry. Valid until the next Get.
    Slot* Find(std::uint64_t key)
    {
        if (m_slots.empty()) return nullptr;
        Slot& slot = SlotOf(Used(key));
        return slot.key == kFree ? nullptr : &slot;
    }

    Slot& Get(std::uint64_t key)
    {
        if ((m_count + 1) * 3 > m_slots.size() * 2) Grow();
        Slot& slot = SlotOf(Used(key));
        if (slot.key == kFree) {
            slot.key = Used(key);
            ++m_count;
        }
        return slot;
    }

private:
    // No 32-bit number becomes this one; texts that hash to it move to the next.
    static constexpr std::uint64_t kFree = std::uint64_t{1} << 63;
    static std::uint64_t Used(std::uint64_t key) { return key == kFree ? kFree + 1 : key; }

    Slot& SlotOf(std::uint64_t key)
    {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t at = (key * 0x9E3779B97F4A7C15) >> m_shift;
        while (m_slots[at].key != kFree && m_slots[at].key != key)
            at = (at + 1) & mask;
        return m_slots[at];
    }

    // Keys without entries are left behind.
    void Grow()
    {
        std::size_t inUse = 0;
        for (const Slot& slot : m_slots)
            inUse += !slot.entries.empty();
        unsigned bits = 4;
        while ((std::size_t{1} << bits) < 3 * (inUse + 1))
            ++bits;
        std::vector<Slot> old(std::size_t{1} << bits);
        old.swap(m_slots);
        m_shift = 64 - bits;
        m_count = 0;
        for (Slot& slot : old) {
            if (slot.entries.empty()) continue;
            SlotOf(slot.key) = std::move(slot);
            ++m_count;
        }
    }

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_count = 0;
    unsigned m_shift = 64;
};

} // namespace obmgr
