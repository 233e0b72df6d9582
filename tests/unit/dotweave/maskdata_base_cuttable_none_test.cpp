#include "dotweave/maskdata_base.h"

#include "cuttables.h"
#include "hardtables.h"
#include "logcapture.h"
#include "logscopes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {} // namespace

TEST(CutTableFeatherNone, FourPassesOfTenRowsSplitTheScaleInQuarters)
{
    const CRanges table = OneTimes(4, 10, 40);
    const CRanges quarters = {{0, 16383}, {16383, 32767}, {32767, 49151}, {49151, 65535}};
    ASSERT_EQ(table.size(), 40U);
    for (std::size_t row = 0; row < 40; ++row)
        EXPECT_EQ(table[row], quarters[row / 10]) << row;
}

TEST(CutTableFeatherNone, RowsOneStepApartTileTheWholeScale)
{
    for (int passCount = 1; passCount <= 60; ++passCount) {
        for (int step = 1; step <= 24; ++step) {
            const CRanges table = OneTimes(passCount, step, passCount * step);
            for (int first = 0; first < step; ++first)
                ASSERT_TRUE(Tiles(RowsOneStepApart(table, first, step), 65535))
                    << passCount << " passes of " << step << " rows, from row " << first;
        }
    }
}

TEST(CutTableFeatherNone, PassBoundariesAreSumsOfWholeScales)
{
    for (int passCount = 1; passCount <= 200; ++passCount)
        EXPECT_EQ(OneTimes(passCount, 2, 0), PassZones(passCount, 2)) << passCount;
}

TEST(CutTableFeatherNone, DoesNotReadTheCount)
{
    for (const int count : {-1, 0, 1, 12, 1000000})
        EXPECT_EQ(OneTimes(3, 4, count), PassZones(3, 4)) << count;
}

TEST(CutTableFeatherNone, WritesNothingWithoutPassesAndStillSucceeds)
{
    for (const int passCount : {0, -1, -4}) {
        const CRanges table = BuiltRanges(8, [&](SCutTable* entries) {
            EXPECT_TRUE(CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes(entries, 8, 2, passCount));
        });
        EXPECT_EQ(table, CRanges(8, UNWRITTEN)) << passCount;
    }
}

TEST(CutTableFeatherNone, LeavesEntriesBehindThePassesAlone)
{
    const CRanges table = BuiltRanges(20, [](SCutTable* entries) {
        EXPECT_TRUE(CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes(entries, 20, 3, 5));
    });
    CRanges expected = PassZones(5, 3);
    expected.resize(20, UNWRITTEN);
    EXPECT_EQ(table, expected);
}

TEST(CutTableFeatherNone, MemberFormReadsStepAndPassesOfTheObject)
{
    CHardMask hard(5, 3, 7); // printed several times, which the colour-once form does not read
    const CRanges table = BuiltRanges(35, [&](SCutTable* entries) {
        EXPECT_TRUE(hard.m_mask.CreateCutTable_FeatherNone_ColorOneTimes(entries, 1));
    });
    EXPECT_EQ(table, PassZones(5, 7));
}

TEST(CutTableFeatherNone, FourPassesPrintedTwiceSplitTheScaleInHalvesTwice)
{
    EXPECT_EQ(MultipleTimes(4, 2, 1), (CRanges{{0, 32767}, {32767, 65535}, {0, 32767}, {32767, 65535}}));
}

TEST(CutTableFeatherNone, FivePassesPrintedTwiceGiveThreeToTheLastGroup)
{
    EXPECT_EQ(MultipleTimes(5, 2, 1),
              (CRanges{{0, 32767}, {32767, 65535}, {0, 21845}, {21845, 43690}, {43690, 65535}}));
}

TEST(CutTableFeatherNone, EveryGroupTilesTheWholeScaleOnItsOwn)
{
    for (int passes = 1; passes <= 24; ++passes) {
        for (int times = 2; times <= passes; ++times) {
            for (const int step : {1, 2, 5}) {
                SCOPED_TRACE(testing::Message() << passes << " passes, " << times << " times, step " << step);
                const CRanges table = MultipleTimes(passes, times, step);
                const int groupSize = passes / times;
                for (int group = 0; group < times; ++group) {
                    const int first = group * groupSize;
                    const int size = group == times - 1 ? passes - first : groupSize;
                    const CRanges zones = RowsFrom(table, first * step, size * step);
                    for (int row = 0; row < step; ++row)
                        ASSERT_TRUE(Tiles(RowsOneStepApart(zones, row, step), 65535)) << "group " << group;
                    ASSERT_EQ(zones, PassZones(size, step)) << "group " << group;
                }
            }
        }
    }
}

TEST(CutTableFeatherNone, MoreTimesThanPassesGiveTheColourOnceTable)
{
    for (int passes = 1; passes <= 12; ++passes)
        for (const int times : {passes + 1, passes + 2, 40})
            EXPECT_EQ(MultipleTimes(passes, times > 1 ? times : 2, 3), OneTimes(passes, 3, 0)) << passes;
}

TEST(CutTableFeatherNone, CannotBePrintedSeveralTimesLessThanTwice)
{
    for (const int times : {1, 0, -1, -7}) {
        const CLogCapture log;
        CHardMask hard(4, times, 2);
        const CRanges table = BuiltRanges(8, [&](SCutTable* entries) {
            EXPECT_FALSE(hard.m_mask.CreateCutTable_FeatherNone_ColorMultipleTimes(entries, 8));
        });
        EXPECT_EQ(table, CRanges(8, UNWRITTEN)) << times;
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>{Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)})
            << times;
    }
}

TEST(CutTableFeatherNone, FamilyChoosesByTheTimesOfPrinting)
{
    for (int times = 1; times <= 4; ++times) {
        const CLogCapture log;
        CHardMask hard(4, times, 3);
        const CRanges table = BuiltRanges(
            12, [&](SCutTable* entries) { EXPECT_TRUE(hard.m_mask.CreateCutTable_FeatherNone(entries, 2)); });
        EXPECT_EQ(table, times == 1 ? OneTimes(4, 3, 0) : MultipleTimes(4, times, 3)) << times;
        EXPECT_TRUE(log.Records().empty());
    }
}

TEST(CutTableFeatherNone, FamilyFailsWithTheRecordOfTheBuilder)
{
    for (const int times : {0, -2}) {
        const CLogCapture log;
        CHardMask hard(4, times, 2);
        const CRanges table = BuiltRanges(
            8, [&](SCutTable* entries) { EXPECT_FALSE(hard.m_mask.CreateCutTable_FeatherNone(entries, 8)); });
        EXPECT_EQ(table, CRanges(8, UNWRITTEN));
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>{Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)});
    }
}
