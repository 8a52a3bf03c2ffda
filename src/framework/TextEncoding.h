// The text encodings of files: which characters they hold, and their codes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/Export.h"
#include "framework/String.h"

namespace obmgr {

// ShiftJis is the vendor table of the platform (5C and 7E are ASCII, the vendor's extra characters included).
// EucKr holds the characters that readers of the plain and of the extended table read alike.
enum class TextEncoding { Utf8, Utf16LE, ShiftJis, EucKr };

// False for what is no character, and for a character that the encoding lacks or does not give back unchanged.
RIVELTA_API bool CanEncode(TextEncoding encoding, char32_t c);

// The text of bytes in an encoding. Broken bytes give U+FFFD; a mark at the start is a character like others.
RIVELTA_API CString DecodeText(TextEncoding encoding, std::string_view bytes);

// The code table of a one-and-two-byte encoding, made once from the converter library.
class RIVELTA_API LegacyCodes {
public:
    // Shift_JIS or EUC-KR; an invalid argument for the others. Raises CNotSupportedException when the converter
    // library does not have the table.
    static const LegacyCodes& Of(TextEncoding encoding);

    LegacyCodes(const char* writeName, const char* readName);

    // 0 when there is no code (the code of U+0000 is 0 and counts as none, too).
    std::uint16_t CodeOf(char32_t c) const noexcept { return c < m_codes.size() ? m_codes[c] : std::uint16_t(0); }
    // True for an ASCII byte that stands for itself.
    bool IsPlain(char byte) const noexcept { return m_plain[static_cast<unsigned char>(byte)]; }
    bool IsLeadByte(unsigned char byte) const noexcept { return m_lead[byte]; }
    // U+FFFD for a code that stands for nothing.
    char32_t CharacterOf(unsigned code) const noexcept { return m_characters[code]; }

private:
    std::vector<std::uint16_t> m_codes; // by character of the basic plane
    std::vector<char16_t> m_characters; // by code: one byte, or lead * 256 + trail
    std::array<bool, 256> m_plain{};
    std::array<bool, 256> m_lead{};
};

} // namespace obmgr
