#pragma once

#include "dotweave/maskparam.h"

#include <array>
#include <bit>
#include <cstdint>

/// The record's bytes as twelve words, one per field: two records are the same mode only when all are equal.
inline std::array<std::uint32_t, 12> Words(const SMaskParam& param)
{
    return std::bit_cast<std::array<std::uint32_t, 12>>(param);
}
