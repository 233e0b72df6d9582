#pragma once

#include "constants.h"

#include <cstdint>

/// The threshold table: THRESHOLD_MATRIX_COUNT matrices without a gap, row-major, packed at build time from
/// the two base matrices in data/. Read-only from the moment the library is loaded; there is no other source
/// of thresholds.
extern "C" const std::uint16_t s_rawMaskData[THRESHOLD_MATRIX_COUNT * dotweave::THRESHOLD_MATRIX_CELLS];
