// The order of spans by level, the highest first.
#pragma once

#include <cstddef>
#include <vector>

namespace obmgr {

// Levels nearer to each other than this count as one, metres.
constexpr double kSameLevel = 1e-5;

// The places of the levels as the exchange sort, the highest first, brings them into order.
std::vector<std::size_t> FallingLevels(std::vector<double> levels);

} // namespace obmgr
