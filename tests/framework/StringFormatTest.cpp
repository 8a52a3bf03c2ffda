#include <cfloat>
#include <cmath>
#include <cstdarg>

#include <gtest/gtest.h>

#include "framework/CommaLocale.h"
#include "framework/Exception.h"
#include "framework/String.h"

namespace {

template <class... Arguments> CString formatted(const wchar_t* format, const Arguments&... arguments)
{
    CString text(L"before");
    text.Format(format, arguments...);
    return text;
}

CString formattedByList(const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    CString text;
    text.FormatV(format, arguments);
    va_end(arguments);
    return text;
}

enum Fruit { Apple = 3 };

} // namespace

TEST(StringFormat, PrintsIntegersInTheirOwnWidth)
{
    EXPECT_EQ(formatted(L"%d|%i|%u", -5, 7, 8U), L"-5|7|8");
    EXPECT_EQ(formatted(L"%ld %lu %lld", -5L, 7UL, 1LL << 40), L"-5 7 1099511627776");
    EXPECT_EQ(formatted(L"%d", 1L << 40), L"1099511627776") << "a long is not cut by %d";
    EXPECT_EQ(formatted(L"%x %X %o", 255, 255, 8), L"ff FF 10");
    EXPECT_EQ(formatted(L"%x %u", -1, -1), L"ffffffff 4294967295");
    EXPECT_EQ(formatted(L"%x", static_cast<short>(-1)), L"ffff");
    EXPECT_EQ(formatted(L"%d", 4294967295U), L"-1");
    EXPECT_EQ(formatted(L"%I64d", 5LL), L"5");
    EXPECT_EQ(formatted(L"%d %d", true, Apple), L"1 3");
    EXPECT_EQ(formatted(L"%lld", LLONG_MIN), L"-9223372036854775808");
}

TEST(StringFormat, KeepsFlagsWidthAndPrecision)
{
    EXPECT_EQ(formatted(L"[%5d][%-5d][%05d][%+d][% d][%.3d]", 42, 42, 42, 42, 42, 7),
              L"[   42][42   ][00042][+42][ 42][007]");
    EXPECT_EQ(formatted(L"[%#x][%8.3f][%-8.1f]", 255, 3.14159, 2.25), L"[0xff][   3.142][2.2     ]");
    EXPECT_EQ(formatted(L"[%*d][%-*d][%*d]", 4, 1, 4, 2, -4, 3), L"[   1][2   ][3   ]");
    EXPECT_EQ(formatted(L"[%.2s][%5s][%-5s]", L"abc", L"ab", L"管"), L"[ab][   ab][管    ]");
    EXPECT_EQ(formatted(L"[%3c][%-3c]", L'x', L'y'), L"[  x][y  ]");
}

TEST(StringFormat, PrintsRealNumbersWithStarPrecision)
{
    EXPECT_EQ(formatted(L"%.*f", 13, 0.1), L"0.1000000000000");
    EXPECT_EQ(formatted(L"[%*.*f]", 10, 3, 2.5), L"[     2.500]");
    EXPECT_EQ(formatted(L"[%*.*f]", -10, 3, 2.5), L"[2.500     ]");
    EXPECT_EQ(formatted(L"%.*f", -1, 2.5), L"2.500000") << "a negative precision is none";
    EXPECT_EQ(formatted(L"%e %g %G", 12345.678, 0.00001, 1e20), L"1.234568e+04 1e-05 1E+20");
    EXPECT_EQ(formatted(L"%f %f", std::nan(""), -HUGE_VAL), L"nan -inf");
    EXPECT_EQ(formatted(L"%f", 1.5f), L"1.500000");
    EXPECT_EQ(formatted(L"%.0f", DBL_MAX).GetLength(), 309);
}

TEST(StringFormat, PrintsTextsWideAndNarrow)
{
    const CString text(L"値");
    wchar_t buffer[10] = L"buf";
    EXPECT_EQ(formatted(L"%s %ls %s %s", text, L"wide", buffer, "narrow"), L"値 wide buf narrow");
    EXPECT_EQ(formatted(L"%S %hs", "narrow", "管"), L"narrow 管");
    EXPECT_EQ(formatted(L"%c%c", L'𠮷', 'a'), L"𠮷a");
    EXPECT_EQ(formatted(L"100%%"), L"100%");
    EXPECT_EQ(formatted(L""), L"");
}

TEST(StringFormat, NullTextIsMarked)
{
    EXPECT_EQ(formatted(L"<%s>", static_cast<const wchar_t*>(nullptr)), L"<(null)>");
    EXPECT_EQ(formatted(L"<%s>", nullptr), L"<(null)>");
    EXPECT_EQ(formatted(L"<%s>", static_cast<const char*>(nullptr)), L"<(null)>");
}

TEST(StringFormat, LengthIsUnbounded)
{
    const CString large(L'x', 1'000'000);
    EXPECT_EQ(formatted(L"%s%s", large, large).GetLength(), 2'000'000);
    EXPECT_EQ(formatted(L"%5000d", 1).GetLength(), 5000);
    EXPECT_EQ(formatted(L"%.2000f", 0.5).GetLength(), 2002);
}

TEST(StringFormat, TextMayBeFormattedIntoItself)
{
    CString text(L"a");
    text.Format(L"%s%s", text, text);
    EXPECT_EQ(text, L"aa");
    text.AppendFormat(L"-%d-%s", 5, text);
    EXPECT_EQ(text, L"aa-5-aa");
}

TEST(StringFormat, MismatchIsAnInvalidArgumentAndLeavesTheText)
{
    CString text(L"kept");
    EXPECT_THROW(text.Format(L"%s", 5), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%d", L"five"), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%d", 1.5), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%f", 1), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%d %d", 1), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%*d", L"w", 1), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%q", 1), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%", 1), CInvalidArgException);
    EXPECT_THROW(text.Format(L"%99999999999d", 1), CInvalidArgException);
    EXPECT_THROW(text.Format(nullptr), CInvalidArgException);
    EXPECT_EQ(text, L"kept");
}

TEST(StringFormat, ArgumentListIsReadByTheDirectives)
{
    EXPECT_EQ(formattedByList(L"%d %ld %lld %u", -1, -2L, -3LL, 4U), L"-1 -2 -3 4");
    EXPECT_EQ(formattedByList(L"%s %ls %S %hs %c", L"a", L"b", "c", "d", L'e'), L"a b c d e");
    EXPECT_EQ(formattedByList(L"%*.*f %zu %hhd %hd", 8, 2, 1.25, sizeof(int), 257, 65537), L"    1.25 4 1 1");
    EXPECT_EQ(formattedByList(L"<%s>", static_cast<const wchar_t*>(nullptr)), L"<(null)>");
    EXPECT_EQ(formattedByList(L"%Lf", 1.5L), L"1.500000");
}

TEST(StringFormat, IsIndependentOfTheProcessLocale)
{
    const CommaLocale comma;
    if (!comma.IsSet()) GTEST_SKIP() << "locales cannot be compiled here";
    EXPECT_EQ(formatted(L"%.2f %d %g", 1234.5, 1234567, 0.5), L"1234.50 1234567 0.5");
}

TEST(StringFormat, MessagesFillTheirPlacesOnce)
{
    using obmgr::FormatMessageText;
    EXPECT_EQ(FormatMessageText(L"%2 before %1", L"a", CString(L"b")), L"b before a");
    EXPECT_EQ(FormatMessageText(L"%1 and %1, %2", L"x", 5), L"x and x, 5");
    EXPECT_EQ(FormatMessageText(L"%1", L"%2", L"b"), L"%2") << "values are not searched";
    EXPECT_EQ(FormatMessageText(L"%3 %0 %", L"a"), L"%3 %0 %");
    EXPECT_EQ(FormatMessageText(L"100%% %1", L"a"), L"100% a");
    EXPECT_EQ(FormatMessageText(L"plain"), L"plain");
    EXPECT_EQ(FormatMessageText(L"%9", 1, 2, 3, 4, 5, 6, 7, 8, -9L), L"-9");
}
