#include "objects/KeyNames.h"

#include "common/Utf8.h"

#include <array>
#include <atomic>
#include <bit>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <stdexcept>
#include <unordered_map>

namespace obmgr {
namespace {

// The names stand in blocks that never move, each twice as large as the one before, so that NameOfKey needs no lock.
constexpr std::uint32_t kFirstBlock = 256;
constexpr std::size_t kBlocks = 24;

bool StartsXmlName(char32_t c)
{
    return c == ':' || c == '_' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= 0xC0 && c <= 0xD6) ||
           (c >= 0xD8 && c <= 0xF6) || (c >= 0xF8 && c <= 0xFF) || (c >= 0x3041 && c <= 0x3094) ||
           (c >= 0x30A1 && c <= 0x30FA) || (c >= 0x4E00 && c <= 0x9FA5) || (c >= 0xAC00 && c <= 0xD7A3);
}

bool ContinuesXmlName(char32_t c)
{
    return StartsXmlName(c) || c == '-' || c == '.' || (c >= '0' && c <= '9') || c == 0x30FC;
}

// Narrower than the rule of XML, so that what passes is a name to every reader.
bool IsXmlName(std::string_view utf8)
{
    std::size_t at = 0;
    while (at < utf8.size()) {
        const bool first = at == 0;
        const char32_t c = DecodeUtf8(utf8, at);
        if (first ? !StartsXmlName(c) : !ContinuesXmlName(c)) return false;
    }
    return !utf8.empty();
}

class KeyTable {
public:
    std::optional<KeyId> LookUp(std::string_view utf8) const
    {
        const std::shared_lock lock(m_mutex);
        const auto found = m_ids.find(utf8);
        if (found == m_ids.end()) return std::nullopt;
        return found->second;
    }

    KeyId Intern(std::string_view utf8)
    {
        if (const auto known = LookUp(utf8)) return *known;
        const std::unique_lock lock(m_mutex);
        if (const auto found = m_ids.find(utf8); found != m_ids.end()) return found->second;
        const KeyId id = m_count;
        const auto [block, place] = Locate(id);
        if (block >= kBlocks) throw std::length_error("too many attribute keys");
        if (place == 0) {
            m_owned[block] = std::make_unique<KeyName[]>(kFirstBlock << block);
            m_blocks[block].store(m_owned[block].get(), std::memory_order_release);
        }
        KeyName& name = m_owned[block][place];
        const bool isAscii =
            std::all_of(utf8.begin(), utf8.end(), [](char c) { return static_cast<signed char>(c) > 0; });
        name = {std::string(utf8), IsXmlName(utf8), isAscii};
        m_ids.emplace(name.text, id);
        ++m_count;
        return id;
    }

    const KeyName& Name(KeyId id) const
    {
        const auto [block, place] = Locate(id);
        return m_blocks[block].load(std::memory_order_acquire)[place];
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

    mutable std::shared_mutex m_mutex;
    std::unordered_map<std::string_view, KeyId> m_ids;
    std::array<std::unique_ptr<KeyName[]>, kBlocks> m_owned;
    std::array<std::atomic<KeyName*>, kBlocks> m_blocks{};
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

KeyId InternKey(const wchar_t* key)
{
    const Utf8Buffer utf8(key ? key : L"");
    return Keys().Intern(utf8.View());
}

std::optional<KeyId> LookUpKey(std::string_view utf8)
{
    return Keys().LookUp(utf8);
}

std::optional<KeyId> LookUpKey(const wchar_t* key)
{
    const Utf8Buffer utf8(key ? key : L"");
    return Keys().LookUp(utf8.View());
}

const KeyName& NameOfKey(KeyId key)
{
    return Keys().Name(key);
}

} // namespace obmgr
