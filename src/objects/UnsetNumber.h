// The double that stands for "no value" in numeric results; tested for equality, labels print nothing for it.
#pragma once

namespace obmgr {

inline constexpr double kUnsetNumber = 2.2250738585072014e-308;

} // namespace obmgr
