#include "objects/Attributes.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <unordered_map>
#include <vector>

namespace obmgr {
namespace {

// Past these a record is kept wide. An ordinary record has twenty keys and a few hundred bytes.
constexpr std::size_t kMaxFlatKeys = 256;
constexpr std::size_t kMaxFlatBytes = 32 * 1024;
constexpr std::size_t kMaxVarint = 5;

std::size_t WriteVarint(unsigned char* out, std::uint32_t value)
{
    std::size_t length = 0;
    while (value >= 0x80) {
        out[length++] = static_cast<unsigned char>(value | 0x80);
        value >>= 7;
    }
    out[length++] = static_cast<unsigned char>(value);
    return length;
}

inline std::uint32_t ReadVarint(const unsigned char*& at)
{
    std::uint32_t value = *at++;
    if (value < 0x80) return value;
    value &= 0x7F;
    for (unsigned shift = 7;; shift += 7) {
        const std::uint32_t byte = *at++;
        value |= (byte & 0x7F) << shift;
        if (byte < 0x80) return value;
    }
}

} // namespace

// Entries follow the header: key number, length, bytes.
struct Attributes::Block {
    std::atomic<std::uint32_t> sharers{1};
    std::uint32_t count = 0;
    std::uint32_t used = 0;
    std::uint32_t capacity = 0;
    KeyId greatestKey = 0; // a key above it is new: records mostly come with their keys in rising order

    unsigned char* Bytes() { return reinterpret_cast<unsigned char*>(this + 1); }

    static Block* Allocate(std::size_t capacity)
    {
        void* const memory = std::malloc(sizeof(Block) + capacity);
        if (!memory) throw std::bad_alloc();
        Block* const block = new (memory) Block;
        block->capacity = static_cast<std::uint32_t>(capacity);
        return block;
    }

    // The block with another capacity, perhaps at another place. Only for a block that nobody shares.
    Block* Resize(std::size_t newCapacity)
    {
        void* const memory = std::realloc(static_cast<void*>(this), sizeof(Block) + newCapacity);
        if (!memory) throw std::bad_alloc();
        auto* const block = static_cast<Block*>(memory);
        block->capacity = static_cast<std::uint32_t>(newCapacity);
        return block;
    }
};

struct Attributes::Wide {
    struct Item {
        KeyId key;
        std::string value;
    };
    std::atomic<std::uint32_t> sharers{1};
    std::vector<Item> items;
    std::unordered_map<KeyId, std::size_t> places;
};

Attributes::Attributes(const Attributes& other) : m_rep(other.m_rep)
{
    if (!m_rep) return;
    auto& sharers = IsWide() ? AsWide()->sharers : AsBlock()->sharers;
    sharers.fetch_add(1, std::memory_order_relaxed);
}

Attributes& Attributes::operator=(const Attributes& other)
{
    if (m_rep != other.m_rep) *this = Attributes(other);
    return *this;
}

Attributes& Attributes::operator=(Attributes&& other) noexcept
{
    if (this != &other) {
        Release();
        m_rep = std::exchange(other.m_rep, 0);
    }
    return *this;
}

Attributes::~Attributes()
{
    Release();
}

void Attributes::Release() noexcept
{
    if (!m_rep) return;
    if (IsWide()) {
        if (AsWide()->sharers.fetch_sub(1, std::memory_order_acq_rel) == 1) delete AsWide();
    } else {
        if (AsBlock()->sharers.fetch_sub(1, std::memory_order_acq_rel) == 1) std::free(AsBlock());
    }
    m_rep = 0;
}

std::string_view Attributes::Find(KeyId key) const
{
    if (!m_rep) return {};
    if (IsWide()) {
        const Wide& wide = *AsWide();
        const auto found = wide.places.find(key);
        return found == wide.places.end() ? std::string_view() : wide.items[found->second].value;
    }
    Block& block = *AsBlock();
    const unsigned char* at = block.Bytes();
    for (std::uint32_t left = block.count; left > 0; --left) {
        const KeyId found = ReadVarint(at);
        const std::uint32_t length = ReadVarint(at);
        if (found == key) return {reinterpret_cast<const char*>(at), length};
        at += length;
    }
    return {};
}

std::size_t Attributes::Count() const
{
    if (!m_rep) return 0;
    return IsWide() ? AsWide()->items.size() : AsBlock()->count;
}

// Makes the block this object's alone, with at least the capacity.
void Attributes::Own(std::size_t capacity)
{
    if (!m_rep) {
        m_rep = reinterpret_cast<std::uintptr_t>(Block::Allocate(capacity));
        return;
    }
    Block* const block = AsBlock();
    if (block->sharers.load(std::memory_order_acquire) == 1) {
        if (block->capacity < capacity) {
            const std::size_t grown = std::max<std::size_t>(capacity, block->capacity + block->capacity / 2u);
            m_rep = reinterpret_cast<std::uintptr_t>(block->Resize(grown));
        }
        return;
    }
    Block* const copy = Block::Allocate(std::max<std::size_t>(capacity, block->used));
    copy->count = block->count;
    copy->used = block->used;
    copy->greatestKey = block->greatestKey;
    std::memcpy(copy->Bytes(), block->Bytes(), block->used);
    Release();
    m_rep = reinterpret_cast<std::uintptr_t>(copy);
}

void Attributes::Set(KeyId key, std::string_view value)
{
    if (!value.data()) value = "";
    if (IsWide()) return SetWide(key, value);
    const std::size_t used = m_rep ? AsBlock()->used : 0;
    const std::size_t needed = used + 2 * kMaxVarint + value.size();
    if (needed > kMaxFlatBytes || Count() >= kMaxFlatKeys) return SetWide(key, value);

    const bool isSurelyNew = !m_rep || key > AsBlock()->greatestKey;
    const std::string_view old = isSurelyNew ? std::string_view() : Find(key);
    if (old.data() && old == value) return;
    // The value may stand in the block that is about to move.
    std::string kept;
    if (m_rep) {
        const char* const bytes = reinterpret_cast<const char*>(AsBlock()->Bytes());
        if (!std::less<>()(value.data(), bytes) && std::less<>()(value.data(), bytes + used)) value = kept = value;
    }

    unsigned char head[2 * kMaxVarint];
    std::size_t headLength = WriteVarint(head, key);
    headLength += WriteVarint(head + headLength, static_cast<std::uint32_t>(value.size()));
    if (!old.data()) {
        Own(used + headLength + value.size());
        Block& block = *AsBlock();
        unsigned char* const end = block.Bytes() + used;
        std::memcpy(end, head, headLength);
        if (!value.empty()) std::memcpy(end + headLength, value.data(), value.size());
        block.used = static_cast<std::uint32_t>(used + headLength + value.size());
        ++block.count;
        block.greatestKey = std::max(block.greatestKey, key);
        return;
    }

    // Replace the entry where it stands, so that the key keeps its place.
    unsigned char oldHead[2 * kMaxVarint];
    std::size_t oldHeadLength = WriteVarint(oldHead, key);
    oldHeadLength += WriteVarint(oldHead + oldHeadLength, static_cast<std::uint32_t>(old.size()));
    const std::size_t from =
        static_cast<std::size_t>(reinterpret_cast<const unsigned char*>(old.data()) - AsBlock()->Bytes()) -
        oldHeadLength;
    const std::size_t oldLength = oldHeadLength + old.size();
    const std::size_t newLength = headLength + value.size();
    Own(used - oldLength + newLength);
    Block& block = *AsBlock();
    unsigned char* const place = block.Bytes() + from;
    std::memmove(place + newLength, place + oldLength, used - from - oldLength);
    std::memcpy(place, head, headLength);
    if (!value.empty()) std::memcpy(place + headLength, value.data(), value.size());
    block.used = static_cast<std::uint32_t>(used - oldLength + newLength);
}

void Attributes::Widen()
{
    auto wide = std::make_unique<Wide>();
    for (const Entry entry : *this) {
        wide->places.emplace(entry.key, wide->items.size());
        wide->items.push_back({entry.key, std::string(entry.value)});
    }
    Release();
    m_rep = reinterpret_cast<std::uintptr_t>(wide.release()) | 1;
}

void Attributes::SetWide(KeyId key, std::string_view value)
{
    std::string kept(value);
    if (!IsWide()) {
        Widen();
    } else if (AsWide()->sharers.load(std::memory_order_acquire) != 1) {
        auto copy = std::make_unique<Wide>();
        copy->items = AsWide()->items;
        copy->places = AsWide()->places;
        Release();
        m_rep = reinterpret_cast<std::uintptr_t>(copy.release()) | 1;
    }
    Wide& wide = *AsWide();
    const auto found = wide.places.find(key);
    if (found != wide.places.end()) {
        wide.items[found->second].value = std::move(kept);
        return;
    }
    wide.items.push_back({key, std::move(kept)});
    try {
        wide.places.emplace(key, wide.items.size() - 1);
    } catch (...) {
        wide.items.pop_back();
        throw;
    }
}

void Attributes::Reserve(std::size_t bytes)
{
    if (!IsWide() && bytes > 0 && bytes <= kMaxFlatBytes) Own(bytes);
}

std::size_t Attributes::ShrinkToFit()
{
    if (!m_rep || IsWide()) return 0;
    Block* const block = AsBlock();
    const std::size_t used = block->used;
    if (block->capacity > used && block->sharers.load(std::memory_order_acquire) == 1) {
        if (used == 0)
            Release();
        else
            m_rep = reinterpret_cast<std::uintptr_t>(block->Resize(used));
    }
    return used;
}

Attributes::Iterator Attributes::begin() const
{
    Iterator iterator;
    if (!m_rep) return iterator;
    iterator.m_isWide = IsWide();
    iterator.m_left = Count();
    iterator.m_at = IsWide() ? static_cast<const void*>(AsWide()->items.data()) : AsBlock()->Bytes();
    iterator.Read();
    return iterator;
}

Attributes::Iterator Attributes::end() const
{
    return {};
}

Attributes::Iterator& Attributes::Iterator::operator++()
{
    --m_left;
    Read();
    return *this;
}

// Reads the entry at the position and steps behind it.
void Attributes::Iterator::Read()
{
    if (m_left == 0) return;
    if (m_isWide) {
        const auto* const item = static_cast<const Wide::Item*>(m_at);
        m_entry = {item->key, item->value};
        m_at = item + 1;
        return;
    }
    const auto* at = static_cast<const unsigned char*>(m_at);
    const KeyId key = ReadVarint(at);
    const std::uint32_t length = ReadVarint(at);
    m_entry = {key, {reinterpret_cast<const char*>(at), length}};
    m_at = at + length;
}

} // namespace obmgr
