#pragma once

#include "constants.h"
#include "dotweave/cuttable.h"

#include <cstdint>
#include <vector>

/// The share of the threshold scale that one pass prints, and the mask rows that carry it.
struct SCutRange {
    std::int32_t upperLimit; ///< upper bound of the pass (inclusive)
    std::int32_t lowerLimit; ///< lower bound of the pass (exclusive)
    std::int32_t rowCount;   ///< consecutive mask rows with this range
};

namespace dotweave {

/// Boundary i of a scale that is shared out among passCount passes: pass i prints what lies above boundary i
/// up to boundary i + 1, so neighbours meet without a gap.
/// @param i  0 to passCount
constexpr std::int32_t CutRange_Boundary(int i, int passCount)
{
    return static_cast<std::int32_t>(std::int64_t{i} * THRESHOLD_LEVEL_MAX / passCount);
}

/// Appends the ranges of passCount passes that share the whole scale once; nothing for a count below 1.
void CutRanges_AppendShares(std::vector<SCutRange>& ranges, int passCount, int rowsPerPass);

/// The ranges of groupCount groups of passes, each of which shares the whole scale again. The remainder of
/// the division goes to the last group, which is deliberately the largest.
/// @return no ranges when either count is below 1
std::vector<SCutRange> CutRanges_InGroups(int passCount, int groupCount, int rowsPerPass);

/// Expands ranges, in pass order, into consecutive table entries. Bounds are stored truncated to 16 bits.
void CutRanges_Expand(const std::vector<SCutRange>& ranges, SCutTable* table);

} // namespace dotweave
