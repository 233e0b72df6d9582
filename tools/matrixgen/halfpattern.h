#pragma once

#include "matrixrecipe.h"
#include "splitmix64.h"

#include <cstdint>
#include <vector>

namespace matrixgen {

/// Makes the pattern printed at 50 %: the anchor around which the ranking is built.
/// Random cells are relaxed until moving the tightest cluster to the largest void gains nothing, then
/// annealed by moves of one cell.
/// @param side    of the torus in cells; even, so that half of the cells is a whole number
/// @param recipe  deviations and temperatures
/// @param random  source of all chance
/// @return one byte for each cell, 1 for exactly half of them
std::vector<std::uint8_t> HalfPattern_Make(int side, const SMatrixRecipe& recipe, CSplitMix64& random);

} // namespace matrixgen
