#include "cutrange.h"

#include "cuttables.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

using namespace dotweave;

namespace {

/// The bounds alone.
CRanges Bounds(const std::vector<SCutRange>& ranges)
{
    CRanges bounds;
    for (const SCutRange& range : ranges)
        bounds.push_back({range.lowerLimit, range.upperLimit});
    return bounds;
}

} // namespace

static_assert(offsetof(SCutRange, upperLimit) == 0 && offsetof(SCutRange, lowerLimit) == 4 &&
              offsetof(SCutRange, rowCount) == 8 && sizeof(SCutRange) == 12);

TEST(CutRange, BoundariesAreSumsOfWholeScalesDividedByThePasses)
{
    for (int passCount = 1; passCount <= 600; ++passCount) {
        int sum = 0; // formed by repeated addition
        for (int i = 0; i <= passCount; ++i, sum += 65535)
            ASSERT_EQ(CutRange_Boundary(i, passCount), sum / passCount) << i << " of " << passCount;
    }
}

TEST(CutRange, BoundariesHoldUpToTheLargestSumOfThirtyTwoBits)
{
    constexpr int PASS_COUNT = 32768; // 32768 * 65535 is the last sum below 2 to the 31st
    int sum = 0;
    for (int i = 0; i < PASS_COUNT; ++i, sum += 65535)
        ASSERT_EQ(CutRange_Boundary(i, PASS_COUNT), sum / PASS_COUNT) << i;
    EXPECT_EQ(sum, 2147450880);
    EXPECT_EQ(CutRange_Boundary(PASS_COUNT, PASS_COUNT), 65535);
}

TEST(CutRange, SharesTheScaleAmongFourPassesAsWorkedByHand)
{
    std::vector<SCutRange> ranges;
    CutRanges_AppendShares(ranges, 4, 10);
    EXPECT_EQ(Bounds(ranges), (CRanges{{0, 16383}, {16383, 32767}, {32767, 49151}, {49151, 65535}}));
    for (const SCutRange& range : ranges)
        EXPECT_EQ(range.rowCount, 10);
}

TEST(CutRange, SharesAreNeighboursFromTheBottomToTheTopOfTheScale)
{
    for (int passCount = 1; passCount <= 600; ++passCount) {
        std::vector<SCutRange> ranges;
        CutRanges_AppendShares(ranges, passCount, 1);
        ASSERT_EQ(ranges.size(), static_cast<std::size_t>(passCount));
        EXPECT_EQ(ranges.front().lowerLimit, 0);
        EXPECT_EQ(ranges.back().upperLimit, 65535);
        for (std::size_t i = 0; i + 1 < ranges.size(); ++i) {
            ASSERT_EQ(ranges[i].upperLimit, ranges[i + 1].lowerLimit) << i << " of " << passCount;
            ASSERT_LT(ranges[i].lowerLimit, ranges[i].upperLimit) << i << " of " << passCount;
        }
    }
}

TEST(CutRange, AppendsNothingForNoPassesAndKeepsWhatIsThere)
{
    std::vector<SCutRange> ranges = {{9, 8, 7}};
    CutRanges_AppendShares(ranges, 0, 5);
    CutRanges_AppendShares(ranges, -3, 5);
    ASSERT_EQ(ranges.size(), 1U);
    CutRanges_AppendShares(ranges, 1, 5);
    EXPECT_EQ(Bounds(ranges), (CRanges{{8, 9}, {0, 65535}}));
    EXPECT_EQ(ranges[0].rowCount, 7);
}

TEST(CutRange, GivesTheRemainderOfFivePassesToTheLastOfTwoGroups)
{
    const std::vector<SCutRange> ranges = CutRanges_InGroups(5, 2, 3);
    EXPECT_EQ(Bounds(ranges),
              (CRanges{{0, 32767}, {32767, 65535}, {0, 21845}, {21845, 43690}, {43690, 65535}}));
    for (const SCutRange& range : ranges)
        EXPECT_EQ(range.rowCount, 3);
}

TEST(CutRange, EveryGroupSharesTheWholeScaleAndTheLastIsTheLargest)
{
    for (int passCount = 1; passCount <= 40; ++passCount) {
        for (int groupCount = 1; groupCount <= 45; ++groupCount) {
            SCOPED_TRACE(testing::Message() << passCount << " passes, " << groupCount << " groups");
            const CRanges bounds = Bounds(CutRanges_InGroups(passCount, groupCount, 2));
            ASSERT_EQ(bounds.size(), static_cast<std::size_t>(passCount));
            const int groupSize = passCount / groupCount;
            int first = 0;
            for (int group = 0; groupSize > 0 && group < groupCount - 1; ++group, first += groupSize)
                ASSERT_TRUE(Tiles(RowsFrom(bounds, first, groupSize), 65535)) << "group " << group;
            ASSERT_TRUE(Tiles(RowsFrom(bounds, first, passCount - first), 65535)) << "last group";
            ASSERT_GE(passCount - first, groupSize);
        }
    }
}

TEST(CutRange, ExpandsRangesIntoConsecutiveRows)
{
    const std::vector<SCutRange> ranges = {{20, 10, 2}, {9, 5, 0}, {40, 30, 1}, {65535, 0, 3}};
    const CRanges rows = BuiltRanges(6, [&](SCutTable* table) { CutRanges_Expand(ranges, table); });
    EXPECT_EQ(rows, (CRanges{{10, 20}, {10, 20}, {30, 40}, {0, 65535}, {0, 65535}, {0, 65535}}));
}

TEST(CutRange, StoresBoundsTruncatedToSixteenBits)
{
    const std::vector<SCutRange> ranges = {{65536 + 7, -1, 1}};
    const CRanges rows = BuiltRanges(1, [&](SCutTable* table) { CutRanges_Expand(ranges, table); });
    EXPECT_EQ(rows, (CRanges{{65535, 7}}));
}

TEST(CutRange, WritesNothingWithoutRangesOrRows)
{
    const std::vector<SCutRange> rowless = {{65535, 0, 0}, {65535, 0, -2}};
    EXPECT_EQ(BuiltRanges(2, [&](SCutTable* table) { CutRanges_Expand(rowless, table); }),
              CRanges(2, UNWRITTEN));
    EXPECT_EQ(BuiltRanges(2, [](SCutTable* table) { CutRanges_Expand({}, table); }), CRanges(2, UNWRITTEN));
}
