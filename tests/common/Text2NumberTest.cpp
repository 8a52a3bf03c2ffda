#include "common/Text2Number.h"

#include <cfloat>
#include <climits>
#include <cmath>

#include <gtest/gtest.h>

#include "framework/CommaLocale.h"

using obmgr::ToDouble;
using obmgr::ToLong;

namespace {

constexpr double kUnset = 2.2250738585072014e-308;

struct WholeCase {
    const wchar_t* text;
    long value;
};

struct RealCase {
    const wchar_t* text;
    double value;
};

const RealCase kRealCases[] = {
    {L"", 0},
    {L"0", 0},
    {L"1.5", 1.5},
    {L"-1.5", -1.5},
    {L"+1.5", 1.5},
    {L" \t\n 1.5", 1.5},
    {L"\u3000 1.5", 1.5},
    {L".5", 0.5},
    {L"5.", 5},
    {L"-.5e1", -5},
    {L"1e3", 1000},
    {L"1E+3", 1000},
    {L"1e-3", 0.001},
    {L"1e", 1},
    {L"1e+", 1},
    {L"1ex", 1},
    {L"1.5.5", 1.5},
    {L"1,5", 1},
    {L"1.5m", 1.5},
    {L"1 5", 1},
    {L".", 0},
    {L"-", 0},
    {L"+", 0},
    {L"+-1", 0},
    {L"--1", 0},
    {L"e5", 0},
    {L".e5", 0},
    {L"nan", 0},
    {L"NAN(1)", 0},
    {L"inf", 0},
    {L"-infinity", 0},
    {L"0x1p3", 0},
    {L"0x10", 0},
    {L"１２", 0},
    {L"abc", 0},
    {L"1e999", DBL_MAX},
    {L"-1e999", -DBL_MAX},
    {L"1e99999999999999999999", DBL_MAX},
    {L"1e-999", 0},
    {L"1e-99999999999999999999", 0},
    {L"0e999", 0},
    {L"1.7976931348623157e308", DBL_MAX},
    {L"1.7976931348623159e308", DBL_MAX},
    {L"4.9406564584124654e-324", 4.9406564584124654e-324},
    {L"1e-323", 1e-323},
    {L"2.2250738585072014e-308", kUnset},
    {L"0.1000000000000", 0.1},
    {L"9007199254740993", 9007199254740992.0},
    {L"9007199254740993.0000000000000000000000000000000000000000000000000000000000000000000001", 9007199254740994.0},
};

} // namespace

TEST(Text2Number, WholeNumbersStopAtTheFirstOtherCharacter)
{
    const WholeCase cases[] = {
        {L"", 0},     {L"0", 0},     {L"12", 12},   {L"-12", -12}, {L"+12", 12}, {L" \t\r\n12", 12}, {L"\u300012", 12},
        {L"12a", 12}, {L"12.9", 12}, {L"1,234", 1}, {L"a12", 0},   {L"-", 0},    {L"+", 0},          {L"--1", 0},
        {L"- 1", 0},  {L"１２", 0},  {L"0x10", 0},  {L"007", 7},   {L"nan", 0},  {L"1e3", 1},        {L"  ", 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ToLong(c.text), c.value) << CString(c.text);
        EXPECT_EQ(ToLong(std::wstring_view(c.text)), c.value) << CString(c.text);
        EXPECT_EQ(ToLong(CString(c.text)), c.value) << CString(c.text);
        EXPECT_EQ(ToLong(std::string_view(obmgr::ToUtf8(c.text))), c.value) << CString(c.text);
    }
}

TEST(Text2Number, WholeNumbersAreHeldAtThirtyTwoBits)
{
    const WholeCase cases[] = {
        {L"2147483646", 2147483646},        {L"2147483647", INT_MAX},  {L"2147483648", INT_MAX},
        {L"4294967296", INT_MAX},           {L"99999999999", INT_MAX}, {L"-2147483647", -2147483647},
        {L"-2147483648", INT_MIN},          {L"-2147483649", INT_MIN}, {L"-99999999999", INT_MIN},
        {L"18446744073709551617", INT_MAX},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ToLong(c.text), c.value) << CString(c.text);
}

TEST(Text2Number, NullTextsAreEmpty)
{
    EXPECT_EQ(ToLong(static_cast<const wchar_t*>(nullptr)), 0);
    EXPECT_EQ(ToDouble(static_cast<const wchar_t*>(nullptr)), 0);
    EXPECT_FALSE(obmgr::IsIntegerText(static_cast<const wchar_t*>(nullptr)));
}

TEST(Text2Number, RealNumbers)
{
    for (const auto& c : kRealCases) {
        EXPECT_EQ(ToDouble(c.text), c.value) << CString(c.text);
        EXPECT_EQ(ToDouble(std::wstring_view(c.text)), c.value) << CString(c.text);
        EXPECT_EQ(ToDouble(std::string_view(obmgr::ToUtf8(c.text))), c.value) << CString(c.text);
    }
}

TEST(Text2Number, HostsLocaleChangesNothing)
{
    const CommaLocale comma;
    if (!comma.IsSet()) GTEST_SKIP() << "locales cannot be compiled here";
    for (const auto& c : kRealCases)
        EXPECT_EQ(ToDouble(c.text), c.value) << CString(c.text);
    EXPECT_EQ(obmgr::FormatDouble(1234.5, 2), L"1234.50");
    EXPECT_EQ(obmgr::FormatInt(1234567), L"1234567");
}

TEST(Text2Number, TextsOfTenMegabytesAreRead)
{
    const std::wstring digits(10'000'000, L'9');
    EXPECT_EQ(ToLong(digits), INT_MAX);
    EXPECT_EQ(ToDouble(digits), DBL_MAX);
    EXPECT_EQ(ToDouble(L"0." + digits), 1.0);
    EXPECT_EQ(ToDouble(L"-" + digits), -DBL_MAX);
    EXPECT_EQ(ToDouble(L"1e" + digits), DBL_MAX);
    EXPECT_EQ(ToDouble(L"1e-" + digits), 0);
    EXPECT_EQ(ToDouble(L"0." + std::wstring(10'000'000, L'0') + L"1"), 0);
    EXPECT_EQ(ToDouble(std::wstring(10'000'000, L'0') + L"7.5"), 7.5);
    EXPECT_EQ(ToLong(std::wstring(10'000'000, L'0') + L"7"), 7);
    EXPECT_EQ(ToLong(std::wstring(10'000'000, L' ') + L"7"), 7);
    EXPECT_TRUE(obmgr::IsIntegerText(digits));
    EXPECT_EQ(ToDouble(std::string_view(std::string(10'000'000, '9'))), DBL_MAX);
}

TEST(Text2Number, IntegerTextIsDigitsWithOneMinusInFront)
{
    for (const wchar_t* const text : {L"0", L"12", L"-12", L"-", L"007", L"99999999999"})
        EXPECT_TRUE(obmgr::IsIntegerText(text)) << CString(text);
    for (const wchar_t* const text : {L"", L"+1", L" 1", L"1 ", L"12a", L"1.0", L"--1", L"1-", L"１２", L"-a"})
        EXPECT_FALSE(obmgr::IsIntegerText(text)) << CString(text);
}

TEST(Text2Number, NumbersToText)
{
    EXPECT_EQ(obmgr::FormatInt(0), L"0");
    EXPECT_EQ(obmgr::FormatInt(LONG_MIN), L"-9223372036854775808");
    struct {
        double value;
        int precision;
        const wchar_t* text;
    } const cases[] = {
        {0, 13, L"0.0000000000000"},
        {0.1, 13, L"0.1000000000000"},
        {-1.5, 0, L"-2"},
        {2.5, 0, L"2"},
        {1.005, 2, L"1.00"},
        {1e6, 3, L"1000000.000"},
        {-0.0, 1, L"-0.0"},
        {1.5, -1, L"1.500000"},
        {kUnset, 3, L"0.000"},
        {HUGE_VAL, 2, L"inf"},
        {-HUGE_VAL, 2, L"-inf"},
        {std::nan(""), 2, L"nan"},
        {1e22, 1, L"10000000000000000000000.0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(obmgr::FormatDouble(c.value, c.precision), c.text);
        CString printed;
        printed.Format(L"%.*f", c.precision, c.value);
        EXPECT_EQ(obmgr::FormatDouble(c.value, c.precision), printed) << "the two ways agree";
    }
    EXPECT_EQ(obmgr::FormatDouble(-DBL_MAX, 20).GetLength(), 1 + 309 + 1 + 20);
    EXPECT_EQ(obmgr::FormatDouble(DBL_MIN, 2000).GetLength(), 2002);
}
