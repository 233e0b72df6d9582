#include "dotweave/maskdata_base.h"

#include "cuttables.h"
#include "logcapture.h"
#include "smooth2tables.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

/// Six rows that slide down the scale two by two, in fifths.
CRanges SixRows()
{
    return {{52428, 65535}, {39321, 65535}, {26214, 52428}, {13107, 39321}, {0, 26214}, {0, 13107}};
}

} // namespace

TEST(CutTableSmooth2, SixFeatherRowsInZonesOfTwoShareTheScaleInFifths)
{
    EXPECT_EQ(CZonedMask(2, 1, 2, 0).Feather(), SixRows());
}

TEST(CutTableSmooth2, LaysFeatherZonesAroundThePassZones)
{
    EXPECT_EQ(CZonedMask(2, 1, 2, 1).Whole(), (CRanges{SixRows()[0],
                                                       SixRows()[1],
                                                       {0, 32767},
                                                       SixRows()[2],
                                                       SixRows()[3],
                                                       {32767, 65535},
                                                       SixRows()[4],
                                                       SixRows()[5]}));
}

TEST(CutTableSmooth2, FeatherRowsOfOneOffsetTileTheWholeScale)
{
    for (int basePass = 1; basePass <= 8; ++basePass) {
        for (int feather = 1; feather <= 24; ++feather) {
            CZonedMask zoned(basePass, 1, feather, 0);
            const CRanges rows = zoned.Feather();
            for (int first = 0; first < feather; ++first)
                ASSERT_TRUE(Tiles(RowsOneStepApart(rows, first, feather), 65535))
                    << basePass << " passes, " << feather << " feather rows, from row " << first;
        }
    }
}

TEST(CutTableSmooth2, FeatherRowsHaveTheBoundsOfTheLinearFormula)
{
    for (int basePass = 1; basePass <= 6; ++basePass) {
        for (int feather = 1; feather <= 24; ++feather) {
            EXPECT_EQ(CZonedMask(basePass, 1, feather, 3).Feather(),
                      RampByFormula((basePass + 1) * feather, feather, 65535))
                << basePass << ", " << feather;
        }
    }
}

TEST(CutTableSmooth2, AFeatherTableOfOneZoneIsPrintedWhole)
{
    CZonedMask zoned(1, 1, 5, 0);
    const CRanges rows = BuiltRanges(
        5, [&](SCutTable* table) { EXPECT_TRUE(zoned.m_mask.CreateCutTable_Smooth_2_Feather(table, 5)); });
    EXPECT_EQ(rows, CRanges(5, SRange{0, 65535}));
}

TEST(CutTableSmooth2, EveryImageRowIsPrintedOnceByTheRowsOneStepApart)
{
    for (int basePass = 1; basePass <= 6; ++basePass) {
        for (int step = 1; step <= 24; ++step) {
            for (int feather = 0; feather <= step; ++feather) {
                SCOPED_TRACE(testing::Message()
                             << basePass << " passes, step " << step << ", feather zone " << feather);
                const CRanges table = CZonedMask(basePass, 1, feather, step - feather).Whole();
                ASSERT_EQ(table.size(), static_cast<std::size_t>(basePass * step + feather));
                for (int first = 0; first < step; ++first) {
                    const CRanges rows = RowsOneStepApart(table, first, step);
                    ASSERT_EQ(rows.size(), static_cast<std::size_t>(basePass + (first < feather ? 1 : 0)));
                    ASSERT_TRUE(Tiles(rows, 65535)) << "from row " << first;
                }
            }
        }
    }
}

TEST(CutTableSmooth2, ReadsZonesInTheOrderInWhichTheyLieOnTheHead)
{
    for (int basePass = 1; basePass <= 5; ++basePass) {
        for (int times = 1; times <= basePass; ++times) {
            constexpr int FEATHER = 3;
            constexpr int PASS = 4;
            CZonedMask zoned(basePass, times, FEATHER, PASS);
            const CRanges pass = zoned.Pass();
            const CRanges feather = zoned.Feather();
            CRanges expected;
            const auto append = [&](const CRanges& rows) {
                expected.insert(expected.end(), rows.begin(), rows.end());
            };
            for (int zone = 0; zone < basePass; ++zone) {
                append(RowsFrom(feather, zone * FEATHER, FEATHER));
                append(RowsFrom(pass, zone * PASS, PASS));
            }
            append(RowsFrom(feather, basePass * FEATHER, FEATHER));
            EXPECT_EQ(zoned.Whole(), expected) << basePass << " passes, " << times << " times";
        }
    }
}

TEST(CutTableSmooth2, IsTheHardEdgedTableWithoutFeatherRows)
{
    for (int basePass = 1; basePass <= 12; ++basePass)
        for (int times = 1; times <= basePass; ++times)
            for (const int rows : {1, 2, 7})
                EXPECT_EQ(CZonedMask(basePass, times, 0, rows).Whole(), HardZones(basePass, times, rows))
                    << basePass << " passes of " << rows << " rows, " << times << " times";
}

TEST(CutTableSmooth2, IsAllFeatherWithoutPassRows)
{
    for (int basePass = 1; basePass <= 6; ++basePass) {
        CZonedMask zoned(basePass, 1, 8, 0);
        EXPECT_EQ(zoned.Whole(), zoned.Feather()) << basePass;
    }
}

TEST(CutTableSmooth2, PassZonesPrintedOnceSplitTheScaleOnce)
{
    EXPECT_EQ(CZonedMask(4, 1, 5, 2).Pass(), (CRanges{{0, 16383},
                                                      {0, 16383},
                                                      {16383, 32767},
                                                      {16383, 32767},
                                                      {32767, 49151},
                                                      {32767, 49151},
                                                      {49151, 65535},
                                                      {49151, 65535}}));
    for (int basePass = 1; basePass <= 30; ++basePass)
        EXPECT_EQ(CZonedMask(basePass, 1, 2, 3).Pass(), PassZones(basePass, 3)) << basePass;
}

TEST(CutTableSmooth2, PassZonesPrintedSeveralTimesFormGroups)
{
    EXPECT_EQ(CZonedMask(5, 2, 6, 1).Pass(),
              (CRanges{{0, 32767}, {32767, 65535}, {0, 21845}, {21845, 43690}, {43690, 65535}}));
    for (int basePass = 1; basePass <= 24; ++basePass) {
        for (int times = 2; times <= basePass; ++times) {
            SCOPED_TRACE(testing::Message() << basePass << " passes, " << times << " times");
            constexpr int ROWS = 2;
            const CRanges pass = CZonedMask(basePass, times, 1, ROWS).Pass();
            const int groupSize = basePass / times;
            for (int group = 0; group < times; ++group) {
                const int first = group * groupSize;
                const int end = group == times - 1 ? basePass : first + groupSize;
                const CRanges zones = RowsFrom(pass, first * ROWS, (end - first) * ROWS);
                for (int row = 0; row < ROWS; ++row)
                    ASSERT_TRUE(Tiles(RowsOneStepApart(zones, row, ROWS), 65535)) << "group " << group;
            }
        }
    }
}

TEST(CutTableSmooth2, BothPassBuildersCanBeCalledByName)
{
    for (const int times : {1, 2}) { // the forms do not look at the choice that the family makes
        CZonedMask zoned(4, times, 1, 1);
        const CRanges once = BuiltRanges(4, [&](SCutTable* table) {
            EXPECT_TRUE(zoned.m_mask.CreateCutTable_Smooth_2_Pass_ColorOneTimes(table));
        });
        EXPECT_EQ(once, PassZones(4, 1));
        const CRanges several = BuiltRanges(4, [&](SCutTable* table) {
            EXPECT_TRUE(zoned.m_mask.CreateCutTable_Smooth_2_Pass_ColorMultipleTimes(table));
        });
        EXPECT_EQ(several, HardZones(4, times, 1));
    }
}

TEST(CutTableSmooth2, SeveralTimesOfOneAreTheColourOnceTableWithoutARecord)
{
    const CLogCapture log;
    CZonedMask zoned(7, 1, 2, 3);
    const CRanges table = BuiltRanges(21, [&](SCutTable* entries) {
        EXPECT_TRUE(zoned.m_mask.CreateCutTable_Smooth_2_Pass_ColorMultipleTimes(entries));
    });
    EXPECT_EQ(table, PassZones(7, 3));
    EXPECT_TRUE(log.Records().empty());
}

TEST(CutTableSmooth2, MoreTimesThanPassesAreTheColourOnceTable)
{
    EXPECT_EQ(CZonedMask(3, 4, 1, 2).Pass(), PassZones(3, 2));
}

TEST(CutTableSmooth2, FeatherZonesArePrintedOnceHoweverOftenThePassesAre)
{
    for (int times = 1; times <= 6; ++times)
        EXPECT_EQ(CZonedMask(6, times, 4, 2).Feather(), CZonedMask(6, 1, 4, 2).Feather()) << times;
}

TEST(CutTableSmooth2, DoesNotReadTheCount)
{
    CZonedMask zoned(3, 2, 4, 5);
    const CRanges expected = zoned.Whole(31);
    const CRanges expectedPass = zoned.Pass(15);
    for (const int count : {-5, 0, 1, 30, 1000000}) {
        EXPECT_EQ(zoned.Whole(count), expected) << count;
        EXPECT_EQ(zoned.Pass(count), expectedPass) << count;
    }
}
