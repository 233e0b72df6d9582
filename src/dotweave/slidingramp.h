#pragma once

#include "dotweave/cuttable.h"

namespace dotweave {

/// Ranges of nearly equal width that slide down the threshold scale from the first row to the last, so that
/// rows one step apart meet at the same bound and together print everything from 0 up to the level.
///
/// Row r prints up to the level when r < stepRows, else up to (rowCount - r) * level / (m + 1), and above
/// (m - r) * level / (m + 1) when r < m, else above 0, where m = rowCount - stepRows. Each bound is computed
/// once and written to both rows that meet at it, so no rounding can open a gap.
/// @param table     rowCount entries
/// @param rowCount  rows of the band; layouts keep it at least stepRows. Nothing is written below 1.
/// @param stepRows  rows between two nozzle rows that print the same image row; counts as 0 below that
/// @param level     top of the scale, 0 to THRESHOLD_LEVEL_MAX
void SlidingRamp_Fill(SCutTable* table, int rowCount, int stepRows, int level);

} // namespace dotweave
