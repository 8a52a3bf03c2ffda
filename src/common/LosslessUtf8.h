// UTF-8 as the inner form of text: attribute values are kept in it. Unlike the conversions for files, this one loses
// nothing: a code point that no file can hold (a lone surrogate) survives in memory, and the writer refuses it.
#pragma once

#include "framework/Utf8.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace obmgr {

inline constexpr char32_t kLastCodePoint = 0x10FFFF;

// Writes `c` to `out`, which has room for four bytes; gives the number of bytes.
inline int EncodeLossless(char32_t c, char* out)
{
    if (c > kLastCodePoint) c = kReplacementCharacter;
    if (c < 0x80) {
        out[0] = static_cast<char>(c);
        return 1;
    }
    if (c < 0x800) {
        out[0] = static_cast<char>(0xC0 | (c >> 6));
        out[1] = static_cast<char>(0x80 | (c & 0x3F));
        return 2;
    }
    if (c < 0x10000) {
        out[0] = static_cast<char>(0xE0 | (c >> 12));
        out[1] = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out[2] = static_cast<char>(0x80 | (c & 0x3F));
        return 3;
    }
    out[0] = static_cast<char>(0xF0 | (c >> 18));
    out[1] = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out[2] = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out[3] = static_cast<char>(0x80 | (c & 0x3F));
    return 4;
}

// The code point at `at`, which is moved behind it. A byte that begins no sequence reads as U+FFFD.
inline char32_t DecodeLossless(std::string_view text, std::size_t& at)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    if (length == 0 || at + length > text.size()) {
        ++at;
        return kReplacementCharacter;
    }
    char32_t c = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            ++at;
            return kReplacementCharacter;
        }
        c = (c << 6) | (byte(at + i) & 0x3Fu);
    }
    at += length;
    return c > kLastCodePoint ? kReplacementCharacter : c;
}

inline void AppendLossless(std::string& out, std::wstring_view text)
{
    for (const wchar_t c : text) {
        char bytes[4];
        const int length = EncodeLossless(static_cast<char32_t>(c), bytes);
        out.append(bytes, static_cast<std::size_t>(length));
    }
}

inline void AppendWide(std::wstring& out, std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        const auto c = static_cast<unsigned char>(text[at]);
        if (c < 0x80) {
            out.push_back(static_cast<wchar_t>(c));
            ++at;
        } else {
            out.push_back(static_cast<wchar_t>(DecodeLossless(text, at)));
        }
    }
}

// A short text in UTF-8 on the stack: keys and numbers pass through it without an allocation.
class Utf8Buffer {
public:
    explicit Utf8Buffer(std::wstring_view text)
    {
        if (text.size() * 4 <= sizeof m_short) {
            std::size_t length = 0;
            for (const wchar_t c : text)
                length += static_cast<std::size_t>(EncodeLossless(static_cast<char32_t>(c), m_short + length));
            m_view = {m_short, length};
        } else {
            m_long.reserve(text.size());
            AppendLossless(m_long, text);
            m_view = m_long;
        }
    }
    Utf8Buffer(const Utf8Buffer&) = delete;
    Utf8Buffer& operator=(const Utf8Buffer&) = delete;

    std::string_view View() const { return m_view; }

private:
    char m_short[256];
    std::string m_long;
    std::string_view m_view;
};

} // namespace obmgr
