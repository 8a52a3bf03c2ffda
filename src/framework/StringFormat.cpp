// CString::Format: reads the directives, prints each argument in the plain locale.

#include <climits>
#include <clocale>
#include <cstdio>
#include <optional>
#include <vector>

#include <locale.h>

#include "framework/Exception.h"
#include "framework/String.h"

namespace obmgr {

long long FormatArgument::AsSigned() const noexcept
{
    switch (m_size) {
    case 1: return static_cast<signed char>(m_integer);
    case 2: return static_cast<short>(m_integer);
    case 4: return static_cast<int>(m_integer);
    default: return static_cast<long long>(m_integer);
    }
}

unsigned long long FormatArgument::AsUnsigned() const noexcept
{
    const std::size_t bits = m_size * CHAR_BIT;
    return bits >= sizeof(m_integer) * CHAR_BIT ? m_integer : m_integer & ((1ULL << bits) - 1);
}

} // namespace obmgr

namespace {

using obmgr::FormatArgument;

enum class Length { Default, Char, Short, Long, LongLong, Max, Size, Difference, LongDouble };

// One directive: "%" flags width "." precision length conversion.
struct Directive {
    std::string flags;
    bool widthIsArgument = false;
    bool precisionIsArgument = false;
    int width = 0;
    std::optional<int> precision;
    Length length = Length::Default;
    wchar_t conversion = 0;
};

class DirectiveReader {
public:
    explicit DirectiveReader(const wchar_t* position) : m_position(position) {}

    // Appends the plain text up to the next directive to `text`; nothing when the format has ended.
    std::optional<Directive> Next(std::wstring& text)
    {
        while (*m_position) {
            if (*m_position != L'%') {
                text += *m_position++;
            } else if (m_position[1] == L'%') {
                text += L'%';
                m_position += 2;
            } else {
                ++m_position;
                return Read();
            }
        }
        return std::nullopt;
    }

private:
    Directive Read()
    {
        Directive directive;
        while (*m_position && std::wstring_view(L"-+ #0").find(*m_position) != std::wstring_view::npos)
            directive.flags += static_cast<char>(*m_position++);
        directive.widthIsArgument = TakeStar();
        if (!directive.widthIsArgument) directive.width = TakeNumber();
        if (*m_position == L'.') {
            ++m_position;
            directive.precisionIsArgument = TakeStar();
            if (!directive.precisionIsArgument) directive.precision = TakeNumber();
        }
        directive.length = TakeLength();
        directive.conversion = *m_position;
        if (*m_position) ++m_position;
        return directive;
    }

    bool Take(const wchar_t* word)
    {
        const std::wstring_view wanted(word);
        if (std::wstring_view(m_position).substr(0, wanted.size()) != wanted) return false;
        m_position += wanted.size();
        return true;
    }

    bool TakeStar() { return Take(L"*"); }

    int TakeNumber()
    {
        int number = 0;
        for (; *m_position >= L'0' && *m_position <= L'9'; ++m_position) {
            const int digit = static_cast<int>(*m_position - L'0');
            if (number > (INT_MAX - digit) / 10) AfxThrowInvalidArgException();
            number = number * 10 + digit;
        }
        return number;
    }

    Length TakeLength()
    {
        if (Take(L"hh")) return Length::Char;
        if (Take(L"h")) return Length::Short;
        if (Take(L"ll") || Take(L"I64")) return Length::LongLong;
        if (Take(L"l") || Take(L"w")) return Length::Long;
        if (Take(L"j")) return Length::Max;
        if (Take(L"z")) return Length::Size;
        if (Take(L"t")) return Length::Difference;
        if (Take(L"L")) return Length::LongDouble;
        return Length::Default;
    }

    const wchar_t* m_position;
};

bool isSignedConversion(wchar_t c)
{
    return c == L'd' || c == L'i';
}

bool isUnsignedConversion(wchar_t c)
{
    return c == L'u' || c == L'x' || c == L'X' || c == L'o';
}

bool isRealConversion(wchar_t c)
{
    return std::wstring_view(L"fFeEgGaA").find(c) != std::wstring_view::npos;
}

// The plain locale on this thread for the life of the guard, so that a host's decimal comma stays out.
class PlainLocale {
public:
    PlainLocale() : m_previous(uselocale(Plain())) {}
    ~PlainLocale() { uselocale(m_previous); }
    PlainLocale(const PlainLocale&) = delete;
    PlainLocale& operator=(const PlainLocale&) = delete;

private:
    static locale_t Plain()
    {
        static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
        return plain;
    }

    locale_t m_previous;
};

// Prints `value` by a narrow printf directive made of the flags and `tail`, and appends the ASCII result.
template <class Value> void appendPrinted(std::wstring& text, const Directive& directive, const char* tail, Value value)
{
    const PlainLocale plainLocale;
    std::string format = "%" + directive.flags + "*";
    if (directive.precision) format += ".*";
    format += tail;
    const auto print = [&](char* out, std::size_t size) {
        return directive.precision
                   ? std::snprintf(out, size, format.c_str(), directive.width, *directive.precision, value)
                   : std::snprintf(out, size, format.c_str(), directive.width, value);
    };
    char small[128];
    const int length = print(small, sizeof small);
    if (length < 0) AfxThrowInvalidArgException();
    if (static_cast<std::size_t>(length) < sizeof small) {
        text.append(small, small + length);
        return;
    }
    std::string large(static_cast<std::size_t>(length) + 1, '\0');
    print(large.data(), large.size());
    text.append(large.begin(), large.end() - 1);
}

void appendPadded(std::wstring& text, const Directive& directive, std::wstring_view piece)
{
    const std::size_t width = directive.width < 0 ? 0 : static_cast<std::size_t>(directive.width);
    const std::size_t padding = width > piece.size() ? width - piece.size() : 0;
    const bool left = directive.flags.find('-') != std::string::npos;
    if (!left) text.append(padding, L' ');
    text.append(piece);
    if (left) text.append(padding, L' ');
}

void appendString(std::wstring& text, const Directive& directive, const FormatArgument& argument)
{
    CString narrow;
    std::wstring_view piece = L"(null)";
    const void* const pointer = argument.AsPointer();
    const std::size_t most = directive.precision ? static_cast<std::size_t>(*directive.precision) : SIZE_MAX;
    if (argument.GetKind() == FormatArgument::Kind::Wide && pointer) {
        // A text with a precision need not be closed by a zero.
        const auto* const wide = static_cast<const wchar_t*>(pointer);
        std::size_t length = 0;
        while (length < most && wide[length])
            ++length;
        piece = std::wstring_view(wide, length);
    } else if (argument.GetKind() == FormatArgument::Kind::Narrow && pointer) {
        narrow = obmgr::FromUtf8(static_cast<const char*>(pointer));
        piece = narrow.View();
    } else if (pointer || argument.IsInteger() || argument.GetKind() == FormatArgument::Kind::Real) {
        AfxThrowInvalidArgException();
    }
    appendPadded(text, directive, piece.substr(0, most));
}

void appendArgument(std::wstring& text, const Directive& directive, const FormatArgument& argument)
{
    const wchar_t conversion = directive.conversion;
    const char letter[] = {static_cast<char>(conversion), '\0'};
    if (isSignedConversion(conversion) && argument.IsInteger()) {
        appendPrinted(text, directive, "lld", argument.AsSigned());
    } else if (isUnsignedConversion(conversion) && argument.IsInteger()) {
        appendPrinted(text, directive, (std::string("ll") + letter).c_str(), argument.AsUnsigned());
    } else if (isRealConversion(conversion) && argument.GetKind() == FormatArgument::Kind::Real) {
        appendPrinted(text, directive, letter, argument.AsReal());
    } else if ((conversion == L'c' || conversion == L'C') && argument.IsInteger()) {
        const wchar_t c = static_cast<wchar_t>(argument.AsSigned());
        appendPadded(text, directive, std::wstring_view(&c, 1));
    } else if (conversion == L's' || conversion == L'S') {
        appendString(text, directive, argument);
    } else if (conversion == L'p' && argument.GetKind() == FormatArgument::Kind::Pointer) {
        appendPrinted(text, directive, "p", argument.AsPointer());
    } else {
        AfxThrowInvalidArgException();
    }
}

// A "*" value: negative width is left alignment, negative precision is none, as printf has it.
int starValue(const FormatArgument& argument)
{
    if (!argument.IsInteger()) AfxThrowInvalidArgException();
    const long long value = argument.AsSigned();
    if (value > INT_MAX || value < -INT_MAX) AfxThrowInvalidArgException();
    return static_cast<int>(value);
}

void resolveStars(Directive& directive, const auto& next)
{
    if (directive.widthIsArgument) {
        directive.width = starValue(next());
        if (directive.width < 0) {
            directive.width = -directive.width;
            directive.flags += '-';
        }
    }
    if (directive.precisionIsArgument) {
        const int precision = starValue(next());
        if (precision >= 0) directive.precision = precision;
    }
}

std::wstring formatWith(const wchar_t* format, const auto& next)
{
    if (!format) AfxThrowInvalidArgException();
    std::wstring text;
    DirectiveReader reader(format);
    while (auto directive = reader.Next(text)) {
        resolveStars(*directive, next);
        appendArgument(text, *directive, next());
    }
    return text;
}

// A C argument list, copied so that it can be read through a reference.
struct ArgumentList {
    explicit ArgumentList(va_list source) { va_copy(list, source); }
    ~ArgumentList() { va_end(list); }
    ArgumentList(const ArgumentList&) = delete;
    ArgumentList& operator=(const ArgumentList&) = delete;
    va_list list;
};

FormatArgument takeInteger(ArgumentList& arguments, Length length)
{
    switch (length) {
    case Length::Long: return va_arg(arguments.list, long);
    case Length::LongLong:
    case Length::Max: return va_arg(arguments.list, long long);
    case Length::Size: return va_arg(arguments.list, std::size_t);
    case Length::Difference: return va_arg(arguments.list, std::ptrdiff_t);
    case Length::Short: return static_cast<short>(va_arg(arguments.list, int));
    case Length::Char: return static_cast<signed char>(va_arg(arguments.list, int));
    default: return va_arg(arguments.list, int);
    }
}

FormatArgument takeArgument(ArgumentList& arguments, const Directive& directive)
{
    const wchar_t conversion = directive.conversion;
    if (isSignedConversion(conversion) || isUnsignedConversion(conversion))
        return takeInteger(arguments, directive.length);
    if (isRealConversion(conversion)) {
        return directive.length == Length::LongDouble ? FormatArgument(va_arg(arguments.list, long double))
                                                      : FormatArgument(va_arg(arguments.list, double));
    }
    if (conversion == L'c' || conversion == L'C') return va_arg(arguments.list, int);
    if (conversion == L'S' || (conversion == L's' && directive.length == Length::Short))
        return va_arg(arguments.list, const char*);
    if (conversion == L's') return va_arg(arguments.list, const wchar_t*);
    if (conversion == L'p') return va_arg(arguments.list, const void*);
    AfxThrowInvalidArgException();
}

} // namespace

std::wstring CString::FormatText(const wchar_t* format, std::initializer_list<FormatArgument> arguments)
{
    auto argument = arguments.begin();
    return formatWith(format, [&]() -> FormatArgument {
        if (argument == arguments.end()) AfxThrowInvalidArgException();
        return *argument++;
    });
}

void CString::FormatV(const wchar_t* format, va_list source)
{
    if (!format) AfxThrowInvalidArgException();
    ArgumentList arguments(source);
    std::wstring text;
    DirectiveReader reader(format);
    while (auto directive = reader.Next(text)) {
        resolveStars(*directive, [&] { return FormatArgument(va_arg(arguments.list, int)); });
        appendArgument(text, *directive, takeArgument(arguments, *directive));
    }
    m_text = std::move(text);
}
