// A map from ids to small values, for the time of one query: open addressing in one block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace obmgr {

template <class Value> class IdMap {
public:
    // Room for `count` ids without a move.
    explicit IdMap(std::size_t count = 0) { Resize(count); }

    std::size_t Size() const { return m_count; }
    // Null when the id is not in it. Good until the next insertion.
    Value* Find(std::int32_t id)
    {
        Slot& slot = m_slots[SlotOf(id)];
        return slot.isUsed ? &slot.value : nullptr;
    }
    const Value* Find(std::int32_t id) const
    {
        const Slot& slot = m_slots[SlotOf(id)];
        return slot.isUsed ? &slot.value : nullptr;
    }
    // The id's value, a new one when it had none.
    Value& operator[](std::int32_t id)
    {
        if ((m_count + 1) * 2 > m_slots.size()) Resize(2 * (m_count + 1));
        Slot& slot = m_slots[SlotOf(id)];
        if (!slot.isUsed) {
            slot.id = id;
            slot.isUsed = true;
            ++m_count;
        }
        return slot.value;
    }

private:
    struct Slot {
        std::int32_t id = 0;
        bool isUsed = false;
        Value value{};
    };

    std::size_t SlotOf(std::int32_t id) const
    {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t at = (static_cast<std::uint32_t>(id) * std::uint64_t{0x9E3779B97F4A7C15}) >> m_shift;
        while (m_slots[at].isUsed && m_slots[at].id != id)
            at = (at + 1) & mask;
        return at;
    }
    void Resize(std::size_t count)
    {
        unsigned bits = 3;
        while ((std::size_t{1} << bits) < 2 * count)
            ++bits;
        std::vector<Slot> old(std::size_t{1} << bits);
        old.swap(m_slots);
        m_shift = 64 - bits;
        for (Slot& slot : old)
            if (slot.isUsed) m_slots[SlotOf(slot.id)] = std::move(slot);
    }

    std::vector<Slot> m_slots; // a power of two, at most half full
    std::size_t m_count = 0;
    unsigned m_shift = 64;
};

class IdSet {
public:
    explicit IdSet(std::size_t count = 0) : m_ids(count) {}
    template <class List> static IdSet Of(const List& ids)
    {
        IdSet set;
        for (const auto id : ids)
            set.Insert(static_cast<std::int32_t>(id));
        return set;
    }

    // True when it was not in it.
    bool Insert(std::int32_t id)
    {
        const std::size_t before = m_ids.Size();
        m_ids[id];
        return m_ids.Size() > before;
    }
    bool Contains(std::int32_t id) const { return m_ids.Find(id) != nullptr; }

private:
    struct Nothing {};
    IdMap<Nothing> m_ids;
};

} // namespace obmgr
