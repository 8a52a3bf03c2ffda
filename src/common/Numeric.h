// Rounding and comparing of numbers.
#pragma once

#include "common/Export.h"

// How orn_round_double treats what is cut off.
enum OrnRoundMode {
    OrnRoundHalf = 0, // half away from zero
    OrnRoundDown = 1, // towards zero
    OrnRoundUp = 2,   // away from zero
    OrnRoundNone = 3  // no rounding; any other mode is the same
};

// Rounds at `digits` decimals; negative digits round to tens, hundreds. What is rounded is the decimal number that a
// person sees: the shortest one that stands for the value, with 15 significant digits at most, so that 2.675 at two
// digits is 2.68. Zero comes out without a sign; nan, infinity and what rounding would carry out of range are given
// back.
RIVELTA_API double orn_round_double(double value, int digits, int mode);

// 1 when a exceeds b by more than eps, -1 when it is less by more than eps, else 0.
RIVELTA_API int orn_compare_double(double a, double b, double eps);
// True when a and b differ by no more than eps.
RIVELTA_API bool orn_same_double(double a, double b, double eps);
RIVELTA_API bool orn_is_zero(double value, double eps);
