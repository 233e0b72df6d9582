#include "dotweave/maskdata_base.h"

#include "cuttablebuilders.h"
#include "cuttables.h"
#include "logcapture.h"
#include "logscopes.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

TEST(CutTableFeatherNone, ZonesAsWorkedByHand)
{
    EXPECT_EQ(OneTimes(4, 1, 4), (CRanges{{0, 16383}, {16383, 32767}, {32767, 49151}, {49151, 65535}}));
    EXPECT_EQ(MultipleTimes(4, 2, 1), (CRanges{{0, 32767}, {32767, 65535}, {0, 32767}, {32767, 65535}}));
    EXPECT_EQ(MultipleTimes(5, 2, 1),
              (CRanges{{0, 32767}, {32767, 65535}, {0, 21845}, {21845, 43690}, {43690, 65535}}));
}

TEST(CutTableFeatherNone, RowsOneStepApartTileTheScale)
{
    for (int passes = 1; passes <= 60; ++passes)
        for (int step = 1; step <= 24; ++step) {
            SCOPED_TRACE(testing::Message() << passes << " passes, step " << step);
            const CRanges table =
                OneTimes(passes, step, passes % 2 == 0 ? -step : 1000000); // a count that nobody reads
            ASSERT_EQ(table, PassZones(passes, step));
            for (int first = 0; first < step; ++first)
                ASSERT_TRUE(Tiles(RowsOneStepApart(table, first, step), 65535)) << "from row " << first;
        }
}

TEST(CutTableFeatherNone, GroupsOfPassesTileTheScaleEach)
{
    // Printed more often than there are passes, the last group takes them all.
    for (int passes = 1; passes <= 24; ++passes)
        for (int times = 2; times <= passes + 2; ++times)
            for (const int step : {1, 2, 5})
                ASSERT_EQ(MultipleTimes(passes, times, step), HardZones(passes, times, step))
                    << passes << " passes, " << times << " times, step " << step;
}

TEST(CutTableFeatherNone, WritesNoRowBeyondItsPasses)
{
    for (const int passes : {-4, 0, 1, 5}) {
        const CRanges table = BuiltRanges(20, [&](SCutTable* entries) {
            EXPECT_TRUE(CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes(entries, 20, 3, passes));
        });
        CRanges expected = PassZones(passes, 3);
        expected.resize(20, UNWRITTEN);
        EXPECT_EQ(table, expected) << passes;
    }
}

TEST(CutTableFeatherNone, MemberFormReadsTheObject)
{
    EXPECT_EQ(Table_Of({.basePass = 5, .colorTimes = 3, .stepRows = 7}, 35,
                       &CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes, 1),
              PassZones(5, 7));
}

TEST(CutTableFeatherNone, SeveralTimesAreTwoOrMore)
{
    const SBuilt refused = {false, CRanges(8, UNWRITTEN), {Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)}};
    for (const int times : {1, 0, -1, std::numeric_limits<int>::min()})
        EXPECT_EQ(Table_Build({.basePass = 4, .colorTimes = times, .stepRows = 2}, 8,
                              &CMaskData_Base::CreateCutTable_FeatherNone_ColorMultipleTimes, 8),
                  refused)
            << times;
}
