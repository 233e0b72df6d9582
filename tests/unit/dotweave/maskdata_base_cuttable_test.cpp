#include "dotweave/maskdata_base.h"

#include "cuttablebuilders.h"
#include "cuttables.h"
#include "logcapture.h"
#include "logscopes.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace {

constexpr int LOWEST = std::numeric_limits<int>::min();
constexpr int HIGHEST = std::numeric_limits<int>::max();

constexpr SBand BAND = {.basePass = 4, .stepRows = 5, .levelPercent = 77, .featherRows = 2, .passRows = 3};
constexpr int HARD_ROWS = 4 * 5;
constexpr int SMOOTH_2_ROWS = HARD_ROWS + 2;

SBand Printed(int times)
{
    SBand band = BAND;
    band.colorTimes = times;
    return band;
}

SBuilt Dispatch(int featherMode, int featherNozzleType, int times, int rows, int count)
{
    CMaskData_Base mask;
    Band_Set(mask, Printed(times));
    SMaskData_Base_Peek{mask}.Current().featherMode = featherMode;
    SMaskData_Base_Peek{mask}.Current().featherNozzleType = featherNozzleType;
    return Table_Build(mask, rows, &CMaskData_Base::CreateCutTable, count);
}

SBuilt Refused(const std::string& member, int value)
{
    return {false,
            CRanges(SMOOTH_2_ROWS, UNWRITTEN),
            {FailureValue(UNIT_MASK, SCOPE_CUT_TABLE,
                          "m_maskParam_Current." + member + " = " + std::to_string(value))}};
}

/// The smooth-3 ramp of the band, widened when it is printed other than once.
CRanges Smooth3Rows(int times, int count)
{
    CRanges rows = RampByFormula(count, BAND.stepRows, 77 * 65535 / 100);
    if (times != 1)
        std::transform(rows.begin(), rows.end(), rows.begin(),
                       [times](const SRange& range) { return WidenedByHand(range, times).range; });
    return rows;
}

} // namespace

static_assert(std::is_same_v<decltype(SCutTable::upperLimit), std::uint16_t>);
static_assert(std::is_same_v<decltype(SCutTable::lowerLimit), std::uint16_t>);

TEST(CutTableDispatch, HardEdgesReadNoTypeAndNoCount)
{
    for (const int type : {1, 2, 3, 4, 0, 5, -1, LOWEST, HIGHEST})
        for (int times = 1; times <= 5; ++times)
            for (const int count : {HARD_ROWS, LOWEST, 0, HIGHEST})
                EXPECT_EQ(Dispatch(0, type, times, HARD_ROWS, count),
                          (SBuilt{true, HardZones(4, times, BAND.stepRows)}))
                    << type << ", " << times << " times, count " << count;
}

TEST(CutTableDispatch, HardEdgesFailAsTheirBuilder)
{
    for (const int times : {0, -1, LOWEST})
        EXPECT_EQ(
            Dispatch(0, 1, times, HARD_ROWS, HARD_ROWS),
            (SBuilt{false, CRanges(HARD_ROWS, UNWRITTEN), {Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)}}));
}

TEST(CutTableDispatch, Smooth2ReadsNoCount)
{
    for (int times = 1; times <= 4; ++times)
        for (const int count : {SMOOTH_2_ROWS, 0, -3, HIGHEST})
            EXPECT_EQ(Dispatch(1, 1, times, SMOOTH_2_ROWS, count),
                      (SBuilt{true, Smooth2Zones(4, times, BAND.featherRows, BAND.passRows)}))
                << times << " times, count " << count;
}

TEST(CutTableDispatch, BothSmooth3TypesRampOverTheCount)
{
    for (const int type : {2, 3})
        for (const int times : {0, 1, 2, 3, 4})
            for (const int count : {BAND.stepRows, SMOOTH_2_ROWS, 40})
                EXPECT_EQ(Dispatch(1, type, times, count, count), (SBuilt{true, Smooth3Rows(times, count)}))
                    << type << ", " << times << " times, count " << count;
}

TEST(CutTableDispatch, UnknownValuesAreRefused)
{
    const auto refusal = [](int mode, int type) {
        return Dispatch(mode, type, 1, SMOOTH_2_ROWS, SMOOTH_2_ROWS);
    };
    for (const int value : {5, 6, -1, LOWEST, HIGHEST}) {
        EXPECT_EQ(refusal(1, value), Refused("featherNozzleType", value));
        for (const int type : {1, 2, 4, 9})
            EXPECT_EQ(refusal(value, type), Refused("featherMode", value));
    }
    EXPECT_EQ(refusal(1, 0), Refused("featherNozzleType", 0));
    EXPECT_EQ(refusal(2, 1), Refused("featherMode", 2));
    EXPECT_EQ(refusal(1, 4), (SBuilt{false, CRanges(SMOOTH_2_ROWS, UNWRITTEN)}))
        << "reserved: without a record";
}

TEST(CutTableFamily, EachChoosesByTheTimesOfPrinting)
{
    for (int times = 1; times <= 4; ++times) {
        SCOPED_TRACE(times);
        EXPECT_EQ(Table_Of(Printed(times), HARD_ROWS, &CMaskData_Base::CreateCutTable_FeatherNone, 2),
                  HardZones(4, times, BAND.stepRows));
        EXPECT_EQ(Table_Of(Printed(times), 33, &CMaskData_Base::CreateCutTable_Smooth_3, 33),
                  Smooth3Rows(times, 33));
        EXPECT_EQ(Table_Of(Printed(times), 33, &CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes, 33),
                  Smooth3Rows(1, 33)); // by name: does not choose
    }
    EXPECT_EQ(Table_Build(Printed(0), HARD_ROWS, &CMaskData_Base::CreateCutTable_FeatherNone, HARD_ROWS),
              (SBuilt{false, CRanges(HARD_ROWS, UNWRITTEN), {Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)}}));
}
