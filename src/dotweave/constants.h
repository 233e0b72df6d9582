#pragma once

#include <cstdint>

/// Rows and columns of every threshold matrix. Mask geometry starts from this size.
inline constexpr int THRESHOLD_MATRIX_SIZE = 544;
/// Matrices in the threshold table; colour plane i uses matrix i modulo this count.
inline constexpr int THRESHOLD_MATRIX_COUNT = 16;
/// Value of a set pixel by its bits: all of them are set.
inline constexpr std::uint8_t DOT_VALUE[] = {0x00, 0x01, 0x03};

namespace dotweave {

/// Cells of one threshold matrix.
inline constexpr int THRESHOLD_MATRIX_CELLS = THRESHOLD_MATRIX_SIZE * THRESHOLD_MATRIX_SIZE;
/// Top of the threshold scale; level 0 never prints.
inline constexpr int THRESHOLD_LEVEL_MAX = 65535;
/// Workers of one generator.
inline constexpr int WORKER_COUNT = 6;
/// A wait without a limit, in milliseconds as the host's threading library takes them.
inline constexpr unsigned int WAIT_NO_LIMIT = 0xFFFFFFFFU;

} // namespace dotweave
