#include "common/Text2Number.h"

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include <locale.h>
#include <stdlib.h>

#include "framework/Utf8.h"

namespace {

constexpr long kIdMax = std::numeric_limits<std::int32_t>::max();
constexpr long kIdMin = std::numeric_limits<std::int32_t>::min();

template <class Char> constexpr bool isDigit(Char c) noexcept
{
    return c >= Char('0') && c <= Char('9');
}

std::wstring_view withoutLeadingBlanks(std::wstring_view text) noexcept
{
    while (!text.empty() && obmgr::IsBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::string_view withoutLeadingBlanks(std::string_view utf8) noexcept
{
    const char* const end = utf8.data() + utf8.size();
    for (const char* position = utf8.data(); position != end;) {
        const char* const start = position;
        if (!obmgr::IsBlank(static_cast<wchar_t>(obmgr::DecodeUtf8(position, end))))
            return {start, static_cast<std::size_t>(end - start)};
    }
    return {};
}

template <class Char> long toLong(std::basic_string_view<Char> text) noexcept
{
    text = withoutLeadingBlanks(text);
    const bool negative = !text.empty() && text.front() == Char('-');
    if (negative || (!text.empty() && text.front() == Char('+'))) text.remove_prefix(1);
    long value = 0;
    for (const Char c : text) {
        if (!isDigit(c)) break;
        value = value * 10 + static_cast<long>(c - Char('0'));
        if (value > kIdMax) return negative ? kIdMin : kIdMax;
    }
    return negative ? -value : value;
}

// Length of the decimal number at the start of `text` (no blanks, sign allowed); 0 when there is none.
template <class Char> std::size_t numberLength(std::basic_string_view<Char> text) noexcept
{
    std::size_t at = 0;
    const auto skipDigits = [&] {
        const std::size_t from = at;
        while (at < text.size() && isDigit(text[at]))
            ++at;
        return at - from;
    };
    const auto isSign = [&] { return at < text.size() && (text[at] == Char('-') || text[at] == Char('+')); };
    if (isSign()) ++at;
    std::size_t digits = skipDigits();
    if (at < text.size() && text[at] == Char('.')) {
        ++at;
        digits += skipDigits();
    }
    if (digits == 0) return 0;
    const std::size_t mantissaEnd = at;
    if (at < text.size() && (text[at] == Char('e') || text[at] == Char('E'))) {
        ++at;
        if (isSign()) ++at;
        if (skipDigits() > 0) return at;
    }
    return mantissaEnd;
}

// std::from_chars leaves the value alone when it is out of range, so that too large and too small look alike there.
double outOfRangeValue(const std::string& number)
{
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    const double value = strtod_l(number.c_str(), nullptr, plain);
    return std::isinf(value) ? std::copysign(DBL_MAX, value) : value;
}

double convert(const char* first, const char* last)
{
    if (*first == '+') ++first; // unknown to from_chars
    double value = 0;
    if (std::from_chars(first, last, value).ec == std::errc::result_out_of_range)
        return outOfRangeValue(std::string(first, last));
    return value;
}

double toDouble(std::string_view utf8)
{
    utf8 = withoutLeadingBlanks(utf8);
    const std::size_t length = numberLength(utf8);
    return length == 0 ? 0 : convert(utf8.data(), utf8.data() + length);
}

double toDouble(std::wstring_view text)
{
    text = withoutLeadingBlanks(text);
    const std::size_t length = numberLength(text);
    if (length == 0) return 0;
    const auto narrow = [&](char* out) {
        for (std::size_t i = 0; i < length; ++i)
            out[i] = static_cast<char>(text[i]); // digits, signs, '.', 'e' only
        return convert(out, out + length);
    };
    char small[64];
    if (length <= sizeof small) return narrow(small);
    std::string large(length, '\0');
    return narrow(large.data());
}

} // namespace

namespace obmgr {

long ToLong(std::wstring_view text) noexcept
{
    return toLong(text);
}

long ToLong(std::string_view utf8) noexcept
{
    return toLong(utf8);
}

long ToLong(const wchar_t* text) noexcept
{
    return text ? toLong(std::wstring_view(text)) : 0;
}

double ToDouble(std::wstring_view text) noexcept
{
    return toDouble(text);
}

double ToDouble(std::string_view utf8) noexcept
{
    return toDouble(utf8);
}

double ToDouble(const wchar_t* text) noexcept
{
    return text ? toDouble(std::wstring_view(text)) : 0;
}

bool IsIntegerText(std::wstring_view text) noexcept
{
    if (text.empty()) return false;
    if (text.front() == L'-') text.remove_prefix(1);
    for (const wchar_t c : text)
        if (!isDigit(c)) return false;
    return true;
}

bool IsIntegerText(const wchar_t* text) noexcept
{
    return text && IsIntegerText(std::wstring_view(text));
}

CString FormatInt(long value)
{
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return CString(std::wstring(digits, end));
}

CString FormatDouble(double value, int precision)
{
    if (precision < 0) precision = 6;
    char small[64];
    auto written = std::to_chars(small, small + sizeof small, value, std::chars_format::fixed, precision);
    if (written.ec == std::errc()) return CString(std::wstring(small, written.ptr));
    // Sign, point and the digits before the point of the largest double take less than 320 characters.
    std::string large(static_cast<std::size_t>(precision) + 320, '\0');
    char* const end = large.data() + large.size();
    written = std::to_chars(large.data(), end, value, std::chars_format::fixed, precision);
    return CString(std::wstring(large.data(), written.ptr));
}

} // namespace obmgr
