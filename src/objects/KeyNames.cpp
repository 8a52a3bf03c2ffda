#include "objects/KeyNames.h"

#include "common/LosslessUtf8.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <vector>
#include <xercesc/util/XMLChar.hpp>

namespace obmgr {
namespace {

// The names stand in blocks that never move, each twice as large as the one before, so that NameOfKey needs no lock.
constexpr std::uint32_t kFirstBlock = 256;
constexpr std::size_t kBlocks = 24;

// By the parser's own tables: what it reads as a name can be written, and what is written it will read.
bool IsXmlName(std::string_view utf8)
{
    std::u16string name;
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t c = DecodeLossless(utf8, at);
        if (c > 0xFFFF) return false;
        name.push_back(static_cast<char16_t>(c));
    }
    return xercesc::XMLChar1_0::isValidName(name.data(), name.size());
}

// One code point after the other, so that both forms of a key give the same.
constexpr std::uint64_t kHashStart = 0xCBF29CE484222325;
constexpr std::uint64_t Hashed(std::uint64_t hash, char32_t c)
{
    return (hash ^ c) * 0x100000001B3;
}

std::uint64_t HashOf(std::wstring_view key)
{
    std::uint64_t hash = kHashStart;
    for (const wchar_t c : key)
        hash = Hashed(hash, static_cast<char32_t>(c));
    return hash;
}

std::uint64_t HashOf(std::string_view utf8)
{
    std::uint64_t hash = kHashStart;
    for (std::size_t at = 0; at < utf8.size();)
        hash = Hashed(hash, DecodeLossless(utf8, at));
    return hash;
}

struct Entry {
    std::uint64_t hash = 0;
    KeyId id = 0;
    KeyName name;
    std::wstring wide;

    bool Is(std::wstring_view key) const { return wide == key; }
    bool Is(std::string_view utf8) const { return name.text == utf8; }
};

// Where the entries are found: open addressing, never more than half full. A grown table replaces it; the old one
// stays, since a reader may still be in it.
struct Slots {
    explicit Slots(std::size_t size) : mask(size - 1), entries(std::make_unique<std::atomic<const Entry*>[]>(size)) {}

    template <class Text> const Entry* Find(Text key, std::uint64_t hash) const
    {
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            const Entry* const entry = entries[at].load(std::memory_order_acquire);
            if (!entry || (entry->hash == hash && entry->Is(key))) return entry;
        }
    }

    void Insert(const Entry& entry)
    {
        std::size_t at = entry.hash & mask;
        while (entries[at].load(std::memory_order_relaxed))
            at = (at + 1) & mask;
        entries[at].store(&entry, std::memory_order_release);
    }

    std::size_t mask;
    std::unique_ptr<std::atomic<const Entry*>[]> entries;
};

// Reading takes no lock: every attribute that is read by name passes here.
class KeyTable {
public:
    KeyTable() { AddSlots(kFirstBlock * 2); }

    template <class Text> std::optional<KeyId> LookUp(Text key) const
    {
        const Entry* const entry = m_slots.load(std::memory_order_acquire)->Find(key, HashOf(key));
        if (!entry) return std::nullopt;
        return entry->id;
    }

    template <class Text> KeyId Intern(Text key)
    {
        if (const auto known = LookUp(key)) return *known;
        const std::lock_guard lock(m_mutex);
        if (const auto known = LookUp(key)) return *known;
        const auto [block, place] = Locate(m_count);
        if (block >= kBlocks) throw std::length_error("too many attribute keys");
        if (!m_owned[block]) m_owned[block] = std::make_unique<Entry[]>(std::size_t{kFirstBlock} << block);
        if ((std::size_t{m_count} + 1) * 2 > m_slots.load(std::memory_order_relaxed)->mask + 1) Grow();
        Entry entry = MakeEntry(key);
        Entry& kept = m_owned[block][place];
        kept = std::move(entry);
        m_blocks[block].store(m_owned[block].get(), std::memory_order_release);
        m_slots.load(std::memory_order_relaxed)->Insert(kept);
        return m_count++;
    }

    const KeyName& Name(KeyId id) const
    {
        const auto [block, place] = Locate(id);
        return m_blocks[block].load(std::memory_order_acquire)[place].name;
    }

private:
    struct Place {
        std::size_t block;
        std::uint32_t place;
    };

    // Block b holds kFirstBlock << b names, so it begins at kFirstBlock * (2^b - 1).
    static Place Locate(KeyId id)
    {
        const std::uint32_t scaled = id / kFirstBlock + 1;
        const auto block = static_cast<std::size_t>(std::bit_width(scaled) - 1);
        return {block, id - kFirstBlock * ((1u << block) - 1)};
    }

    Entry MakeEntry(std::wstring_view key) const
    {
        std::string utf8;
        AppendLossless(utf8, key);
        return MakeEntry(std::move(utf8));
    }
    Entry MakeEntry(std::string_view utf8) const { return MakeEntry(std::string(utf8)); }
    Entry MakeEntry(std::string utf8) const
    {
        Entry entry;
        entry.hash = HashOf(utf8);
        entry.id = m_count;
        AppendWide(entry.wide, utf8);
        const bool isAscii =
            std::all_of(utf8.begin(), utf8.end(), [](char c) { return static_cast<signed char>(c) > 0; });
        entry.name.isXmlName = IsXmlName(utf8);
        entry.name.isAscii = isAscii;
        entry.name.opening = "<" + utf8 + " contents=\"";
        entry.name.text = std::move(utf8);
        return entry;
    }

    void AddSlots(std::size_t size)
    {
        m_allSlots.push_back(std::make_unique<Slots>(size));
        for (KeyId id = 0; id < m_count; ++id) {
            const auto [block, place] = Locate(id);
            m_allSlots.back()->Insert(m_owned[block][place]);
        }
        m_slots.store(m_allSlots.back().get(), std::memory_order_release);
    }
    void Grow() { AddSlots((m_slots.load(std::memory_order_relaxed)->mask + 1) * 2); }

    std::mutex m_mutex; // for Intern
    std::atomic<Slots*> m_slots{nullptr};
    std::vector<std::unique_ptr<Slots>> m_allSlots;
    std::array<std::unique_ptr<Entry[]>, kBlocks> m_owned;
    std::array<std::atomic<const Entry*>, kBlocks> m_blocks{};
    KeyId m_count = 0;
};

// Never destroyed: objects may outlive every other static.
KeyTable& Keys()
{
    static KeyTable* const table = new KeyTable;
    return *table;
}

} // namespace

KeyId InternKey(std::string_view utf8)
{
    return Keys().Intern(utf8);
}

namespace {

// A key with something that is no code point has two forms that differ; only the narrow one finds itself again.
bool HasOneForm(std::wstring_view key)
{
    return std::all_of(key.begin(), key.end(), [](wchar_t c) { return static_cast<char32_t>(c) <= kLastCodePoint; });
}

} // namespace

KeyId InternKey(const wchar_t* key)
{
    const std::wstring_view view(key ? key : L"");
    return HasOneForm(view) ? Keys().Intern(view) : Keys().Intern(Utf8Buffer(view).View());
}

std::optional<KeyId> LookUpKey(std::string_view utf8)
{
    return Keys().LookUp(utf8);
}

std::optional<KeyId> LookUpKey(const wchar_t* key)
{
    const std::wstring_view view(key ? key : L"");
    return HasOneForm(view) ? Keys().LookUp(view) : Keys().LookUp(Utf8Buffer(view).View());
}

const KeyName& NameOfKey(KeyId key)
{
    return Keys().Name(key);
}

} // namespace obmgr
