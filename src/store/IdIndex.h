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

    std::uint32_t Find(std::int32_t id) const;
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
    std::size_t Home(std::int32_t id) const;
    void Grow();

    std::vector<Slot> m_slots; // a power of two
    std::size_t m_count = 0;
    unsigned m_shift = 64;
};

} // namespace obmgr
