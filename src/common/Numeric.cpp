#include "common/Numeric.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace {

constexpr int kSeenDigits = 15;

// 0.d1d2d3... times ten to the power `point`; no zeros at the ends.
struct Decimal {
    char digits[kSeenDigits];
    int count = 0;
    int point = 0;
};

// Takes apart "d.ddde+xx"; false when there are more digits than a person is shown.
bool parseScientific(std::string_view text, Decimal& decimal)
{
    const std::size_t mark = text.find('e');
    decimal.count = 0;
    for (const char c : text.substr(0, mark)) {
        if (c == '.') continue;
        if (decimal.count == kSeenDigits) return false;
        decimal.digits[decimal.count++] = c;
    }
    while (decimal.count > 0 && decimal.digits[decimal.count - 1] == '0')
        --decimal.count;
    const char* exponent = text.data() + mark + 1;
    if (*exponent == '+') ++exponent;
    std::from_chars(exponent, text.data() + text.size(), decimal.point);
    ++decimal.point;
    return true;
}

Decimal decimalOf(double magnitude)
{
    char text[40];
    char* const end = text + sizeof text;
    const auto view = [&](std::to_chars_result result) {
        return std::string_view(text, static_cast<std::size_t>(result.ptr - text));
    };
    Decimal decimal;
    if (!parseScientific(view(std::to_chars(text, end, magnitude, std::chars_format::scientific)), decimal))
        parseScientific(view(std::to_chars(text, end, magnitude, std::chars_format::scientific, kSeenDigits - 1)),
                        decimal);
    return decimal;
}

} // namespace

double orn_round_double(double value, int digits, int mode)
{
    if (value == 0) return 0;
    if (!std::isfinite(value) || mode < OrnRoundHalf || mode >= OrnRoundNone) return value;

    const Decimal decimal = decimalOf(std::fabs(value));
    const long kept = static_cast<long>(decimal.point) + digits; // digits in front of the cut
    if (kept > kSeenDigits) return value;

    std::int64_t whole = 0;
    for (long i = 0; i < kept; ++i)
        whole = whole * 10 + (i < decimal.count ? decimal.digits[i] - '0' : 0);
    const bool isCut = kept < decimal.count;
    const bool isHalfOrMore = isCut && kept >= 0 && decimal.digits[kept] >= '5';
    if ((mode == OrnRoundUp && isCut) || (mode == OrnRoundHalf && isHalfOrMore)) ++whole;
    if (whole == 0) return 0;

    char text[64];
    const int length = std::snprintf(text, sizeof text, "%s%llde%ld", value < 0 ? "-" : "",
                                     static_cast<long long>(whole), -static_cast<long>(digits));
    double rounded = value; // stays when the result is out of range
    std::from_chars(text, text + length, rounded);
    return rounded;
}

int orn_compare_double(double a, double b, double eps)
{
    if (a == b) return 0; // equal infinities, too
    return a - b > eps ? 1 : b - a > eps ? -1 : 0;
}

bool orn_same_double(double a, double b, double eps)
{
    return a == b || std::fabs(a - b) <= eps;
}

bool orn_is_zero(double value, double eps)
{
    return std::fabs(value) <= eps;
}
