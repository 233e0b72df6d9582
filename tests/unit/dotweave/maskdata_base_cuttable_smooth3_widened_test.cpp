#include "cuttables.h"
#include "smooth3tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

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
    for (const int percent : SMOOTH_3_LEVEL_PERCENTS) {
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
            for (const int percent : SMOOTH_3_LEVEL_PERCENTS) {
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
