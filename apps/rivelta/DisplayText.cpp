#include "DisplayText.h"

#include "framework/Utf8.h"

#include <cstdlib>
#include <string>

#include <fmt/format.h>
#include <unicode/uchar.h>

namespace obmgr::tool {

namespace {

int columnsOf(char32_t c)
{
    if (c >= 0x20 && c < 0x7F) return 1;
    const auto code = static_cast<UChar32>(c);
    switch (u_charType(code)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
    case U_CONTROL_CHAR: return 0;
    default: break;
    }
    const int width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

} // namespace

int DisplayWidth(std::string_view utf8)
{
    int width = 0;
    const char* const end = utf8.data() + utf8.size();
    for (const char* at = utf8.data(); at != end;)
        width += columnsOf(DecodeUtf8(at, end));
    return width;
}

std::string Shortened(std::string_view utf8, int columns)
{
    if (DisplayWidth(utf8) <= columns) return std::string(utf8);
    int width = 0;
    const char* const end = utf8.data() + utf8.size();
    const char* at = utf8.data();
    while (at != end) {
        const char* next = at;
        width += columnsOf(DecodeUtf8(next, end));
        if (width > columns - 1) break;
        at = next;
    }
    return std::string(utf8.data(), at) + "…";
}

std::string WithoutControls(std::string_view utf8, KeepLineEnds keep)
{
    std::string result;
    result.reserve(utf8.size());
    const char* const end = utf8.data() + utf8.size();
    for (const char* at = utf8.data(); at != end;) {
        const char32_t c = DecodeUtf8(at, end);
        if (c == U'\n' && keep == KeepLineEnds::Yes)
            result += '\n';
        else if (c == U'\n')
            result += "\\n";
        else if (c == U'\r')
            result += "\\r";
        else if (c == U'\t')
            result += "\\t";
        else if (c < 0x20 || (c >= 0x7F && c < 0xA0))
            result += fmt::format("\\x{:02x}", static_cast<unsigned>(c));
        else if (c == 0x2028 || c == 0x2029 || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069))
            result += fmt::format("\\u{:04x}", static_cast<unsigned>(c)); // line ends and turns of direction
        else
            AppendUtf8(result, c);
    }
    return result;
}

bool IsUtf8Shown()
{
    for (const char* const name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* const value = std::getenv(name); value && *value) {
            std::string encoding = value;
            for (char& c : encoding)
                if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
            return encoding.find("utf-8") != std::string::npos || encoding.find("utf8") != std::string::npos;
        }
    return false;
}

} // namespace obmgr::tool
