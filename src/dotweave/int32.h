#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

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

/// A count of 32 bits as the size of an allocation.
/// @throws std::bad_array_new_length, which is a std::bad_alloc, for a negative count
inline std::size_t Int32_Size(std::int32_t count)
{
    if (count < 0)
        throw std::bad_array_new_length();
    return static_cast<std::size_t>(count);
}

/// The product of two sides as the size of an allocation that is written side by side.
/// @throws std::bad_array_new_length when 32 bits do not hold the product or it is negative
inline std::size_t Int32_Size(std::int32_t a, std::int32_t b)
{
    const std::int64_t product = std::int64_t{a} * b;
    if (!Int32_Holds(product))
        throw std::bad_array_new_length();
    return Int32_Size(static_cast<std::int32_t>(product));
}

} // namespace dotweave
