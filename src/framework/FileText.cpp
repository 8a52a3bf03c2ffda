// Text output of CStdioFile: from wide or UTF-8 text into the file's encoding.
// A whole design goes through here; runs of ASCII take a short way.

#include <algorithm>
#include <bit>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "framework/File.h"
#include "framework/Utf8.h"

using obmgr::LegacyCodes;
using obmgr::TextEncoding;

namespace {

// No character takes more bytes than this, references ("&#x10FFFF;") included.
constexpr std::size_t kLongestCode = 16;

constexpr bool isAscii(char c) noexcept
{
    return static_cast<unsigned char>(c) < 0x80;
}

const char* endOfAscii(const char* position, const char* end) noexcept
{
    while (end - position >= 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, position, sizeof eight);
        if ((eight & 0x8080808080808080U) != 0) break;
        position += 8;
    }
    while (position != end && isAscii(*position))
        ++position;
    return position;
}

struct Utf8Encoder {
    static constexpr std::size_t kAsciiWidth = 1;
    const char* EndOfPlain(const char* position, const char* end) const noexcept { return endOfAscii(position, end); }
    void CopyPlain(char* out, const char* text, std::size_t count) const noexcept { std::memcpy(out, text, count); }
    char* Put(char* out, char32_t c) const noexcept { return obmgr::EncodeUtf8(out, c); }
};

struct Utf16Encoder {
    static constexpr std::size_t kAsciiWidth = 2;
    const char* EndOfPlain(const char* position, const char* end) const noexcept { return endOfAscii(position, end); }
    void CopyPlain(char* out, const char* text, std::size_t count) const noexcept
    {
#ifdef __SSE2__
        for (; count >= 16; count -= 16, text += 16, out += 32) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
            const __m128i zero = _mm_setzero_si128();
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(bytes, zero));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 16), _mm_unpackhi_epi8(bytes, zero));
        }
#endif
        if constexpr (std::endian::native == std::endian::little) {
            for (; count >= 4; count -= 4, text += 4, out += 8) {
                std::uint32_t four = 0;
                std::memcpy(&four, text, sizeof four);
                std::uint64_t spread = four;
                spread = (spread | (spread << 16)) & 0x0000FFFF0000FFFFU;
                spread = (spread | (spread << 8)) & 0x00FF00FF00FF00FFU;
                std::memcpy(out, &spread, sizeof spread);
            }
        }
        for (; count > 0; --count) {
            *out++ = *text++;
            *out++ = '\0';
        }
    }
    static char* PutUnit(char* out, char32_t unit) noexcept
    {
        *out++ = static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
        *out++ = static_cast<char>(static_cast<unsigned char>(unit >> 8));
        return out;
    }
    char* Put(char* out, char32_t c) const noexcept
    {
        if (!obmgr::IsCharacter(c)) c = obmgr::kReplacementCharacter;
        if (c < 0x10000) return PutUnit(out, c);
        c -= 0x10000;
        return PutUnit(PutUnit(out, 0xD800 + (c >> 10)), 0xDC00 + (c & 0x3FF));
    }
};

struct LegacyEncoder {
    static constexpr std::size_t kAsciiWidth = 1;
    const LegacyCodes& codes;

    const char* EndOfPlain(const char* position, const char* end) const noexcept
    {
        while (position != end && codes.IsPlain(*position))
            ++position;
        return position;
    }
    void CopyPlain(char* out, const char* text, std::size_t count) const noexcept { std::memcpy(out, text, count); }
    char* Put(char* out, char32_t c) const noexcept
    {
        if (!obmgr::IsCharacter(c)) c = obmgr::kReplacementCharacter;
        const unsigned code = codes.CodeOf(c);
        if (code == 0 && c != 0) return PutReference(out, c);
        if (code > 0xFF) *out++ = static_cast<char>(static_cast<unsigned char>(code >> 8));
        *out++ = static_cast<char>(static_cast<unsigned char>(code & 0xFF));
        return out;
    }
    static char* PutReference(char* out, char32_t c) noexcept
    {
        out = std::copy_n("&#x", 3, out);
        int shift = 20;
        while (shift > 0 && (c >> shift) == 0)
            shift -= 4;
        for (; shift >= 0; shift -= 4)
            *out++ = "0123456789ABCDEF"[(c >> shift) & 0xF];
        *out++ = ';';
        return out;
    }
};

} // namespace

// A place for `count` bytes, at most the buffer's size; the caller adds what it used to m_filled.
char* CStdioFile::Room(std::size_t count)
{
    if (kBufferSize - m_filled < count) FlushBuffer();
    return m_output.get() + m_filled;
}

template <class Put> void CStdioFile::WithEncoder(Put put)
{
    BeginWrite();
    switch (m_encoding) {
    case TextEncoding::Utf8: put(Utf8Encoder{}); break;
    case TextEncoding::Utf16LE: put(Utf16Encoder{}); break;
    case TextEncoding::ShiftJis:
    case TextEncoding::EucKr: put(LegacyEncoder{LegacyCodes::Of(m_encoding)}); break;
    }
}

template <class Encoder> void CStdioFile::PutUtf8(std::string_view text, const Encoder& encoder)
{
    const char* position = text.data();
    const char* const textEnd = position + text.size();
    while (position != textEnd) {
        const char* const plainEnd = encoder.EndOfPlain(position, textEnd);
        while (position != plainEnd) {
            char* const out = Room(kLongestCode);
            const std::size_t count = std::min(static_cast<std::size_t>(plainEnd - position),
                                               (kBufferSize - m_filled) / Encoder::kAsciiWidth);
            encoder.CopyPlain(out, position, count);
            m_filled += count * Encoder::kAsciiWidth;
            position += count;
        }
        while (position != textEnd && !isAscii(*position)) {
            char* const out = Room(kLongestCode);
            m_filled += static_cast<std::size_t>(encoder.Put(out, obmgr::DecodeUtf8(position, textEnd)) - out);
        }
        // An ASCII character that is not plain in this encoding.
        if (position != textEnd && encoder.EndOfPlain(position, position + 1) == position) {
            char* const out = Room(kLongestCode);
            m_filled += static_cast<std::size_t>(encoder.Put(out, static_cast<unsigned char>(*position++)) - out);
        }
    }
}

template <class Encoder> void CStdioFile::PutWide(std::wstring_view text, const Encoder& encoder)
{
    while (!text.empty()) {
        char* out = Room(kLongestCode);
        const std::size_t count = std::min(text.size(), (kBufferSize - m_filled) / kLongestCode);
        for (const wchar_t c : text.substr(0, count))
            out = encoder.Put(out, static_cast<char32_t>(c));
        m_filled = static_cast<std::size_t>(out - m_output.get());
        text.remove_prefix(count);
    }
}

void CStdioFile::WriteUtf8(std::string_view text)
{
    WithEncoder([&](const auto& encoder) { PutUtf8(text, encoder); });
}

void CStdioFile::WriteString(const wchar_t* text)
{
    if (!text) AfxThrowInvalidArgException();
    WithEncoder([&](const auto& encoder) { PutWide(std::wstring_view(text), encoder); });
}
