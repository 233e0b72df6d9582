#include "slidingramp.h"

#include "cuttables.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

using namespace dotweave;

namespace {

CRanges Ramp(int rowCount, int stepRows, int level)
{
    return BuiltRanges(rowCount,
                       [&](SCutTable* table) { SlidingRamp_Fill(table, rowCount, stepRows, level); });
}

constexpr int LEVELS[] = {0, 1, 2, 99, 21626, 32767, 64879, 65534, 65535};

/// Calls `check(rowCount, stepRows, level)` for every step up to 24, up to five steps of rows, and all
/// levels.
template <typename TCheck>
void ForRamps(TCheck check)
{
    for (int stepRows = 1; stepRows <= 24; ++stepRows)
        for (int rowCount = stepRows; rowCount <= 5 * stepRows; ++rowCount)
            for (const int level : LEVELS) {
                SCOPED_TRACE(testing::Message()
                             << rowCount << " rows, step " << stepRows << ", level " << level);
                ASSERT_NO_FATAL_FAILURE(check(rowCount, stepRows, level));
            }
}

} // namespace

TEST(SlidingRamp, SixRowsInStepsOfTwoShareTheScaleInFifths)
{
    EXPECT_EQ(
        Ramp(6, 2, 65535),
        (CRanges{{52428, 65535}, {39321, 65535}, {26214, 52428}, {13107, 39321}, {0, 26214}, {0, 13107}}));
}

TEST(SlidingRamp, FiftyOneSharesOfTheScaleAre1285Each)
{
    // 80 rows of which 50 slide: 51 * 1285 is the whole scale
    const CRanges ramp = Ramp(80, 30, 65535);
    for (int row = 0; row < 80; ++row) {
        const SRange expected = {row < 50 ? (50 - row) * 1285 : 0, row < 30 ? 65535 : (80 - row) * 1285};
        EXPECT_EQ(ramp[static_cast<std::size_t>(row)], expected) << row;
    }
}

TEST(SlidingRamp, RowsOneStepApartTileTheScaleUpToTheLevel)
{
    ForRamps([](int rowCount, int stepRows, int level) {
        const CRanges ramp = Ramp(rowCount, stepRows, level);
        for (int first = 0; first < stepRows; ++first)
            ASSERT_TRUE(Tiles(RowsOneStepApart(ramp, first, stepRows), level)) << "from row " << first;
    });
}

TEST(SlidingRamp, NeighboursOneStepApartMeetAtOneBound)
{
    ForRamps([](int rowCount, int stepRows, int level) {
        const CRanges ramp = Ramp(rowCount, stepRows, level);
        for (std::size_t row = 0; row + static_cast<std::size_t>(stepRows) < ramp.size(); ++row)
            ASSERT_EQ(ramp[row].lower, ramp[row + static_cast<std::size_t>(stepRows)].upper) << row;
    });
}

TEST(SlidingRamp, SlidesDownInEvenStepsThatDifferByOneLevelAtMost)
{
    ForRamps([](int rowCount, int stepRows, int level) {
        const CRanges ramp = Ramp(rowCount, stepRows, level);
        const int slidingRows = rowCount - stepRows;
        const int share = level / (slidingRows + 1);
        for (int row = 0; row < rowCount; ++row) {
            const SRange& range = ramp[static_cast<std::size_t>(row)];
            if (row < stepRows) {
                ASSERT_EQ(range.upper, level) << row;
            }
            if (row >= slidingRows) {
                ASSERT_EQ(range.lower, 0) << row;
            }
            if (row == 0)
                continue;
            const SRange& above = ramp[static_cast<std::size_t>(row) - 1];
            if (row >= stepRows) { // also the first bound below the top is a share away from it
                ASSERT_GE(above.upper - range.upper, share) << row;
                ASSERT_LE(above.upper - range.upper, share + 1) << row;
            }
            if (row <= slidingRows) {
                ASSERT_GE(above.lower - range.lower, share) << row;
                ASSERT_LE(above.lower - range.lower, share + 1) << row;
            }
        }
    });
}

TEST(SlidingRamp, HasTheBoundsOfTheLinearFormula)
{
    ForRamps([](int rowCount, int stepRows, int level) {
        const CRanges ramp = Ramp(rowCount, stepRows, level);
        const int sliding = rowCount - stepRows;
        for (int row = 0; row < rowCount; ++row) {
            // sums of whole levels, then one division: no 64-bit product
            int upperSum = 0;
            for (int k = 0; k < rowCount - row; ++k)
                upperSum += level;
            int lowerSum = 0;
            for (int k = 0; k < sliding - row; ++k)
                lowerSum += level;
            const SRange expected = {row < sliding ? lowerSum / (sliding + 1) : 0,
                                     row < stepRows ? level : upperSum / (sliding + 1)};
            ASSERT_EQ(ramp[static_cast<std::size_t>(row)], expected) << row;
        }
    });
}

TEST(SlidingRamp, GivesEveryRowTheWholeLevelWhenNothingSlides)
{
    for (int rows = 1; rows <= 24; ++rows)
        EXPECT_EQ(Ramp(rows, rows, 32767), CRanges(static_cast<std::size_t>(rows), SRange{0, 32767}));
}

TEST(SlidingRamp, StaysInsideABandShorterThanItsStep)
{
    for (int stepRows = 1; stepRows <= 24; ++stepRows)
        for (int rows = 0; rows < stepRows; ++rows)
            EXPECT_EQ(Ramp(rows, stepRows, 65535), CRanges(static_cast<std::size_t>(rows), SRange{0, 65535}));
}

TEST(SlidingRamp, PrintsNothingAtLevelZeroAndWritesNothingWithoutRows)
{
    for (const SRange& range : Ramp(10, 3, 0))
        EXPECT_EQ(range, (SRange{0, 0}));
    EXPECT_TRUE(Ramp(0, 0, 65535).empty());
}

TEST(SlidingRamp, PrintsNothingWithoutAStep)
{
    for (const SRange& range : Ramp(7, 0, 65535)) // no row but itself to meet: both its bounds are one
        EXPECT_EQ(range.lower, range.upper);
}

TEST(SlidingRamp, HoldsForHeadsOfThousandsOfRows)
{
    for (const int stepRows : {1, 544, 8191, 32767}) {
        const CRanges ramp = Ramp(32768, stepRows, 65535);
        for (int first = 0; first < stepRows; first += 97)
            EXPECT_TRUE(Tiles(RowsOneStepApart(ramp, first, stepRows), 65535))
                << stepRows << " from " << first;
    }
}
