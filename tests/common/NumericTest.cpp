#include "common/Numeric.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

// Adds one to the last digit of a string of digits.
std::string increased(std::string digits)
{
    std::size_t at = digits.size();
    while (at > 0 && digits[at - 1] == '9')
        digits[--at] = '0';
    if (at == 0) return "1" + digits;
    ++digits[at - 1];
    return digits;
}

// Rounding done on paper: the number is written out with 15 significant digits as a long string of decimals, cut, and
// the string is read back. Slow, and shares nothing with the code under test.
double roundedOnPaper(double value, int digits, int mode)
{
    constexpr int kWhole = 400; // places in front of the point
    constexpr int kFraction = 400;
    char text[64];
    std::snprintf(text, sizeof text, "%.14e", std::fabs(value));
    const int exponent = std::atoi(std::string(text).substr(17).c_str());
    std::string places(kWhole + kFraction, '0'); // places[kWhole] is the first decimal
    std::string significant = std::string(1, text[0]) + std::string(text + 2, 14);
    for (std::size_t i = 0; i < significant.size(); ++i)
        places[static_cast<std::size_t>(kWhole - 1 - exponent) + i] = significant[i];
    const auto cut = static_cast<std::size_t>(kWhole + digits);
    std::string kept = places.substr(0, cut);
    const std::string lost = places.substr(cut);
    if (mode == 0 && lost[0] >= '5') kept = increased(kept);
    if (mode == 2 && lost.find_first_not_of('0') != std::string::npos) kept = increased(kept);
    const double magnitude = std::strtod((kept + "e" + std::to_string(-digits)).c_str(), nullptr);
    return magnitude == 0 ? 0 : std::copysign(magnitude, value);
}

} // namespace

TEST(Numeric, RoundingTable)
{
    struct {
        double value;
        int digits;
        double half;
        double down;
        double up;
    } const cases[] = {
        {1.005, 2, 1.01, 1.00, 1.01},
        {2.675, 2, 2.68, 2.67, 2.68},
        {1.115, 2, 1.12, 1.11, 1.12},
        {-1.005, 2, -1.01, -1.00, -1.01},
        {0.1 + 0.2, 1, 0.3, 0.3, 0.3},
        {0.1 + 0.7, 1, 0.8, 0.8, 0.8},
        {0.3, 1, 0.3, 0.3, 0.3},
        {4.35 * 100, 0, 435, 435, 435},
        {1.1 * 1.1, 2, 1.21, 1.21, 1.21},
        {2.5, 0, 3, 2, 3},
        {-2.5, 0, -3, -2, -3},
        {0.5, 0, 1, 0, 1},
        {0.4999, 0, 0, 0, 1},
        {0.05, 0, 0, 0, 1},
        {9.995, 2, 10, 9.99, 10},
        {999.9, 0, 1000, 999, 1000},
        {1234, -2, 1200, 1200, 1300},
        {1250, -2, 1300, 1200, 1300},
        {-1250, -2, -1300, -1200, -1300},
        {49, -2, 0, 0, 100},
        {50, -2, 100, 0, 100},
        {5, -2, 0, 0, 100},
        {1e-320, 3, 0, 0, 0.001},
        {123456789.123456, 3, 123456789.123, 123456789.123, 123456789.124},
        {1e15, 2, 1e15, 1e15, 1e15},
        {1e300, 2, 1e300, 1e300, 1e300},
        {1e300, -300, 1e300, 1e300, 1e300},
        {1.26e300, -299, 1.3e300, 1.2e300, 1.3e300},
        {0.000123456, 6, 0.000123, 0.000123, 0.000124},
        {1.0 / 3, 13, 0.3333333333333, 0.3333333333333, 0.3333333333334},
        {1.0 / 3, 20, 1.0 / 3, 1.0 / 3, 1.0 / 3},
        {5e-324, 324, 5e-324, 5e-324, 5e-324},
        {30.0, 13, 30, 30, 30},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(orn_round_double(c.value, c.digits, 0), c.half) << c.value << " at " << c.digits;
        EXPECT_EQ(orn_round_double(c.value, c.digits, 1), c.down) << c.value << " at " << c.digits;
        EXPECT_EQ(orn_round_double(c.value, c.digits, 2), c.up) << c.value << " at " << c.digits;
    }
}

TEST(Numeric, OtherModesDoNotRound)
{
    for (const int mode : {3, 4, -1, 99}) {
        EXPECT_EQ(orn_round_double(1.23456, 2, mode), 1.23456);
        EXPECT_FALSE(std::signbit(orn_round_double(-0.0, 2, mode)));
    }
}

TEST(Numeric, ZeroNeverHasASign)
{
    for (const int mode : {0, 1, 2})
        EXPECT_FALSE(std::signbit(orn_round_double(-0.0, 2, mode)));
    EXPECT_FALSE(std::signbit(orn_round_double(-0.001, 2, 0)));
    EXPECT_FALSE(std::signbit(orn_round_double(-0.009, 2, 1)));
    EXPECT_EQ(orn_round_double(-0.001, 2, 2), -0.01);
}

TEST(Numeric, WhatCannotBeRoundedIsGivenBack)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const int mode : {0, 1, 2, 3}) {
        EXPECT_EQ(orn_round_double(kInfinity, 2, mode), kInfinity);
        EXPECT_EQ(orn_round_double(-kInfinity, 2, mode), -kInfinity);
        EXPECT_TRUE(std::isnan(orn_round_double(std::nan(""), 2, mode)));
    }
    EXPECT_EQ(orn_round_double(DBL_MAX, -308, 0), DBL_MAX) << "2e308 is no number";
    EXPECT_EQ(orn_round_double(1, -400, 2), 1);
    EXPECT_EQ(orn_round_double(1, INT_MIN, 0), 0);
    EXPECT_EQ(orn_round_double(1, INT_MIN, 2), 1);
    EXPECT_EQ(orn_round_double(1.5, INT_MAX, 0), 1.5);
    EXPECT_EQ(orn_round_double(DBL_MAX, 5, 0), DBL_MAX);
    EXPECT_EQ(orn_round_double(DBL_MIN, 310, 0), 2.23e-308);
}

TEST(Numeric, AgreesWithRoundingOnPaper)
{
    std::mt19937_64 random(4711);
    std::uniform_real_distribution<double> metres(-1000, 1000);
    for (int i = 0; i < 60'000; ++i) {
        double value = metres(random);
        if (i % 3 == 0) value = std::round(value * 1000) / 1000 + 0.0005; // many halves
        if (i % 7 == 0) value *= std::pow(10, static_cast<int>(random() % 60) - 30);
        const int digits = static_cast<int>(random() % 20) - 6;
        const int mode = static_cast<int>(random() % 3);
        char text[32];
        std::snprintf(text, sizeof text, "%.14e", std::fabs(value));
        const int exponent = std::atoi(text + 17);
        if (exponent + digits + 1 > 15) continue; // nothing is cut off
        ASSERT_EQ(orn_round_double(value, digits, mode), roundedOnPaper(value, digits, mode))
            << testing::PrintToString(value) << " at " << digits << ", mode " << mode;
    }
}

TEST(Numeric, RoundingTwiceIsRoundingOnce)
{
    std::mt19937_64 random(99);
    std::uniform_real_distribution<double> metres(-1e6, 1e6);
    for (int i = 0; i < 50'000; ++i) {
        const int digits = static_cast<int>(random() % 9) - 3;
        const int mode = static_cast<int>(random() % 3);
        const double once = orn_round_double(metres(random), digits, mode);
        ASSERT_EQ(orn_round_double(once, digits, mode), once);
    }
}

TEST(Numeric, ComparesWithATolerance)
{
    struct {
        double a;
        double b;
        double eps;
        int order;
    } const cases[] = {
        {1, 1, 0, 0},
        {1.1, 1, 0.25, 0},
        {1.5, 1, 0.25, 1},
        {1, 1.5, 0.25, -1},
        {1.25, 1, 0.25, 0},
        {1, 1.25, 0.25, 0},
        {-1, 1, 1e-5, -1},
        {0, 1e-6, 1e-5, 0},
        {HUGE_VAL, HUGE_VAL, 1e-5, 0},
        {HUGE_VAL, 1, 1e-5, 1},
        {-HUGE_VAL, HUGE_VAL, 1e-5, -1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(orn_compare_double(c.a, c.b, c.eps), c.order) << c.a << " " << c.b;
        EXPECT_EQ(orn_compare_double(c.b, c.a, c.eps), -c.order) << c.a << " " << c.b;
        EXPECT_EQ(orn_same_double(c.a, c.b, c.eps), c.order == 0) << c.a << " " << c.b;
    }
    EXPECT_FALSE(orn_same_double(std::nan(""), std::nan(""), 1));
}

TEST(Numeric, ZeroWithinATolerance)
{
    EXPECT_TRUE(orn_is_zero(0, 0));
    EXPECT_TRUE(orn_is_zero(-1e-6, 1e-5));
    EXPECT_TRUE(orn_is_zero(0.25, 0.25));
    EXPECT_FALSE(orn_is_zero(-0.5, 0.25));
    EXPECT_FALSE(orn_is_zero(std::nan(""), 1));
}
