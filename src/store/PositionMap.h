// Hashed keys to the objects that have them, for the indexes of a table. Open addressing, and most keys have one entry,
// which stands in its slot: so that a look-up costs one step to memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace obmgr {

class PositionMap {
public:
    struct Entry {
        std::uint32_t position; // in the list
        std::int32_t id;
    };

    // Entries of one key, rising by position.
    class Entries {
    public:
        Entries() = default;
        Entries(Entries&& other) noexcept { Swap(other); }
        Entries& operator=(Entries&& other) noexcept
        {
            Swap(other);
            return *this;
        }
        ~Entries()
        {
            if (m_room > 1) delete[] m_place.many;
        }

        bool IsEmpty() const { return m_size == 0; }
        std::size_t Size() const { return m_size; }
        std::span<Entry> All() { return {Data(), m_size}; }
        // Changes nothing when there is no memory.
        void Insert(std::size_t at, Entry entry)
        {
            if (m_size == m_room) Grow();
            Entry* const place = Data() + at;
            std::copy_backward(place, Data() + m_size, Data() + m_size + 1);
            *place = entry;
            ++m_size;
        }
        // Keeps the first ones.
        void Shorten(std::size_t size) { m_size = static_cast<std::uint32_t>(size); }

    private:
        union Place {
            Entry one;
            Entry* many;
        };
        Entry* Data() { return m_room > 1 ? m_place.many : &m_place.one; }
        void Grow()
        {
            const std::uint32_t room = 2 * m_room;
            auto* const many = new Entry[room];
            std::copy(Data(), Data() + m_size, many);
            if (m_room > 1) delete[] m_place.many;
            m_place.many = many;
            m_room = room;
        }
        void Swap(Entries& other) noexcept
        {
            std::swap(m_place, other.m_place);
            std::swap(m_size, other.m_size);
            std::swap(m_room, other.m_room);
        }

        Place m_place{};
        std::uint32_t m_size = 0;
        std::uint32_t m_room = 1;
    };

    struct Slot {
        std::uint64_t key = kFree;
        Entries entries;
        bool isDoubtful = false; // an object of it has changed since: compare the entries with the objects
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

    // Blocks of numbers are scattered, the numbers of a block stay together: designs number their objects in runs, and
    // a walk along a run finds the next slots beside the present one. What is scattered also turns the places within
    // the block, so that numbers with a common factor do not all want the same one.
    static constexpr unsigned kBlockBits = 6;
    static constexpr std::size_t kBlock = std::size_t{1} << kBlockBits;
    std::size_t Home(std::uint64_t key) const
    {
        const std::uint64_t block = (key >> kBlockBits) * std::uint64_t{0x9E3779B97F4A7C15};
        return ((block >> m_shift) << kBlockBits) | ((key ^ (block >> 32)) & (kBlock - 1));
    }
    // Where to look next: at the same place of the next block, since the rest of a full block is full as well.
    std::size_t After(std::size_t at) const
    {
        at += kBlock;
        return at < m_slots.size() ? at : (at + 1) & (kBlock - 1);
    }
    Slot& SlotOf(std::uint64_t key)
    {
        std::size_t at = Home(key);
        while (m_slots[at].key != kFree && m_slots[at].key != key)
            at = After(at);
        return m_slots[at];
    }

    // Keys without entries are left behind.
    void Grow()
    {
        std::size_t inUse = 0;
        for (const Slot& slot : m_slots)
            inUse += !slot.entries.IsEmpty();
        unsigned bits = kBlockBits + 1;
        while ((std::size_t{1} << bits) < 2 * (inUse + 1))
            ++bits;
        std::vector<Slot> old(std::size_t{1} << bits);
        old.swap(m_slots);
        m_shift = 64 - (bits - kBlockBits);
        m_count = 0;
        for (Slot& slot : old) {
            if (slot.entries.IsEmpty()) continue;
            SlotOf(slot.key) = std::move(slot);
            ++m_count;
        }
    }

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_count = 0;
    unsigned m_shift = 64;
};

} // namespace obmgr
