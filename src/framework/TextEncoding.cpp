#include "framework/TextEncoding.h"

#include <memory>
#include <optional>

#include <unicode/ucnv.h>

#include "framework/Exception.h"
#include "framework/Utf8.h"

namespace obmgr {

namespace {

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};

// One converter of the library, strict: fallback mappings and substitutes count as missing.
class Converter {
public:
    explicit Converter(const char* name)
    {
        UErrorCode status = U_ZERO_ERROR;
        m_converter.reset(ucnv_open(name, &status));
        ucnv_setToUCallBack(m_converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
        ucnv_setFromUCallBack(m_converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
        if (U_FAILURE(status)) AfxThrowNotSupportedException();
        ucnv_setFallback(m_converter.get(), false);
    }

    // The one character of the basic plane that the bytes stand for.
    std::optional<char16_t> Decode(std::string_view bytes) const
    {
        UChar out[4];
        UErrorCode status = U_ZERO_ERROR;
        const int length =
            ucnv_toUChars(m_converter.get(), out, 4, bytes.data(), static_cast<int>(bytes.size()), &status);
        if (U_FAILURE(status) || length != 1) return std::nullopt;
        return out[0];
    }

    std::string Encode(char16_t c) const
    {
        char out[8];
        UErrorCode status = U_ZERO_ERROR;
        const int length = ucnv_fromUChars(m_converter.get(), out, sizeof out, &c, 1, &status);
        return U_FAILURE(status) ? std::string() : std::string(out, static_cast<std::size_t>(length));
    }

private:
    std::unique_ptr<UConverter, CloseConverter> m_converter;
};

std::string bytesOf(unsigned code)
{
    std::string bytes;
    if (code > 0xFF) bytes += static_cast<char>(static_cast<unsigned char>(code >> 8));
    bytes += static_cast<char>(static_cast<unsigned char>(code & 0xFF));
    return bytes;
}

} // namespace

LegacyCodes::LegacyCodes(const char* writeName, const char* readName)
    : m_codes(0x10000), m_characters(0x10000, static_cast<char16_t>(kReplacementCharacter))
{
    const Converter writer(writeName);
    const Converter reader(readName);
    const auto add = [&](unsigned code) {
        const std::string bytes = bytesOf(code);
        const auto c = reader.Decode(bytes);
        if (!c) return false;
        m_characters[code] = *c;
        // Some characters have two codes, and some codes mean one thing to the one and another to the other reader.
        if (writer.Encode(*c) == bytes && writer.Decode(bytes) == c) m_codes[*c] = static_cast<std::uint16_t>(code);
        return true;
    };
    for (unsigned byte = 0; byte < 0x80; ++byte) {
        // Some control bytes trade places in the converter; as text they stand for themselves or are not written.
        m_plain[byte] = reader.Decode(bytesOf(byte)) == byte;
        m_characters[byte] = static_cast<char16_t>(byte);
        if (m_plain[byte]) m_codes[byte] = static_cast<std::uint16_t>(byte);
    }
    for (unsigned lead = 0x80; lead < 0x100; ++lead) {
        if (add(lead)) continue;
        for (unsigned trail = 0x40; trail < 0xFF; ++trail)
            if (add(lead * 0x100 + trail)) m_lead[lead] = true;
    }
}

const LegacyCodes& LegacyCodes::Of(TextEncoding encoding)
{
    if (encoding == TextEncoding::ShiftJis) {
        static const LegacyCodes shiftJis("Shift_JIS", "Shift_JIS");
        return shiftJis;
    }
    if (encoding == TextEncoding::EucKr) {
        // Files that declare EUC-KR are read with the extended table.
        static const LegacyCodes eucKr("EUC-KR", "windows-949");
        return eucKr;
    }
    AfxThrowInvalidArgException();
}

bool CanEncode(TextEncoding encoding, char32_t c)
{
    if (!IsCharacter(c)) return false;
    if (encoding == TextEncoding::Utf8 || encoding == TextEncoding::Utf16LE) return true;
    return c == 0 || LegacyCodes::Of(encoding).CodeOf(c) != 0;
}

namespace {

CString decodeUtf16(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size() / 2);
    const auto unitAt = [&](std::size_t at) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1])
                                                                                 << 8);
    };
    std::size_t at = 0;
    while (at + 1 < bytes.size()) {
        char32_t c = unitAt(at);
        at += 2;
        if (c >= 0xD800 && c < 0xDC00 && at + 1 < bytes.size()) {
            if (const char32_t low = unitAt(at); low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            }
        }
        text += static_cast<wchar_t>(IsCharacter(c) ? c : kReplacementCharacter);
    }
    if (at < bytes.size()) text += static_cast<wchar_t>(kReplacementCharacter);
    return CString(std::move(text));
}

CString decodeLegacy(const LegacyCodes& codes, std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const auto byte = static_cast<unsigned char>(bytes[at]);
        char32_t c = codes.CharacterOf(byte);
        if (codes.IsLeadByte(byte) && at + 1 < bytes.size()) {
            c = codes.CharacterOf(byte * 0x100U + static_cast<unsigned char>(bytes[at + 1]));
            // A broken pair loses its first byte only: the second may be a line end or a quote.
            if (c != kReplacementCharacter) ++at;
        }
        text += static_cast<wchar_t>(c);
    }
    return CString(std::move(text));
}

} // namespace

CString DecodeText(TextEncoding encoding, std::string_view bytes)
{
    switch (encoding) {
    case TextEncoding::Utf8: return FromUtf8(bytes);
    case TextEncoding::Utf16LE: return decodeUtf16(bytes);
    case TextEncoding::ShiftJis:
    case TextEncoding::EucKr: return decodeLegacy(LegacyCodes::Of(encoding), bytes);
    }
    AfxThrowInvalidArgException();
}

} // namespace obmgr
