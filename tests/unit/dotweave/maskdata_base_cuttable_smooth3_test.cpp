#include "dotweave/maskdata_base.h"

#include "cuttables.h"
#include "logcapture.h"
#include "smooth3tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

namespace {

/// Six rows that slide down the scale two by two, in fifths.
CRanges SixRows()
{
    return {{52428, 65535}, {39321, 65535}, {26214, 52428}, {13107, 39321}, {0, 26214}, {0, 13107}};
}

} // namespace

// ---- colour once, style 1

TEST(CutTableSmooth3, SixRowsInStepsOfTwoShareTheScaleInFifths)
{
    EXPECT_EQ(OnceStyle1(6, 2, 100), SixRows());
}

TEST(CutTableSmooth3, SixRowsAtHalfTheLevelShareTheLowerHalfInFifths)
{
    EXPECT_EQ(
        OnceStyle1(6, 2, 50),
        (CRanges{{26213, 32767}, {19660, 32767}, {13106, 26213}, {6553, 19660}, {0, 13106}, {0, 6553}}));
}

TEST(CutTableSmooth3, RowsOneStepApartTileTheScaleUpToTheLevel)
{
    for (int step = 1; step <= 24; ++step) {
        for (int rows = step; rows <= 5 * step; ++rows) {
            for (const int percent : SMOOTH_3_LEVEL_PERCENTS) {
                SCOPED_TRACE(testing::Message()
                             << rows << " rows, step " << step << ", level " << percent << '%');
                const CRanges table = OnceStyle1(rows, step, percent);
                for (int first = 0; first < step; ++first)
                    ASSERT_TRUE(Tiles(RowsOneStepApart(table, first, step), percent * 65535 / 100)) << first;
            }
        }
    }
}

TEST(CutTableSmooth3, PrintsNothingAboveItsLevel)
{
    for (int percent = 0; percent <= 100; ++percent) {
        const int level = percent * 65535 / 100;
        int highest = 0;
        for (const SRange& range : OnceStyle1(37, 9, percent))
            highest = std::max(highest, range.upper);
        EXPECT_EQ(highest, level) << percent;
    }
    EXPECT_EQ(OnceStyle1(5, 5, 50).front().upper, 32767);
    EXPECT_EQ(OnceStyle1(5, 5, 100).front().upper, 65535);
}

TEST(CutTableSmooth3, GivesEveryRowTheWholeLevelWhenTheBandIsOneStep)
{
    for (int rows = 1; rows <= 24; ++rows)
        for (const int percent : SMOOTH_3_LEVEL_PERCENTS)
            EXPECT_EQ(OnceStyle1(rows, rows, percent),
                      CRanges(static_cast<std::size_t>(rows), SRange{0, percent * 65535 / 100}));
}

TEST(CutTableSmooth3, StaysInsideABandShorterThanItsStep)
{
    for (int step = 1; step <= 12; ++step) // the guards around the table see a write in front of it
        for (int rows = 0; rows < step; ++rows)
            EXPECT_EQ(OnceStyle1(rows, step, 100), CRanges(static_cast<std::size_t>(rows), SRange{0, 65535}));
}

TEST(CutTableSmooth3, MemberFormReadsStepAndLevelOfTheObject)
{
    CRampMask ramp(4, 3, 5, 33); // the times of printing are not read
    const CRanges table = BuiltRanges(21, [&](SCutTable* entries) {
        EXPECT_TRUE(ramp.m_mask.CreateCutTable_Smooth_3_ColorOneTimes(entries, 21));
    });
    EXPECT_EQ(table, OnceStyle1(21, 5, 33));
}

TEST(CutTableSmooth3, FamilyChoosesByTheTimesOfPrinting)
{
    const CLogCapture log;
    for (int times = 1; times <= 4; ++times) {
        CRampMask ramp(4, times, 5, 100);
        const CRanges table = BuiltRanges(
            22, [&](SCutTable* entries) { EXPECT_TRUE(ramp.m_mask.CreateCutTable_Smooth_3(entries, 22)); });
        EXPECT_EQ(table, times == 1 ? OnceStyle1(22, 5, 100) : MultipleStyle2(22, times, 5, 100)) << times;
    }
    EXPECT_TRUE(log.Records().empty());
}

// ---- colour several times, style 1

TEST(CutTableSmooth3Groups, TwoHardZonesStandInFrontOfTheRamp)
{
    const CRanges table = MultipleStyle1(10, 4, 2, 2, 100);
    EXPECT_EQ(RowsFrom(table, 0, 4), (CRanges{{0, 32767}, {0, 32767}, {32767, 65535}, {32767, 65535}}));
    EXPECT_EQ(RowsFrom(table, 4, 6), SixRows());
}

TEST(CutTableSmooth3Groups, EveryGroupTilesTheScaleAndTheRampItsLevel)
{
    for (int passes = 1; passes <= 9; ++passes) {
        for (int times = 1; times <= passes + 1; ++times) {
            for (const int step : {1, 2, 3, 7}) {
                for (const int extra : {0, 1, step, 2 * step + 1}) {
                    for (const int percent : SMOOTH_3_LEVEL_PERCENTS) {
                        const int n = passes * step + extra;
                        SCOPED_TRACE(testing::Message()
                                     << passes << " passes, " << times << " times, step " << step << ", " << n
                                     << " rows, level " << percent << '%');
                        const CRanges table = MultipleStyle1(n, passes, times, step, percent);
                        const int groupRows = passes / times * step;
                        for (int group = 0; groupRows > 0 && group < times - 1; ++group) {
                            const CRanges rows = RowsFrom(table, group * groupRows, groupRows);
                            ASSERT_EQ(rows, PassZones(passes / times, step));
                            for (int first = 0; first < step; ++first)
                                ASSERT_TRUE(Tiles(RowsOneStepApart(rows, first, step), 65535));
                        }
                        const int rampRows = n - (times - 1) * groupRows;
                        const CRanges ramp = RowsFrom(table, n - rampRows, rampRows);
                        ASSERT_EQ(ramp, OnceStyle1(rampRows, step, percent));
                        for (int first = 0; first < step; ++first)
                            ASSERT_TRUE(Tiles(RowsOneStepApart(ramp, first, step), percent * 65535 / 100));
                    }
                }
            }
        }
    }
}

TEST(CutTableSmooth3Groups, PrintedOnceIsTheRampAlone)
{
    EXPECT_EQ(MultipleStyle1(23, 4, 1, 5, 99), OnceStyle1(23, 5, 99));
}

// ---- colour once, style 2

TEST(CutTableSmooth3Zones, EightyRowsInStepsOfThirtyAsWorkedByHand)
{
    // Two zones of 30 rows and 20 rows left over: the first 20 rows of a zone have three rows per image row.
    const CRanges thirds = {{0, 21845}, {21845, 43690}, {43690, 65535}};
    const CRanges halves = {{0, 32767}, {32767, 65535}};
    const CRanges table = OnceStyle2(80, 30);
    for (std::size_t row = 0; row < 80; ++row)
        EXPECT_EQ(table[row], row % 30 < 20 ? thirds[row / 30] : halves[row / 30]) << row;
}

TEST(CutTableSmooth3Zones, RowsOfEveryImageRowShareTheScaleInOrder)
{
    for (int step = 1; step <= 30; ++step) {
        for (int n = 0; n <= 80; ++n) {
            SCOPED_TRACE(testing::Message() << n << " rows in steps of " << step);
            const CRanges table = OnceStyle2(n, step);
            ASSERT_EQ(std::count(table.begin(), table.end(), UNWRITTEN), 0);
            for (int first = 0; first < std::min(step, n); ++first) {
                const CRanges rows = RowsOneStepApart(table, first, step);
                ASSERT_TRUE(Tiles(rows, 65535)) << "from row " << first;
                // as many equal shares as rows print this image row, from the bottom of the scale up
                ASSERT_EQ(rows, PassZones(static_cast<int>(rows.size()), 1)) << "from row " << first;
            }
        }
    }
}

TEST(CutTableSmooth3Zones, IsTheHardEdgedTableForAMultipleOfTheStep)
{
    for (int step = 1; step <= 30; ++step)
        for (int passes = 1; passes <= 12; ++passes)
            EXPECT_EQ(OnceStyle2(passes * step, step), PassZones(passes, step))
                << passes << " times " << step;
}

TEST(CutTableSmooth3Zones, ABandShorterThanItsStepIsPrintedWhole)
{
    for (int n = 1; n < 20; ++n)
        EXPECT_EQ(OnceStyle2(n, 20), CRanges(static_cast<std::size_t>(n), SRange{0, 65535})) << n;
}

TEST(CutTableSmooth3Zones, SaysNothingOnAGoodPath)
{
    const CLogCapture log;
    OnceStyle2(77, 13);
    MultipleStyle1(40, 5, 2, 6, 50);
    MultipleStyle2(40, 3, 6, 50);
    EXPECT_TRUE(log.Records().empty());
}
