#include "dotweave/maskdata_base.h"

#include "cuttables.h"
#include "logcapture.h"
#include "logscopes.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace {

constexpr int STEP_ROWS = 5;
constexpr int PASSES = 4;
constexpr int FEATHER_ROWS = 2;
constexpr int LEVEL_PERCENT = 77;
constexpr int HARD_ROWS = PASSES * STEP_ROWS;                    // what the hard-edged table fills
constexpr int SMOOTH_2_ROWS = PASSES * STEP_ROWS + FEATHER_ROWS; // what the smooth-2 table fills

/// A mask object with a layout that every builder can fill, each with a table of its own.
CMaskData_Base Mask(int featherMode, int featherNozzleType, int colorTimes)
{
    CMaskData_Base mask; // copies share nothing: no step arrays, no mask bytes
    SMaskData_Base_Peek peek = {mask};
    peek.Current().featherMode = featherMode;
    peek.Current().featherNozzleType = featherNozzleType;
    peek.Current().colorTimes = colorTimes;
    peek.Current().basePass = PASSES;
    peek.Current().featherLevelPercent = LEVEL_PERCENT;
    peek.StepHeight_NoneRes() = STEP_ROWS;
    peek.MaskHeight_NoneRes() = SMOOTH_2_ROWS;
    peek.Smooth2FeatherHeight() = FEATHER_ROWS;
    peek.Smooth2FeatherHeightTotal() = FEATHER_ROWS * (PASSES + 1);
    peek.Smooth2PassHeight() = STEP_ROWS - FEATHER_ROWS;
    peek.Smooth2PassHeightTotal() = (STEP_ROWS - FEATHER_ROWS) * PASSES;
    return mask;
}

/// What the dispatcher leaves in a table of `rows` entries when it is told `count`.
struct SDispatch {
    bool isBuilt;
    CRanges ranges;
    std::vector<SLogRecord> records;
};

SDispatch Dispatch(CMaskData_Base mask, int rows, int count)
{
    const CLogCapture log;
    SDispatch result = {};
    result.ranges =
        BuiltRanges(rows, [&](SCutTable* table) { result.isBuilt = mask.CreateCutTable(table, count); });
    result.records = log.Records();
    return result;
}

/// A table of `rows` entries as one builder, called by name, leaves it.
template <typename TBuild>
CRanges By(CMaskData_Base mask, int rows, TBuild build)
{
    return BuiltRanges(rows, [&](SCutTable* table) { EXPECT_TRUE(build(mask, table)); });
}

SLogRecord Refusal(const std::string& member, int value)
{
    return {SCOPE_CUT_TABLE, "maskdata_base", LINE_ANY, 2,
            "m_maskParam_Current." + member + " = " + std::to_string(value)};
}

constexpr int INT_LOWEST = std::numeric_limits<int>::min();
constexpr int INT_HIGHEST = std::numeric_limits<int>::max();

} // namespace

static_assert(std::is_same_v<decltype(SCutTable::upperLimit), std::uint16_t>);
static_assert(std::is_same_v<decltype(SCutTable::lowerLimit), std::uint16_t>);

TEST(CutTableDispatch, HardEdgesPrintedOnceWhateverTheNozzleTypeIs)
{
    for (const int type : {1, 2, 3, 4, 0, 5, -1, INT_LOWEST, INT_HIGHEST}) {
        const SDispatch dispatch = Dispatch(Mask(0, type, 1), HARD_ROWS, HARD_ROWS);
        EXPECT_TRUE(dispatch.isBuilt) << type;
        EXPECT_EQ(dispatch.ranges, PassZones(PASSES, STEP_ROWS)) << type;
        EXPECT_TRUE(dispatch.records.empty()) << type;
    }
}

TEST(CutTableDispatch, HardEdgesPrintedSeveralTimesWhateverTheNozzleTypeIs)
{
    CRanges halvesTwice = PassZones(2, STEP_ROWS);
    for (const SRange& range : PassZones(2, STEP_ROWS))
        halvesTwice.push_back(range);
    for (const int type : {1, 2, 3, 4, 0, 5, -1}) {
        const SDispatch dispatch = Dispatch(Mask(0, type, 2), HARD_ROWS, HARD_ROWS);
        EXPECT_TRUE(dispatch.isBuilt) << type;
        EXPECT_EQ(dispatch.ranges, halvesTwice) << type;
        EXPECT_TRUE(dispatch.records.empty()) << type;
    }
}

TEST(CutTableDispatch, HardEdgesDoNotReadTheCount)
{
    for (const int times : {1, 2, 3}) {
        const SDispatch expected = Dispatch(Mask(0, 1, times), HARD_ROWS, HARD_ROWS);
        for (const int count : {INT_LOWEST, -1, 0, 1, 7, INT_HIGHEST})
            EXPECT_EQ(Dispatch(Mask(0, 1, times), HARD_ROWS, count).ranges, expected.ranges) << count;
    }
}

TEST(CutTableDispatch, HardEdgesPassOnTheFailureOfTheirBuilder)
{
    for (const int times : {0, -1, INT_LOWEST}) {
        const SDispatch dispatch = Dispatch(Mask(0, 1, times), HARD_ROWS, HARD_ROWS);
        EXPECT_FALSE(dispatch.isBuilt) << times;
        EXPECT_EQ(dispatch.records, std::vector<SLogRecord>{Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)})
            << times;
    }
}

TEST(CutTableDispatch, Smooth2BuildsZonesForAnyTimesOfPrintingAndAnyCount)
{
    for (const int times : {1, 2, 3, 4}) {
        const CRanges expected =
            By(Mask(1, 1, times), SMOOTH_2_ROWS, [](CMaskData_Base& mask, SCutTable* table) {
                return mask.CreateCutTable_Smooth_2(table, SMOOTH_2_ROWS);
            });
        EXPECT_EQ(expected[0].upper, 65535);        // feather zone 0 starts at the top of the scale
        EXPECT_EQ(expected[FEATHER_ROWS].lower, 0); // pass zone 0 at its bottom
        for (const int count : {SMOOTH_2_ROWS, 0, -3, INT_HIGHEST}) {
            const SDispatch dispatch = Dispatch(Mask(1, 1, times), SMOOTH_2_ROWS, count);
            EXPECT_TRUE(dispatch.isBuilt);
            EXPECT_EQ(dispatch.ranges, expected) << times << " times, count " << count;
            EXPECT_TRUE(dispatch.records.empty());
        }
    }
}

TEST(CutTableDispatch, Smooth3PrintedOnceRampsOverAsManyRowsAsItIsTold)
{
    for (const int type : {2, 3}) {
        for (const int count : {STEP_ROWS, STEP_ROWS + 1, SMOOTH_2_ROWS, 40}) {
            const SDispatch dispatch = Dispatch(Mask(1, type, 1), count, count);
            EXPECT_TRUE(dispatch.isBuilt);
            EXPECT_TRUE(dispatch.records.empty());
            EXPECT_EQ(dispatch.ranges, By(Mask(1, type, 1), count, [&](CMaskData_Base&, SCutTable* table) {
                          return CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_1(
                              table, count, STEP_ROWS, LEVEL_PERCENT);
                      }));
            for (int first = 0; first < STEP_ROWS; ++first)
                EXPECT_TRUE(Tiles(RowsOneStepApart(dispatch.ranges, first, STEP_ROWS), 77 * 65535 / 100));
        }
    }
}

TEST(CutTableDispatch, Smooth3PrintedSeveralTimesWidensTheRampItIsTold)
{
    for (const int type : {2, 3}) {
        for (const int times : {2, 3, 0, -1}) {
            for (const int count : {STEP_ROWS, SMOOTH_2_ROWS, 40}) {
                const SDispatch dispatch = Dispatch(Mask(1, type, times), count, count);
                EXPECT_TRUE(dispatch.isBuilt);
                EXPECT_TRUE(dispatch.records.empty());
                EXPECT_EQ(dispatch.ranges,
                          By(Mask(1, type, times), count, [&](CMaskData_Base& mask, SCutTable* table) {
                              return mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(table, count);
                          }));
            }
        }
    }
}

TEST(CutTableDispatch, BuildsBothSmooth3TypesAlike)
{
    for (int times = 1; times <= 4; ++times)
        EXPECT_EQ(Dispatch(Mask(1, 2, times), 33, 33).ranges, Dispatch(Mask(1, 3, times), 33, 33).ranges)
            << times;
}

TEST(CutTableDispatch, RefusesTheReservedTypeWithoutARecord)
{
    for (const int times : {1, 2, 0}) {
        const SDispatch dispatch = Dispatch(Mask(1, 4, times), SMOOTH_2_ROWS, SMOOTH_2_ROWS);
        EXPECT_FALSE(dispatch.isBuilt);
        EXPECT_TRUE(dispatch.records.empty());
    }
}

TEST(CutTableDispatch, RefusesAnUnknownNozzleTypeByItsValue)
{
    for (const int type : {0, 5, 6, -1, INT_LOWEST, INT_HIGHEST}) {
        const SDispatch dispatch = Dispatch(Mask(1, type, 1), SMOOTH_2_ROWS, SMOOTH_2_ROWS);
        EXPECT_FALSE(dispatch.isBuilt) << type;
        EXPECT_EQ(dispatch.records, std::vector<SLogRecord>{Refusal("featherNozzleType", type)});
    }
}

TEST(CutTableDispatch, RefusesAnUnknownFeatherModeByItsValueWhateverTheNozzleTypeIs)
{
    for (const int mode : {2, 3, -1, INT_LOWEST, INT_HIGHEST}) {
        for (const int type : {1, 2, 4, 9}) {
            const SDispatch dispatch = Dispatch(Mask(mode, type, 1), SMOOTH_2_ROWS, SMOOTH_2_ROWS);
            EXPECT_FALSE(dispatch.isBuilt) << mode;
            EXPECT_EQ(dispatch.records, std::vector<SLogRecord>{Refusal("featherMode", mode)});
        }
    }
}
