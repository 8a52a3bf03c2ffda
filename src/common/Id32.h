// Ids and counters stand in `long` in the interface and behave as 32-bit values on every system.
// The narrowing of them is done here and nowhere else.
#pragma once

#include <concepts>
#include <cstdint>
#include <string_view>

#include "common/Text2Number.h"

namespace obmgr {

// The value as a 32-bit id: wraps around, as the counters of the interface do.
template <std::integral T> constexpr std::int32_t Id32(T value) noexcept
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

// Sum of two ids with 32-bit wrap around and no signed overflow.
constexpr std::int32_t AddIds(long a, long b) noexcept
{
    return Id32(static_cast<unsigned long>(a) + static_cast<unsigned long>(b));
}

// The id that a text stands for: ToLong as an id.
inline std::int32_t IdFromText(std::wstring_view text) noexcept
{
    return Id32(ToLong(text));
}
inline std::int32_t IdFromText(std::string_view utf8) noexcept
{
    return Id32(ToLong(utf8));
}
inline std::int32_t IdFromText(const wchar_t* text) noexcept
{
    return Id32(ToLong(text));
}

} // namespace obmgr
