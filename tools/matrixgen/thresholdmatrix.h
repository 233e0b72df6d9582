#pragma once

#include "matrixrecipe.h"

#include <cstdint>
#include <vector>

namespace matrixgen {

constexpr int MATRIX_SIDE_MIN = 256; ///< the smallest side whose cells reach every level
constexpr int MATRIX_SIDE_MAX = 1024;

/// Makes a base threshold matrix: half pattern, ranking around it, quantisation.
/// Shape: side x side levels, row-major; opposite edges fit together.
/// @param side    cells per row and rows, MATRIX_SIDE_MIN to MATRIX_SIDE_MAX and even, not checked
/// @param seed    any; the same seed gives the same matrix
/// @param recipe  its figures
/// @return levels 0 to 65534, each used as often as LevelsOfRanks_Make says
std::vector<std::uint16_t> ThresholdMatrix_Make(int side, std::uint64_t seed,
                                                const SMatrixRecipe& recipe = {});

} // namespace matrixgen
