// The steps of UTF-8 coding, one character at a time.
#pragma once

#include <string>

namespace obmgr {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

constexpr bool IsSurrogate(char32_t c) noexcept
{
    return c >= 0xD800 && c <= 0xDFFF;
}

// False for surrogates and values beyond the last code point, which no encoding can hold.
constexpr bool IsCharacter(char32_t c) noexcept
{
    return c <= 0x10FFFF && !IsSurrogate(c);
}

// Writes the 1 to 4 bytes of a character at `out` and gives the place behind them; U+FFFD for what is none.
inline char* EncodeUtf8(char* out, char32_t c) noexcept
{
    if (!IsCharacter(c)) c = kReplacementCharacter;
    const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
    return out;
}

inline void AppendUtf8(std::string& bytes, char32_t c)
{
    char unit[4];
    bytes.append(unit, static_cast<std::size_t>(EncodeUtf8(unit, c) - unit));
}

// Takes one character from [position, end), which must not be empty. An invalid sequence gives U+FFFD and takes the
// bytes of it that began well, at least one.
inline char32_t DecodeUtf8(const char*& position, const char* end) noexcept
{
    const auto byteAt = [](const char* at) { return static_cast<char32_t>(static_cast<unsigned char>(*at)); };
    const char32_t lead = byteAt(position++);
    if (lead < 0x80) return lead;
    int more = 0;
    char32_t low = 0x80; // the range of the second byte: excludes overlong forms, surrogates, beyond the last
    char32_t high = 0xBF;
    char32_t c = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        more = 1;
        c = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        more = 2;
        c = lead & 0x0F;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        more = 3;
        c = lead & 0x07;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return kReplacementCharacter;
    }
    for (; more > 0; --more) {
        if (position == end) return kReplacementCharacter;
        const char32_t next = byteAt(position);
        if (next < low || next > high) return kReplacementCharacter;
        low = 0x80;
        high = 0xBF;
        c = (c << 6) | (next & 0x3F);
        ++position;
    }
    return c;
}

} // namespace obmgr
