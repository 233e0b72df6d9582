#include "cutrange.h"

#include "cuttables.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

using namespace dotweave;

namespace {

/// The bounds alone, once all rows counts are checked.
CRanges Bounds(const std::vector<SCutRange>& ranges, int rowCount)
{
    CRanges bounds;
    for (const SCutRange& range : ranges) {
        EXPECT_EQ(range.rowCount, rowCount);
        bounds.push_back({range.lowerLimit, range.upperLimit});
    }
    return bounds;
}

} // namespace

static_assert(offsetof(SCutRange, upperLimit) == 0 && offsetof(SCutRange, lowerLimit) == 4 &&
              offsetof(SCutRange, rowCount) == 8 && sizeof(SCutRange) == 12);

TEST(CutRange, BoundariesAreSumsOfWholeScales)
{
    // 32768 * 65535 is the last sum that fits into 32 bits
    for (int passCount = 1; passCount <= 32768; passCount += passCount < 600 ? 1 : 32168) {
        int sum = 0;
        for (int i = 0; i < passCount; ++i, sum += 65535)
            ASSERT_EQ(CutRange_Boundary(i, passCount), sum / passCount) << i << " of " << passCount;
        ASSERT_EQ(CutRange_Boundary(passCount, passCount), 65535);
    }
}

TEST(CutRange, FivePassesPrintedTwiceAsWorkedByHand)
{
    EXPECT_EQ(Bounds(CutRanges_InGroups(5, 2, 3), 3),
              (CRanges{{0, 32767}, {32767, 65535}, {0, 21845}, {21845, 43690}, {43690, 65535}}));
}

TEST(CutRange, GroupsShareTheScaleLargestLast)
{
    for (int passCount = 1; passCount <= 40; ++passCount) {
        for (int groupCount = 1; groupCount <= 45; ++groupCount) {
            SCOPED_TRACE(testing::Message() << passCount << " passes, " << groupCount << " groups");
            const CRanges bounds = Bounds(CutRanges_InGroups(passCount, groupCount, 2), 2);
            ASSERT_EQ(bounds, HardZones(passCount, groupCount, 1));
            const int groupSize = passCount / groupCount;
            for (int group = 0; groupSize > 0 && group < groupCount - 1; ++group)
                ASSERT_TRUE(Tiles(RowsFrom(bounds, group * groupSize, groupSize), 65535));
            const int last = passCount - groupSize * (groupCount - 1);
            ASSERT_TRUE(Tiles(RowsFrom(bounds, passCount - last, last), 65535));
            ASSERT_GE(last, groupSize);
        }
    }
}

TEST(CutRange, AppendsToWhatIsThere)
{
    std::vector<SCutRange> ranges = {{9, 8, 5}};
    for (const int passCount : {0, -3, 1})
        CutRanges_AppendShares(ranges, passCount, 5);
    EXPECT_EQ(Bounds(ranges, 5), (CRanges{{8, 9}, {0, 65535}}));
}

TEST(CutRange, ExpandsIntoConsecutiveRowsOfSixteenBits)
{
    const std::vector<SCutRange> ranges = {{20, 10, 2}, {9, 5, 0}, {9, 5, -2}, {40, 30, 1}, {65543, -1, 3}};
    const CRanges rows = BuiltRanges(7, [&](SCutTable* table) { CutRanges_Expand(ranges, table); });
    EXPECT_EQ(rows, (CRanges{{10, 20}, {10, 20}, {30, 40}, {65535, 7}, {65535, 7}, {65535, 7}, UNWRITTEN}));
}
