// The attributes of one object: keys and texts in one flat block, in the order in which the keys were first set.
// Copies share the block until one of them is written. The count of sharers is atomic, since a backup reads and
// frees its copies on another thread; apart from that an Attributes belongs to one thread.
#pragma once

#include "objects/KeyNames.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace obmgr {

class RIVELTA_API Attributes {
public:
    struct Entry {
        KeyId key;
        std::string_view value; // UTF-8
    };

    // Walks the entries; ends with the next change.
    class RIVELTA_API Iterator {
    public:
        Entry operator*() const { return m_entry; }
        Iterator& operator++();
        bool operator==(const Iterator& other) const { return m_left == other.m_left; }

    private:
        friend class Attributes;
        void Read();
        const void* m_at = nullptr;
        std::size_t m_left = 0;
        bool m_isWide = false;
        Entry m_entry{};
    };

    Attributes() = default;
    Attributes(const Attributes& other);
    Attributes(Attributes&& other) noexcept : m_rep(std::exchange(other.m_rep, 0)) {}
    Attributes& operator=(const Attributes& other);
    Attributes& operator=(Attributes&& other) noexcept;
    ~Attributes();

    // The value under the key; data() is null when the key is absent.
    std::string_view Find(KeyId key) const;
    bool Contains(KeyId key) const { return Find(key).data() != nullptr; }
    // Sets or adds the key. `value` may lie inside this object.
    void Set(KeyId key, std::string_view value);
    std::size_t Count() const;
    bool IsEmpty() const { return Count() == 0; }

    // Room for `bytes` of block, for a reader that can guess how large the next record will be.
    void Reserve(std::size_t bytes);
    // Gives back unused room. The size is what Reserve takes for another record of the kind.
    std::size_t ShrinkToFit();

    bool SharesWith(const Attributes& other) const { return m_rep == other.m_rep; }

    Iterator begin() const;
    Iterator end() const;

private:
    struct Block;
    struct Wide;
    // A Block, or with the lowest bit set a Wide: the form of a record so large that a walk over its keys, or
    // moving its tail, would cost too much. 0 is the empty set.
    std::uintptr_t m_rep = 0;

    bool IsWide() const { return (m_rep & 1) != 0; }
    Block* AsBlock() const { return reinterpret_cast<Block*>(m_rep); }
    Wide* AsWide() const { return reinterpret_cast<Wide*>(m_rep & ~std::uintptr_t{1}); }
    void Release() noexcept;
    void Own(std::size_t capacity);
    void Widen();
    void SetWide(KeyId key, std::string_view value);
};

} // namespace obmgr
