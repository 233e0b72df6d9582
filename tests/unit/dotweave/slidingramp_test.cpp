#include "slidingramp.h"

#include "cuttables.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace dotweave;

namespace {

CRanges Ramp(int rowCount, int stepRows, int level)
{
    return BuiltRanges(rowCount,
                       [&](SCutTable* table) { SlidingRamp_Fill(table, rowCount, stepRows, level); });
}

} // namespace

TEST(SlidingRamp, SixRowsShareTheScaleInFifths)
{
    EXPECT_EQ(
        Ramp(6, 2, 65535),
        (CRanges{{52428, 65535}, {39321, 65535}, {26214, 52428}, {13107, 39321}, {0, 26214}, {0, 13107}}));
}

TEST(SlidingRamp, FollowsTheFormulaAndTilesItsLevel)
{
    // A step of 0 has no row to meet, so its ranges are empty. A band shorter than its step prints the whole
    // level.
    for (int stepRows = 0; stepRows <= 24; ++stepRows)
        for (int rowCount = 0; rowCount <= 5 * std::max(stepRows, 2); ++rowCount)
            for (const int level : {0, 1, 2, 99, 21626, 32767, 64879, 65534, 65535}) {
                SCOPED_TRACE(testing::Message()
                             << rowCount << " rows, step " << stepRows << ", level " << level);
                const CRanges ramp = Ramp(rowCount, stepRows, level);
                ASSERT_EQ(ramp, RampByFormula(rowCount, stepRows, level));
                for (int first = 0; first < std::min(stepRows, rowCount); ++first)
                    ASSERT_TRUE(Tiles(RowsOneStepApart(ramp, first, stepRows), level))
                        << "from row " << first;
            }
}

TEST(SlidingRamp, TilesTheScaleOfHeadsOfThousandsOfRows)
{
    for (const int stepRows : {1, 544, 8191, 32767}) {
        const CRanges ramp = Ramp(32768, stepRows, 65535);
        for (int first = 0; first < stepRows; first += 97)
            EXPECT_TRUE(Tiles(RowsOneStepApart(ramp, first, stepRows), 65535))
                << stepRows << " from " << first;
    }
}
