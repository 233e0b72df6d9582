#include "dotweave/maskdata_base.h"

#include "cuttablebuilders.h"
#include "cuttables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>

namespace {

constexpr int LEVEL_PERCENTS[] = {0, 1, 33, 50, 99, 100};

/// Six rows that slide down the scale two by two, in fifths.
const CRanges SIX_ROWS = {{52428, 65535}, {39321, 65535}, {26214, 52428},
                          {13107, 39321}, {0, 26214},     {0, 13107}};

} // namespace

// ---- printed once, style 1

TEST(CutTableSmooth3, SixRowsAsWorkedByHand)
{
    EXPECT_EQ(OnceStyle1(6, 2, 100), SIX_ROWS);
    EXPECT_EQ(
        OnceStyle1(6, 2, 50),
        (CRanges{{26213, 32767}, {19660, 32767}, {13106, 26213}, {6553, 19660}, {0, 13106}, {0, 6553}}));
}

TEST(CutTableSmooth3, RowsOneStepApartTileTheLevel)
{
    for (int step = 1; step <= 24; ++step)
        for (int rows = 0; rows <= 5 * step; ++rows)
            for (const int percent : LEVEL_PERCENTS) {
                SCOPED_TRACE(testing::Message() << rows << " rows, step " << step << ", " << percent << '%');
                const CRanges table = OnceStyle1(rows, step, percent);
                ASSERT_EQ(table, RampByFormula(rows, step, percent * 65535 / 100));
                for (int first = 0; first < std::min(step, rows); ++first)
                    ASSERT_TRUE(Tiles(RowsOneStepApart(table, first, step), percent * 65535 / 100)) << first;
            }
}

TEST(CutTableSmooth3, LevelIsAPercentage)
{
    for (int percent = 0; percent <= 100; ++percent)
        EXPECT_EQ(OnceStyle1(1, 1, percent), (CRanges{{0, percent * 65535 / 100}}));
}

// ---- printed several times, style 1

TEST(CutTableSmooth3Groups, HardGroupsPrecedeTheRamp)
{
    const CRanges table = MultipleStyle1(10, 4, 2, 2, 100);
    EXPECT_EQ(RowsFrom(table, 0, 4), (CRanges{{0, 32767}, {0, 32767}, {32767, 65535}, {32767, 65535}}));
    EXPECT_EQ(RowsFrom(table, 4, 6), SIX_ROWS);
    for (int passes = 1; passes <= 9; ++passes)
        for (int times = 1; times <= passes + 1; ++times)
            for (const int step : {1, 2, 3, 7})
                for (const int extra : {0, 1, step, 2 * step + 1})
                    for (const int percent : LEVEL_PERCENTS) {
                        const int rows = passes * step + extra;
                        const int groupPasses = passes / times;
                        CRanges expected;
                        for (int group = 0; group < times - 1; ++group)
                            for (const SRange& range : PassZones(groupPasses, step))
                                expected.push_back(range);
                        for (const SRange& range : RampByFormula(rows - (times - 1) * groupPasses * step,
                                                                 step, percent * 65535 / 100))
                            expected.push_back(range);
                        ASSERT_EQ(MultipleStyle1(rows, passes, times, step, percent), expected)
                            << passes << " passes, " << times << " times, step " << step << ", " << rows
                            << " rows, level " << percent << '%';
                    }
}

// ---- printed once, style 2

TEST(CutTableSmooth3Zones, EightyRowsAsWorkedByHand)
{
    // Two zones of 30 rows and 20 rows left over: the first 20 rows of a zone have three rows per image row.
    const CRanges thirds = {{0, 21845}, {21845, 43690}, {43690, 65535}};
    const CRanges halves = {{0, 32767}, {32767, 65535}};
    const CRanges table = OnceStyle2(80, 30);
    for (std::size_t row = 0; row < 80; ++row)
        EXPECT_EQ(table[row], row % 30 < 20 ? thirds[row / 30] : halves[row / 30]) << row;
}

TEST(CutTableSmooth3Zones, ImageRowsShareTheScale)
{
    for (int step = 1; step <= 30; ++step)
        for (int rows = 0; rows <= 12 * step && rows <= 120; ++rows) {
            const CRanges table = OnceStyle2(rows, step);
            for (int first = 0; first < std::min(step, rows); ++first) {
                const CRanges shares = RowsOneStepApart(table, first, step);
                ASSERT_EQ(shares, PassZones(static_cast<int>(shares.size()), 1))
                    << rows << " rows in steps of " << step << ", from row " << first;
            }
        }
}

// ---- printed several times, style 2

TEST(CutTableSmooth3Widened, RowsAsWorkedByHand)
{
    EXPECT_EQ(MultipleStyle2(6, 2, 2, 100),
              (CRanges{{39321, 65535}, {13107, 65535}, {13107, 65535}, {0, 52428}, {0, 52428}, {0, 26214}}));
    EXPECT_EQ(MultipleStyle2(6, 5, 2, 100), CRanges(6, SRange{0, 65535})); // 13107 * 5 is the whole scale
    EXPECT_EQ(MultipleStyle2(6, 32768, 2, 100), CRanges(6, SRange{0, 65535}));
    // (26213, 32767] twice as wide around 29490 rises above the level of the ramp
    EXPECT_EQ(MultipleStyle2(6, 2, 2, 50).front(), (SRange{22936, 36044}));
    // Row 5 of 11 prints (26214, 39321], centre 32767. Three times its width is 39321: down from 32767 +
    // 19660. Up from 32767 - 19660 it would be (13107, 52428].
    EXPECT_EQ(MultipleStyle2(11, 3, 2, 100)[5], (SRange{13106, 52427}));
}

TEST(CutTableSmooth3Widened, IsTheRampWidenedRowByRow)
{
    std::set<EPlace> places;
    std::set<int> centres;
    for (const int percent : {0, 1, 33, 50, 75, 99, 100})
        for (int rows = 1; rows <= 48; ++rows)
            for (int step = 1; step <= rows; step += 1 + step / 4) {
                const CRanges ramp = OnceStyle1(rows, step, percent);
                for (int times = 0; times <= 8; ++times) {
                    const CRanges table = MultipleStyle2(rows, times, step, percent);
                    for (std::size_t row = 0; row < table.size(); ++row) {
                        const SWidened expected = WidenedByHand(ramp[row], times);
                        ASSERT_EQ(table[row], expected.range)
                            << ramp[row] << " widened " << times << " times";
                        places.insert(expected.place);
                        centres.insert((ramp[row].lower + ramp[row].upper) / 2);
                    }
                }
            }
    EXPECT_EQ(places.size(), 5U) << "the sweep must meet every way a range can take its place";
    EXPECT_EQ(centres.count(32766) + centres.count(32767), 2U) << "and both sides of the middle";
}
