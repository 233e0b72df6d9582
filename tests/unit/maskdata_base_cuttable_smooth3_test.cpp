#include "dotweave/maskdata_base.h"

#include "cuttables.h"
#include "logcapture.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

namespace {

constexpr int LEVEL_PERCENTS[] = {0, 1, 33, 50, 99, 100};

/// A mask object of which only the numbers are set that the smooth-3 builders read.
class CRampMask {
public:
    CRampMask(int basePass, int colorTimes, int stepRows, int levelPercent)
    {
        SMaskData_Base_Peek peek = {m_mask};
        peek.Current().basePass = basePass;
        peek.Current().colorTimes = colorTimes;
        peek.Current().featherLevelPercent = levelPercent;
        peek.StepHeight_NoneRes() = stepRows;
    }
    CMaskData_Base m_mask;
};

CRanges OnceStyle1(int n, int stepRows, int levelPercent)
{
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(
            CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_1(table, n, stepRows, levelPercent));
    });
}

CRanges OnceStyle2(int n, int stepRows)
{
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_2(table, n, stepRows));
    });
}

CRanges MultipleStyle1(int n, int basePass, int colorTimes, int stepRows, int levelPercent)
{
    CRampMask ramp(basePass, colorTimes, stepRows, levelPercent);
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(ramp.m_mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(table, n));
    });
}

CRanges MultipleStyle2(int n, int colorTimes, int stepRows, int levelPercent)
{
    CRampMask ramp(4, colorTimes, stepRows, levelPercent);
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(ramp.m_mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(table, n));
    });
}

/// How a range takes its new place when it is widened.
enum class EPlace { Whole, PushedUp, CentredLow, CentredHigh, PushedDown };

struct SWidened {
    SRange range;
    EPlace place;
};

/// The widening on paper: the new width around the old centre, moved back onto the scale at either end. Both
/// halves are rounded down; from 32767 on the range hangs from its upper bound, below it stands on the lower.
SWidened WidenedByHand(const SRange& range, int times)
{
    const int width = (range.upper - range.lower) * times;
    if (width >= 65535)
        return {{0, 65535}, EPlace::Whole};
    const int centre = (range.lower + range.upper) / 2;
    if (centre >= 32767) {
        const int upper = centre + width / 2;
        if (upper > 65535)
            return {{65535 - width, 65535}, EPlace::PushedDown};
        return {{upper - width, upper}, EPlace::CentredHigh};
    }
    const int lower = centre - width / 2;
    if (lower < 0)
        return {{0, width}, EPlace::PushedUp};
    return {{lower, lower + width}, EPlace::CentredLow};
}

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
            for (const int percent : LEVEL_PERCENTS) {
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
        for (const int percent : LEVEL_PERCENTS)
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

// ---- colour several times, style 2

TEST(CutTableSmooth3Widened, SixRowsPrintedTwiceAsWorkedByHand)
{
    EXPECT_EQ(MultipleStyle2(6, 2, 2, 100),
              (CRanges{{39321, 65535}, {13107, 65535}, {13107, 65535}, {0, 52428}, {0, 52428}, {0, 26214}}));
}

TEST(CutTableSmooth3Widened, CountsTheMiddleOfTheScaleToTheUpperHalf)
{
    // Row 5 of 11 prints (26214, 39321], centre 32767. Three times its width is 39321: hung from
    // 32767 + 19660. Standing on 32767 - 19660 it would be (13107, 52428].
    ASSERT_EQ(OnceStyle1(11, 2, 100)[5], (SRange{26214, 39321}));
    EXPECT_EQ(MultipleStyle2(11, 3, 2, 100)[5], (SRange{13106, 52427}));
}

TEST(CutTableSmooth3Widened, IsTheRampWidenedRowByRow)
{
    std::set<EPlace> places;
    std::set<std::pair<int, int>> seen;
    for (const int percent : {0, 1, 33, 50, 75, 99, 100}) {
        for (int rows = 1; rows <= 48; ++rows) {
            for (int step = 1; step <= rows; step += 1 + step / 4) {
                const CRanges ramp = OnceStyle1(rows, step, percent);
                for (const SRange& range : ramp)
                    seen.emplace(range.lower, range.upper);
                for (int times = 1; times <= 8; ++times) {
                    const CRanges table = MultipleStyle2(rows, times, step, percent);
                    for (std::size_t row = 0; row < table.size(); ++row) {
                        const SWidened expected = WidenedByHand(ramp[row], times);
                        ASSERT_EQ(table[row], expected.range)
                            << ramp[row] << " widened " << times << " times";
                        places.insert(expected.place);
                    }
                }
            }
        }
    }
    std::set<int> centres;
    for (const auto& [lower, upper] : seen)
        centres.insert((lower + upper) / 2);
    EXPECT_EQ(places.size(), 5U) << "the sweep must meet every way a range can take its place";
    EXPECT_GT(seen.size(), 5000U);
    EXPECT_EQ(centres.count(32766) + centres.count(32767), 2U) << "and both sides of the middle";
}

TEST(CutTableSmooth3Widened, KeepsItsWidthAndStaysCentredWhereItCan)
{
    for (const int percent : LEVEL_PERCENTS) {
        for (int step = 1; step <= 24; ++step) {
            for (int rows = step; rows <= 5 * step; rows += 1 + step / 3) {
                const CRanges ramp = OnceStyle1(rows, step, percent);
                for (int times = 2; times <= 8; ++times) {
                    const CRanges table = MultipleStyle2(rows, times, step, percent);
                    for (std::size_t row = 0; row < table.size(); ++row) {
                        const SRange& wide = table[row];
                        ASSERT_EQ(wide.upper - wide.lower,
                                  std::min((ramp[row].upper - ramp[row].lower) * times, 65535))
                            << ramp[row] << " -> " << wide;
                        // twice the distance of the centres: rounding, or a push away from an end of the
                        // scale
                        const int drift = wide.lower + wide.upper - ramp[row].lower - ramp[row].upper;
                        const int least = wide.upper < 65535 ? -2 : -65535;
                        const int most = wide.lower > 0 ? 2 : 65535;
                        ASSERT_GE(drift, least) << ramp[row] << " -> " << wide;
                        ASSERT_LE(drift, most) << ramp[row] << " -> " << wide;
                    }
                }
            }
        }
    }
}

TEST(CutTableSmooth3Widened, PrintedOnceKeepsEveryRangeButForTheRoundingAboveTheMiddle)
{
    // With a factor of one only rounding is left. Below the middle a range stands on its own lower bound.
    // Above it, a range of an odd width loses a half twice, in the centre and in the half width, and so hangs
    // one lower.
    for (int step = 1; step <= 24; ++step) {
        for (int rows = step; rows <= 5 * step; ++rows) {
            for (const int percent : LEVEL_PERCENTS) {
                const CRanges ramp = OnceStyle1(rows, step, percent);
                const CRanges table = MultipleStyle2(rows, 1, step, percent);
                for (std::size_t row = 0; row < table.size(); ++row) {
                    const auto [lower, upper] = ramp[row];
                    const bool isLowered =
                        upper - lower < 65535 && (upper - lower) % 2 == 1 && (lower + upper) / 2 >= 32767;
                    const SRange expected = isLowered ? SRange{lower - 1, upper - 1} : ramp[row];
                    ASSERT_EQ(table[row], expected) << ramp[row];
                }
            }
        }
    }
}

TEST(CutTableSmooth3Widened, PrintsEverythingOnceTheWidthReachesTheScale)
{
    EXPECT_EQ(MultipleStyle2(6, 5, 2, 100), CRanges(6, SRange{0, 65535})); // 13107 * 5 is the whole scale
    EXPECT_EQ(MultipleStyle2(6, 32768, 2, 100), CRanges(6, SRange{0, 65535}));
    EXPECT_EQ(MultipleStyle2(3, 1, 3, 100), CRanges(3, SRange{0, 65535}));
}

TEST(CutTableSmooth3Widened, MayPrintAboveTheLevelOfTheRamp)
{
    // (26213, 32767] twice as wide around 29490
    EXPECT_EQ(MultipleStyle2(6, 2, 2, 50).front(), (SRange{22936, 36044}));
}

TEST(CutTableSmooth3Widened, PrintsNothingAtLevelZero)
{
    for (const SRange& range : MultipleStyle2(12, 3, 4, 0))
        EXPECT_EQ(range, (SRange{0, 0}));
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
                    for (const int percent : LEVEL_PERCENTS) {
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
