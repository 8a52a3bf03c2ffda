// CString: the wide string of the interface, over std::wstring.
// Case rules are those of the platform's plain locale: only A-Z and a-z have case, whatever locale the process has set.
#pragma once

#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "common/Export.h"

class CString;

namespace obmgr {

// UTF-8 of a wide text; a value that is no character (lone surrogate, beyond 10FFFF) becomes U+FFFD.
RIVELTA_API std::string ToUtf8(std::wstring_view text);
// The text of UTF-8 bytes; each invalid byte sequence becomes U+FFFD.
RIVELTA_API CString FromUtf8(std::string_view bytes);

// A blank as TrimLeft and the number readers understand it: ASCII white space and the blanks of Unicode, the
// full-width one (U+3000) among them.
RIVELTA_API bool IsBlank(wchar_t c) noexcept;

// One value handed to CString::Format: remembers what it is, so that a wrong directive is an error and no crash.
class RIVELTA_API FormatArgument {
public:
    enum class Kind { Signed, Unsigned, Real, Wide, Narrow, Pointer };

    template <std::integral T>
    FormatArgument(T value) noexcept
        : m_kind(std::is_signed_v<T> ? Kind::Signed : Kind::Unsigned), m_size(sizeof(T)),
          m_integer(static_cast<unsigned long long>(value))
    {
    }
    template <class T>
    requires std::is_enum_v<T> FormatArgument(T value)
    noexcept : FormatArgument(static_cast<std::underlying_type_t<T>>(value)) {}
    template <std::floating_point T>
    FormatArgument(T value) noexcept : m_kind(Kind::Real), m_size(sizeof(double)), m_real(static_cast<double>(value))
    {
    }
    FormatArgument(const wchar_t* text) noexcept : m_kind(Kind::Wide), m_pointer(text) {}
    FormatArgument(const char* utf8) noexcept : m_kind(Kind::Narrow), m_pointer(utf8) {}
    FormatArgument(std::nullptr_t) noexcept : m_kind(Kind::Pointer) {}
    FormatArgument(const void* pointer) noexcept : m_kind(Kind::Pointer), m_pointer(pointer) {}
    inline FormatArgument(const CString& text) noexcept;

    Kind GetKind() const noexcept { return m_kind; }
    bool IsInteger() const noexcept { return m_kind == Kind::Signed || m_kind == Kind::Unsigned; }
    // The integer read as signed or unsigned in the width that the argument had.
    long long AsSigned() const noexcept;
    unsigned long long AsUnsigned() const noexcept;
    double AsReal() const noexcept { return m_real; }
    const void* AsPointer() const noexcept { return m_pointer; }

private:
    Kind m_kind;
    std::size_t m_size = 0;
    unsigned long long m_integer = 0;
    double m_real = 0;
    const void* m_pointer = nullptr;
};

} // namespace obmgr

class RIVELTA_API CString {
public:
    CString() noexcept = default;
    CString(const wchar_t* text) : m_text(text ? text : L"") {}
    CString(const wchar_t* text, int length);
    CString(wchar_t c, int repeat = 1);
    explicit CString(std::wstring_view text) : m_text(text) {}
    explicit CString(std::wstring&& text) noexcept : m_text(std::move(text)) {}

    CString& operator=(const wchar_t* text);
    CString& operator=(wchar_t c);

    operator const wchar_t*() const noexcept { return m_text.c_str(); }
    const wchar_t* GetString() const noexcept { return m_text.c_str(); }
    std::wstring_view View() const noexcept { return m_text; }

    int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    void Empty() noexcept { m_text.clear(); }

    // An index equal to the length gives the closing zero; any other index out of range is an invalid argument.
    wchar_t GetAt(int index) const;
    template <std::integral Index> wchar_t operator[](Index index) const { return GetAt(static_cast<int>(index)); }
    void SetAt(int index, wchar_t c);

    CString& operator+=(const CString& text);
    CString& operator+=(const wchar_t* text);
    CString& operator+=(wchar_t c);
    CString& Append(const wchar_t* text) { return *this += text; }
    CString& AppendChar(wchar_t c) { return *this += c; }

    int Compare(const wchar_t* other) const noexcept;
    // Ignores the case of ASCII letters.
    int CompareNoCase(const wchar_t* other) const noexcept;

    // A start or count beyond the text is cut to what there is; negative ones are 0.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    CString SpanIncluding(const wchar_t* chars) const;
    CString SpanExcluding(const wchar_t* chars) const;

    // Index of the match, or -1.
    int Find(wchar_t c, int start = 0) const noexcept;
    int Find(const wchar_t* text, int start = 0) const noexcept;
    int ReverseFind(wchar_t c) const noexcept;
    int FindOneOf(const wchar_t* chars) const noexcept;

    // Number of places changed.
    int Replace(wchar_t from, wchar_t to);
    int Replace(const wchar_t* from, const wchar_t* to);
    int Remove(wchar_t c);
    // The new length. Insert holds the index within the text, Delete cuts the count to what there is.
    int Insert(int index, wchar_t c);
    int Insert(int index, const wchar_t* text);
    int Delete(int index, int count = 1);
    void Truncate(int length);

    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    CString& TrimLeft();
    CString& TrimLeft(wchar_t c);
    CString& TrimLeft(const wchar_t* chars);
    CString& TrimRight();
    CString& TrimRight(wchar_t c);
    CString& TrimRight(const wchar_t* chars);
    CString& Trim();
    CString& Trim(wchar_t c);
    CString& Trim(const wchar_t* chars);

    // The next piece between separators from `start` on, empty pieces skipped. `start` moves on, and is -1 when no
    // piece was left.
    CString Tokenize(const wchar_t* separators, int& start) const;

    // Fills this string as printf would in the plain locale; "%s" takes wide text (CString or wchar_t*), a null text
    // is "(null)". Integers are printed in their own width. A directive whose argument is missing or of another sort
    // is an invalid argument.
    template <class... Arguments> void Format(const wchar_t* format, const Arguments&... arguments)
    {
        m_text = FormatText(format, {obmgr::FormatArgument(arguments)...});
    }
    template <class... Arguments> void AppendFormat(const wchar_t* format, const Arguments&... arguments)
    {
        m_text += FormatText(format, {obmgr::FormatArgument(arguments)...});
    }
    // The same with a C argument list, whose types are taken from the directives.
    void FormatV(const wchar_t* format, va_list arguments);

    // Writable room for at least `minLength` characters; ReleaseBuffer(-1) then cuts at the first zero.
    wchar_t* GetBuffer(int minLength = 0);
    void ReleaseBuffer(int length = -1);

    friend bool operator==(const CString& a, const CString& b) noexcept { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const wchar_t* b) noexcept { return a.Compare(b) == 0; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept
    {
        return a.m_text.compare(b.m_text) <=> 0;
    }
    friend std::strong_ordering operator<=>(const CString& a, const wchar_t* b) noexcept { return a.Compare(b) <=> 0; }

    friend CString operator+(const CString& a, const CString& b) { return Join(a.m_text, b.m_text); }
    friend CString operator+(const CString& a, const wchar_t* b) { return Join(a.m_text, b ? b : L""); }
    friend CString operator+(const wchar_t* a, const CString& b) { return Join(a ? a : L"", b.m_text); }
    friend CString operator+(const CString& a, wchar_t b) { return Join(a.m_text, {&b, 1}); }
    friend CString operator+(wchar_t a, const CString& b) { return Join({&a, 1}, b.m_text); }

private:
    static CString Join(std::wstring_view a, std::wstring_view b);
    static std::wstring FormatText(const wchar_t* format, std::initializer_list<obmgr::FormatArgument> arguments);
    std::size_t Clamp(int index) const noexcept;

    std::wstring m_text;
};

inline obmgr::FormatArgument::FormatArgument(const CString& text) noexcept
    : m_kind(Kind::Wide), m_pointer(text.GetString())
{
}

// Writes the text as UTF-8.
RIVELTA_API std::ostream& operator<<(std::ostream& stream, const CString& text);

template <> struct std::hash<CString> {
    std::size_t operator()(const CString& text) const noexcept { return std::hash<std::wstring_view>()(text.View()); }
};

namespace obmgr {

// The body of FormatMessageText below.
RIVELTA_API CString FillPlaceholders(const CString& templ, std::span<const CString> values);

inline CString MessageValue(const CString& text)
{
    return text;
}
inline CString MessageValue(const wchar_t* text)
{
    return CString(text);
}
template <std::integral T> CString MessageValue(T value)
{
    CString text;
    text.Format(L"%d", value);
    return text;
}

// Puts the values (texts or integers) in the places "%1" to "%9" of the template; "%%" is a percent sign. A place
// without a value stays as it is, and a value is never searched for places.
template <class... Values> CString FormatMessageText(const CString& templ, const Values&... values)
{
    const CString texts[sizeof...(Values) + 1] = {MessageValue(values)...};
    return FillPlaceholders(templ, std::span<const CString>(texts, sizeof...(Values)));
}

} // namespace obmgr
