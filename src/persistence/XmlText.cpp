#include "persistence/XmlText.h"

#include <algorithm>

#include "framework/Utf8.h"

namespace obmgr {
namespace {

constexpr int kLongestShown = 2000;

constexpr bool LeadsPair(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

constexpr bool EndsPair(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

constexpr char32_t Joined(char32_t lead, char32_t trail)
{
    return 0x10000 + ((lead - 0xD800) << 10) + (trail - 0xDC00);
}

} // namespace

std::u16string_view XmlView(const XMLCh* text)
{
    return text ? std::u16string_view(text) : std::u16string_view();
}

CString FromXml(const XMLCh* text)
{
    std::wstring wide;
    for (; text && *text; ++text) {
        char32_t c = *text;
        if (LeadsPair(c) && EndsPair(text[1])) c = Joined(c, *++text);
        wide += static_cast<wchar_t>(c);
    }
    return CString(std::move(wide));
}

std::u16string ToXml(std::wstring_view text)
{
    std::u16string units;
    units.reserve(text.size());
    for (const wchar_t wide : text) {
        auto c = static_cast<char32_t>(wide);
        if (!IsCharacter(c)) c = kReplacementCharacter;
        if (c >= 0x10000) {
            units += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            c = 0xDC00 + (c & 0x3FF);
        }
        units += static_cast<char16_t>(c);
    }
    return units;
}

bool EqualsIgnoringCase(const XMLCh* text, std::u16string_view lower)
{
    for (const char16_t wanted : lower) {
        const char16_t c = *text++;
        if (c != wanted && (c < u'A' || c > u'Z' || c - u'A' + u'a' != wanted)) return false;
    }
    return *text == 0;
}

CString Shortened(const CString& text)
{
    return text.GetLength() <= kLongestShown ? text : text.Left(kLongestShown) + L"...";
}

std::string_view Utf8Text::Of(const XMLCh* text)
{
    const std::size_t length = XmlView(text).size();
    // A unit takes three bytes at most, a pair four.
    const std::size_t needed = length * 3;
    if (needed > m_room || (m_room > kKeptRoom && needed <= kKeptRoom)) {
        m_room = 0;
        m_bytes.reset();
        const std::size_t room = std::max(needed, kKeptRoom);
        m_bytes = std::make_unique_for_overwrite<char[]>(room);
        m_room = room;
    }
    char* out = m_bytes.get();
    const XMLCh* const end = text + length;
    while (text != end) {
        char32_t c = *text++;
        if (c < 0x80) {
            *out++ = static_cast<char>(c);
            continue;
        }
        if (LeadsPair(c) && text != end && EndsPair(*text)) c = Joined(c, *text++);
        out = EncodeUtf8(out, c);
    }
    return {m_bytes.get(), static_cast<std::size_t>(out - m_bytes.get())};
}

} // namespace obmgr
