#pragma once

#include <cstdint>
#include <limits>

namespace dotweave {

/// The product as 32-bit hardware forms it: sizes handed in by a host may wrap, and must do so the same way
/// on every compiler.
constexpr std::int32_t Int32_Product(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

/// Whether a size computed at full width can be kept in a 32-bit field.
constexpr bool Int32_Holds(std::int64_t value)
{
    return value >= std::numeric_limits<std::int32_t>::min() &&
           value <= std::numeric_limits<std::int32_t>::max();
}

} // namespace dotweave
