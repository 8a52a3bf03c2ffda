// The parser's 16-bit text against our own: wide text, and UTF-8 as attributes are kept in.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <xercesc/util/XercesDefs.hpp>

#include "framework/String.h"

namespace obmgr {

static_assert(sizeof(XMLCh) == sizeof(char16_t), "the parser's text is UTF-16");

std::u16string_view XmlView(const XMLCh* text);

// Surrogate pairs become one character. A null text is empty.
CString FromXml(const XMLCh* text);
// What is no character becomes U+FFFD.
std::u16string ToXml(std::wstring_view text);

// Ignores the case of ASCII letters; `lower` is in lower case.
bool EqualsIgnoringCase(const XMLCh* text, std::u16string_view lower);

// The text, cut behind two thousand characters: what a hostile file puts into messages is not shown without end.
CString Shortened(const CString& text);

// Turns one text after the other into UTF-8, in a buffer that is kept.
class Utf8Text {
public:
    // Good until the next call.
    std::string_view Of(const XMLCh* text);

private:
    static constexpr std::size_t kKeptRoom = 64 * 1024;
    static constexpr int kLongestCharacter = 4;

    void Grow(std::size_t used);

    std::unique_ptr<char[]> m_bytes;
    std::size_t m_room = 0;
};

} // namespace obmgr
