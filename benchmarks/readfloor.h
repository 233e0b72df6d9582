#pragma once

#include <cstddef>
#include <cstdint>

/// @file
/// The least that any cut has to do: reading the thresholds.

/// Sum of thresholds modulo 65536, on the instruction set in use. Only loads and additions.
std::uint16_t ReadFloor_Sum(const std::uint16_t* thresholds, std::size_t count);

/// The instruction set in use, as Highway's bit for it.
std::int64_t ReadFloor_Target();
