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
    // One value of megabytes is no reason to hold the room for ever.
    if (m_room > kKeptRoom) m_room = 0;
    if (m_room == 0) Grow(0);
    char* out = m_bytes.get();
    char* roomEnd = out + m_room;
    while (*text) {
        if (roomEnd - out < kLongestCharacter) {
            const auto used = static_cast<std::size_t>(out - m_bytes.get());
            Grow(used);
            out = m_bytes.get() + used;
            roomEnd = m_bytes.get() + m_room;
        }
        char32_t c = *text++;
        if (c < 0x80) {
            *out++ = static_cast<char>(c);
            continue;
        }
        if (LeadsPair(c) && EndsPair(*text)) c = Joined(c, *text++);
        out = EncodeUtf8(out, c);
    }
    return {m_bytes.get(), static_cast<std::size_t>(out - m_bytes.get())};
}

// More room, with the bytes used so far.
void Utf8Text::Grow(std::size_t used)
{
    const std::size_t room = m_room == 0 ? kKeptRoom : m_room * 2;
    auto bytes = std::make_unique_for_overwrite<char[]>(room);
    std::copy_n(m_bytes.get(), used, bytes.get());
    m_bytes = std::move(bytes);
    m_room = room;
}

} // namespace obmgr
