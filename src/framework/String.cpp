#include "framework/String.h"

#include <algorithm>
#include <climits>
#include <cwchar>
#include <limits>
#include <ostream>

#include "framework/Exception.h"
#include "framework/Utf8.h"

namespace obmgr {

std::string ToUtf8(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t c : text)
        AppendUtf8(bytes, static_cast<char32_t>(c));
    return bytes;
}

CString FromUtf8(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    const char* position = bytes.data();
    const char* const end = position + bytes.size();
    while (position != end)
        text.push_back(static_cast<wchar_t>(DecodeUtf8(position, end)));
    return CString(std::move(text));
}

bool IsBlank(wchar_t c) noexcept
{
    if (c < 0x80) return c == L' ' || (c >= L'\t' && c <= L'\r');
    return c == 0x85 || c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 ||
           c == 0x202F || c == 0x205F || c == 0x3000;
}

} // namespace obmgr

namespace {

constexpr std::size_t kMaxLength = INT_MAX;

// Lengths are int in the interface; a longer text cannot be told of there.
std::wstring& checkLength(std::wstring& text)
{
    if (text.size() > kMaxLength) throw std::length_error("CString: text too long");
    return text;
}

constexpr wchar_t lowerOf(wchar_t c) noexcept
{
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
}

constexpr wchar_t upperOf(wchar_t c) noexcept
{
    return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - (L'a' - L'A')) : c;
}

constexpr int signOf(int order) noexcept
{
    return (order > 0) - (order < 0);
}

std::wstring_view viewOf(const wchar_t* text) noexcept
{
    return text ? std::wstring_view(text) : std::wstring_view();
}

int indexOf(std::size_t position) noexcept
{
    return position == std::wstring_view::npos ? -1 : static_cast<int>(position);
}

template <class IsUnwanted> void trimLeft(std::wstring& text, IsUnwanted isUnwanted)
{
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isUnwanted));
}

template <class IsUnwanted> void trimRight(std::wstring& text, IsUnwanted isUnwanted)
{
    text.erase(std::find_if_not(text.rbegin(), text.rend(), isUnwanted).base(), text.end());
}

auto isOneOf(const wchar_t* chars)
{
    return [set = viewOf(chars)](wchar_t c) { return set.find(c) != std::wstring_view::npos; };
}

} // namespace

CString::CString(const wchar_t* text, int length)
{
    if (length < 0) AfxThrowInvalidArgException();
    if (length == 0) return;
    if (!text) AfxThrowInvalidArgException();
    m_text.assign(text, static_cast<std::size_t>(length));
}

CString::CString(wchar_t c, int repeat)
{
    if (repeat > 0) m_text.assign(static_cast<std::size_t>(repeat), c);
}

CString& CString::operator=(const wchar_t* text)
{
    m_text = text ? text : L"";
    return *this;
}

CString& CString::operator=(wchar_t c)
{
    m_text.assign(1, c);
    return *this;
}

wchar_t CString::GetAt(int index) const
{
    if (index < 0 || static_cast<std::size_t>(index) > m_text.size()) AfxThrowInvalidArgException();
    return m_text.c_str()[index];
}

void CString::SetAt(int index, wchar_t c)
{
    if (index < 0 || static_cast<std::size_t>(index) >= m_text.size()) AfxThrowInvalidArgException();
    m_text[static_cast<std::size_t>(index)] = c;
}

CString& CString::operator+=(const CString& text)
{
    m_text += text.m_text;
    checkLength(m_text);
    return *this;
}

CString& CString::operator+=(const wchar_t* text)
{
    if (text) m_text += text;
    checkLength(m_text);
    return *this;
}

CString& CString::operator+=(wchar_t c)
{
    m_text += c;
    return *this;
}

int CString::Compare(const wchar_t* other) const noexcept
{
    return signOf(std::wstring_view(m_text).compare(viewOf(other)));
}

int CString::CompareNoCase(const wchar_t* other) const noexcept
{
    const std::wstring_view second = viewOf(other);
    const std::size_t common = std::min(m_text.size(), second.size());
    for (std::size_t i = 0; i < common; ++i) {
        const wchar_t a = lowerOf(m_text[i]);
        const wchar_t b = lowerOf(second[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    return m_text.size() == second.size() ? 0 : m_text.size() < second.size() ? -1 : 1;
}

std::size_t CString::Clamp(int index) const noexcept
{
    return index < 0 ? 0 : std::min(static_cast<std::size_t>(index), m_text.size());
}

CString CString::Mid(int first) const
{
    return CString(View().substr(Clamp(first)));
}

CString CString::Mid(int first, int count) const
{
    return CString(View().substr(Clamp(first), count < 0 ? 0 : static_cast<std::size_t>(count)));
}

CString CString::Left(int count) const
{
    return CString(View().substr(0, Clamp(count)));
}

CString CString::Right(int count) const
{
    return CString(View().substr(m_text.size() - Clamp(count)));
}

CString CString::SpanIncluding(const wchar_t* chars) const
{
    return CString(View().substr(0, View().find_first_not_of(viewOf(chars))));
}

CString CString::SpanExcluding(const wchar_t* chars) const
{
    return CString(View().substr(0, View().find_first_of(viewOf(chars))));
}

int CString::Find(wchar_t c, int start) const noexcept
{
    if (start < 0 || start > GetLength()) return -1;
    return indexOf(View().find(c, static_cast<std::size_t>(start)));
}

int CString::Find(const wchar_t* text, int start) const noexcept
{
    if (!text || start < 0 || start > GetLength()) return -1;
    return indexOf(View().find(text, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t c) const noexcept
{
    return indexOf(View().rfind(c));
}

int CString::FindOneOf(const wchar_t* chars) const noexcept
{
    return indexOf(View().find_first_of(viewOf(chars)));
}

int CString::Replace(wchar_t from, wchar_t to)
{
    if (from == to) return 0;
    int count = 0;
    for (wchar_t& c : m_text) {
        if (c != from) continue;
        c = to;
        ++count;
    }
    return count;
}

int CString::Replace(const wchar_t* from, const wchar_t* to)
{
    const std::wstring_view wanted = viewOf(from);
    if (wanted.empty()) return 0;
    const std::wstring_view replacement = viewOf(to);
    std::wstring result;
    int count = 0;
    std::size_t done = 0;
    for (std::size_t at = m_text.find(wanted); at != std::wstring::npos; at = m_text.find(wanted, done)) {
        result.append(m_text, done, at - done).append(replacement);
        done = at + wanted.size();
        ++count;
    }
    if (count == 0) return 0;
    result.append(m_text, done);
    m_text = std::move(checkLength(result));
    return count;
}

int CString::Remove(wchar_t c)
{
    return static_cast<int>(std::erase(m_text, c));
}

int CString::Insert(int index, wchar_t c)
{
    m_text.insert(Clamp(index), 1, c);
    return GetLength();
}

int CString::Insert(int index, const wchar_t* text)
{
    m_text.insert(Clamp(index), viewOf(text));
    checkLength(m_text);
    return GetLength();
}

int CString::Delete(int index, int count)
{
    if (index < 0) index = 0;
    if (count > 0 && index < GetLength())
        m_text.erase(static_cast<std::size_t>(index), static_cast<std::size_t>(count));
    return GetLength();
}

void CString::Truncate(int length)
{
    m_text.resize(Clamp(length));
}

CString& CString::MakeUpper()
{
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), upperOf);
    return *this;
}

CString& CString::MakeLower()
{
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), lowerOf);
    return *this;
}

CString& CString::MakeReverse()
{
    std::reverse(m_text.begin(), m_text.end());
    return *this;
}

CString& CString::TrimLeft()
{
    trimLeft(m_text, obmgr::IsBlank);
    return *this;
}

CString& CString::TrimLeft(wchar_t unwanted)
{
    trimLeft(m_text, [unwanted](wchar_t c) { return c == unwanted; });
    return *this;
}

CString& CString::TrimLeft(const wchar_t* chars)
{
    trimLeft(m_text, isOneOf(chars));
    return *this;
}

CString& CString::TrimRight()
{
    trimRight(m_text, obmgr::IsBlank);
    return *this;
}

CString& CString::TrimRight(wchar_t unwanted)
{
    trimRight(m_text, [unwanted](wchar_t c) { return c == unwanted; });
    return *this;
}

CString& CString::TrimRight(const wchar_t* chars)
{
    trimRight(m_text, isOneOf(chars));
    return *this;
}

CString& CString::Trim()
{
    return TrimRight().TrimLeft();
}

CString& CString::Trim(wchar_t c)
{
    return TrimRight(c).TrimLeft(c);
}

CString& CString::Trim(const wchar_t* chars)
{
    return TrimRight(chars).TrimLeft(chars);
}

CString CString::Tokenize(const wchar_t* separators, int& start) const
{
    if (start < 0) AfxThrowInvalidArgException();
    const std::wstring_view set = viewOf(separators);
    const std::size_t first = View().find_first_not_of(set, static_cast<std::size_t>(start));
    if (first == std::wstring_view::npos) {
        start = -1;
        return CString();
    }
    const std::size_t end = std::min(View().find_first_of(set, first), m_text.size());
    start = static_cast<int>(std::min(end + 1, m_text.size()));
    return CString(View().substr(first, end - first));
}

wchar_t* CString::GetBuffer(int minLength)
{
    if (minLength < 0) AfxThrowInvalidArgException();
    if (static_cast<std::size_t>(minLength) > m_text.size()) m_text.resize(static_cast<std::size_t>(minLength));
    return m_text.data();
}

void CString::ReleaseBuffer(int length)
{
    if (length > GetLength()) AfxThrowInvalidArgException();
    m_text.resize(length < 0 ? std::wcslen(m_text.c_str()) : static_cast<std::size_t>(length));
}

CString CString::Join(std::wstring_view a, std::wstring_view b)
{
    std::wstring text;
    text.reserve(a.size() + b.size());
    text.append(a).append(b);
    return CString(std::move(checkLength(text)));
}

std::ostream& operator<<(std::ostream& stream, const CString& text)
{
    return stream << obmgr::ToUtf8(text.View());
}

namespace obmgr {

CString FillPlaceholders(const CString& templ, std::span<const CString> values)
{
    const std::wstring_view source = templ.View();
    std::wstring text;
    for (std::size_t i = 0; i < source.size(); ++i) {
        const wchar_t next = source[i] == L'%' && i + 1 < source.size() ? source[i + 1] : L'\0';
        if (next == L'%') {
            text += next;
            ++i;
        } else if (next >= L'1' && next <= L'9' && static_cast<std::size_t>(next - L'1') < values.size()) {
            text += values[static_cast<std::size_t>(next - L'1')].View();
            ++i;
        } else {
            text += source[i];
        }
    }
    return CString(std::move(text));
}

} // namespace obmgr
