#include "framework/FileName.h"

#include "framework/Utf8.h"

namespace obmgr {

namespace {

constexpr char32_t kEscapedByte = 0xDC00; // + 0x80 to 0xFF

} // namespace

std::string NativePath(std::wstring_view path)
{
    std::string bytes;
    bytes.reserve(path.size());
    for (const wchar_t wide : path) {
        const auto c = static_cast<char32_t>(wide);
        if (c >= kEscapedByte + 0x80 && c <= kEscapedByte + 0xFF)
            bytes += static_cast<char>(static_cast<unsigned char>(c - kEscapedByte));
        else
            AppendUtf8(bytes, c);
    }
    return bytes;
}

CString PathFromNative(std::string_view path)
{
    std::wstring text;
    text.reserve(path.size());
    const char* position = path.data();
    const char* const end = position + path.size();
    while (position != end) {
        const char* const start = position;
        const char32_t c = DecodeUtf8(position, end);
        const std::string_view taken(start, static_cast<std::size_t>(position - start));
        if (c != kReplacementCharacter || taken == "\xEF\xBF\xBD") {
            text += static_cast<wchar_t>(c);
            continue;
        }
        for (const char byte : taken)
            text += static_cast<wchar_t>(kEscapedByte + static_cast<unsigned char>(byte));
    }
    return CString(std::move(text));
}

} // namespace obmgr
