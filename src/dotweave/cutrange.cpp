#include "cutrange.h"

#include <algorithm>

namespace dotweave {

void CutRanges_AppendShares(std::vector<SCutRange>& ranges, int passCount, int rowsPerPass)
{
    for (int pass = 0; pass < passCount; ++pass)
        ranges.push_back(
            {CutRange_Boundary(pass + 1, passCount), CutRange_Boundary(pass, passCount), rowsPerPass});
}

std::vector<SCutRange> CutRanges_InGroups(int passCount, int groupCount, int rowsPerPass)
{
    std::vector<SCutRange> ranges;
    if (passCount < 1 || groupCount < 1)
        return ranges;
    const int groupSize = passCount / groupCount;
    for (int group = 0; groupSize > 0 && group < groupCount - 1; ++group)
        CutRanges_AppendShares(ranges, groupSize, rowsPerPass);
    CutRanges_AppendShares(ranges, passCount - (groupCount - 1) * groupSize, rowsPerPass);
    return ranges;
}

void CutRanges_Expand(const std::vector<SCutRange>& ranges, SCutTable* table)
{
    for (const SCutRange& range : ranges) {
        const SCutTable entry = {static_cast<std::uint16_t>(range.upperLimit),
                                 static_cast<std::uint16_t>(range.lowerLimit)};
        table = std::fill_n(table, range.rowCount, entry);
    }
}

} // namespace dotweave
