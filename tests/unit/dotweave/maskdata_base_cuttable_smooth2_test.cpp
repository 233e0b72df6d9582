#include "dotweave/maskdata_base.h"

#include "cuttablebuilders.h"
#include "cuttables.h"

#include <gtest/gtest.h>

#include <cstddef>

TEST(CutTableSmooth2, TwoPassesAsWorkedByHand)
{
    // six feather rows in fifths of the scale, around two pass rows
    EXPECT_EQ(CZonedMask(2, 1, 2, 1).Whole(), (CRanges{{52428, 65535},
                                                       {39321, 65535},
                                                       {0, 32767},
                                                       {26214, 52428},
                                                       {13107, 39321},
                                                       {32767, 65535},
                                                       {0, 26214},
                                                       {0, 13107}}));
}

TEST(CutTableSmooth2, EveryImageRowIsPrintedOnce)
{
    for (int passes = 1; passes <= 6; ++passes)
        for (int step = 1; step <= 24; ++step)
            for (int feather = 0; feather <= step; ++feather) {
                SCOPED_TRACE(testing::Message() << passes << " passes, zones " << feather << " of " << step);
                const CRanges table = CZonedMask(passes, 1, feather, step - feather).Whole();
                ASSERT_EQ(table, Smooth2Zones(passes, 1, feather, step - feather));
                for (int first = 0; first < step; ++first) {
                    const CRanges rows = RowsOneStepApart(table, first, step);
                    ASSERT_EQ(rows.size(), static_cast<std::size_t>(passes + (first < feather ? 1 : 0)));
                    ASSERT_TRUE(Tiles(rows, 65535)) << "from row " << first;
                }
            }
}

TEST(CutTableSmooth2, OnlyPassZonesFormGroups)
{
    for (int passes = 1; passes <= 24; ++passes)
        for (int times = 1; times <= passes + 1; ++times) {
            SCOPED_TRACE(testing::Message() << passes << " passes, " << times << " times");
            const int count = times % 2 == 0 ? -5 : 1000000; // nobody reads it
            const CZonedMask zoned(passes, times, 3, 4);
            EXPECT_EQ(zoned.Whole(count), Smooth2Zones(passes, times, 3, 4));
            EXPECT_EQ(zoned.Pass(count), HardZones(passes, times, 4));
            EXPECT_EQ(zoned.Feather(), RampByFormula((passes + 1) * 3, 3, 65535));
            EXPECT_EQ(CZonedMask(passes, times, 0, 2).Whole(count),
                      HardZones(passes, times, 2)); // no feather rows
        }
}

TEST(CutTableSmooth2, OneFeatherZoneIsPrintedWhole)
{
    EXPECT_EQ(Table_Of({.featherRows = 5}, 5, &CMaskData_Base::CreateCutTable_Smooth_2_Feather, 5),
              CRanges(5, SRange{0, 65535}));
}

TEST(CutTableSmooth2, NamedPassBuildersDoNotChoose)
{
    for (const int times : {1, 2}) {
        CMaskData_Base mask;
        Band_Set(mask, {.basePass = 4, .colorTimes = times, .passRows = 3});
        EXPECT_EQ(BuiltRanges(12,
                              [&](SCutTable* table) {
                                  EXPECT_TRUE(mask.CreateCutTable_Smooth_2_Pass_ColorOneTimes(table));
                              }),
                  PassZones(4, 3));
        EXPECT_EQ(BuiltRanges(12,
                              [&](SCutTable* table) {
                                  EXPECT_TRUE(mask.CreateCutTable_Smooth_2_Pass_ColorMultipleTimes(table));
                              }),
                  HardZones(4, times, 3));
    }
}
