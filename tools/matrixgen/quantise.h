#pragma once

#include <cstdint>
#include <vector>

namespace matrixgen {

constexpr int QUANTISED_LEVEL_COUNT = 65535; ///< levels 0 to 65534; 65535 is never used

/// The level of every rank.
/// In the lower half of the scale a rank gets level floor(rank * 65535 / count). Level 65534 - k is used as
/// often as level k, and the middle level 32767 takes the remaining ranks. So the scale is its own mirror
/// image, and the mean level is exactly 32767.
/// @param count  of ranks, >= 65535 and even
/// @return count levels, never falling
std::vector<std::uint16_t> LevelsOfRanks_Make(int count);

/// Writes the level of each cell.
/// @param order  the cell of each rank, each cell once
/// @return one level for each cell, in the order of the cells
std::vector<std::uint16_t> Ranking_Quantise(const std::vector<int>& order);

} // namespace matrixgen
