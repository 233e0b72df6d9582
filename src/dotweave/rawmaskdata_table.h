#pragma once

#include "constants.h"

#include <cstddef>
#include <cstdint>

/// The threshold table: THRESHOLD_MATRIX_COUNT matrices without a gap, row-major, packed at build time from
/// the two base matrices in data/. Read-only from the moment the library is loaded; there is no other source
/// of thresholds.
extern "C" const std::uint16_t s_rawMaskData[THRESHOLD_MATRIX_COUNT * dotweave::THRESHOLD_MATRIX_CELLS];

namespace dotweave {

/// First cell of the matrix of a colour plane.
/// @param plane  >= 0. Not checked: the remainder keeps the sign, so a negative plane that is no multiple of
///               THRESHOLD_MATRIX_COUNT gives an address before the table.
inline const std::uint16_t* Matrix_OfPlane(int plane)
{
    return s_rawMaskData +
           static_cast<std::ptrdiff_t>(plane % THRESHOLD_MATRIX_COUNT) * THRESHOLD_MATRIX_CELLS;
}

/// The first plane that has the same thresholds. The table repeats slots 4 to 7 from slot 8 on.
constexpr int Plane_WithSameMatrix(int plane)
{
    const int slot = plane % THRESHOLD_MATRIX_COUNT;
    return slot < 8 ? slot : slot % 4 + 4;
}

} // namespace dotweave
