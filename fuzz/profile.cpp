// Any bytes as a private profile: values are one line and of the asked length, and the same text gives the same
// values in each of its encodings.

#include "framework/PrivateProfile.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

const wchar_t* const kSections[] = {L"s", L"IntersNotesEx1", L"管", L""};
const wchar_t* const kKeys[] = {L"k", L"ShapeXText", L"径", L""};

void CheckValues(const obmgr::PrivateProfile& profile)
{
    for (const wchar_t* const section : kSections) {
        for (const wchar_t* const key : kKeys) {
            const CString text = profile.Text(section, key, L"default");
            if (text.GetLength() > 255 || text.FindOneOf(L"\r\n") >= 0) std::abort();
            if (profile.Text(section, key, L"default", 5) != text.Left(4)) std::abort();
            const bool isMissing = profile.Text(section, key, L"a") != profile.Text(section, key, L"b");
            if ((profile.Int(section, key, 1) != profile.Int(section, key, 2)) != isMissing) std::abort();
        }
    }
}

void CheckSame(const obmgr::PrivateProfile& a, const obmgr::PrivateProfile& b)
{
    for (const wchar_t* const section : kSections) {
        for (const wchar_t* const key : kKeys) {
            if (a.Text(section, key, L"default") != b.Text(section, key, L"default")) std::abort();
            if (a.Int(section, key, -1) != b.Int(section, key, -1)) std::abort();
        }
    }
}

std::string Utf16Of(const CString& text)
{
    std::string bytes = "\xFF\xFE";
    const auto put = [&](char32_t unit) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    };
    for (const wchar_t wide : text.View()) {
        const auto c = static_cast<char32_t>(wide);
        if (c >= 0x10000) {
            put(0xD800 + ((c - 0x10000) >> 10));
            put(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            put(c);
        }
    }
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    CheckValues(obmgr::PrivateProfile(bytes));

    const CString text = obmgr::FromUtf8(bytes);
    const std::string utf8 = obmgr::ToUtf8(text.View());
    const obmgr::PrivateProfile marked("\xEF\xBB\xBF" + utf8);
    CheckSame(marked, obmgr::PrivateProfile(Utf16Of(text)));
    CheckSame(marked, obmgr::PrivateProfile("\xEF\xBB\xBF" + bytes));
    // A further mark would be taken off.
    if (!utf8.starts_with("\xEF\xBB\xBF")) CheckSame(marked, obmgr::PrivateProfile(utf8));
    return 0;
}
