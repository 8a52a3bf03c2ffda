// Text to number and number to text. Never throws, never looks at the process locale.
// A text is read as far as it is a number: leading blanks, an optional sign, digits, and it ends at the first
// other character. Without digits the value is 0; a value out of range is held at the nearest limit.
#pragma once

#include <string>
#include <string_view>

#include "common/Export.h"
#include "framework/String.h"

namespace obmgr {

// Whole number, held within 32 bits. Narrow text is UTF-8. A null pointer is the empty text; a CString fits here too.
RIVELTA_API long ToLong(std::wstring_view text) noexcept;
RIVELTA_API long ToLong(std::string_view utf8) noexcept;
RIVELTA_API long ToLong(const wchar_t* text) noexcept;

// Decimal number with optional fraction and exponent. Hexadecimal forms end behind their "0"; "nan" and "inf" are 0.
// Too large values are held at +-DBL_MAX, too small ones are 0.
RIVELTA_API double ToDouble(std::wstring_view text) noexcept;
RIVELTA_API double ToDouble(std::string_view utf8) noexcept;
RIVELTA_API double ToDouble(const wchar_t* text) noexcept;

// True for a text of ASCII digits only whose first character may be a minus sign; the lone "-" is one, "" is none.
RIVELTA_API bool IsIntegerText(std::wstring_view text) noexcept;
RIVELTA_API bool IsIntegerText(const wchar_t* text) noexcept;

// "%ld".
RIVELTA_API CString FormatInt(long value);
// "%.*f"; a negative precision is 6, "nan" and "inf" are written as such.
RIVELTA_API CString FormatDouble(double value, int precision);

} // namespace obmgr
