#include "dotweave/basemaskdata.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/sinemask.h"

#include "cutrange.h"
#include "geometrysteps.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"
#include "refusals.h"
#include "slidingramp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <new>
#include <vector>

namespace {

using namespace dotweave;

constexpr SCutTable UNTOUCHED_ENTRY = {0xABCD, 0x1234};
constexpr SCutTable ALL = {65535, 0};

/// A cut of one row of two thresholds.
struct SCut {
    explicit SCut(CMaskBlock& block)
    {
        param.cutTable = &ALL;
        param.cutTableCount = 1;
        param.baseMaskData = plane;
        param.baseMaskHeight = 1;
        param.baseMaskWidth = 2;
        param.bitsPerPixel = 1;
        param.maskBlock = &block;
    }
    std::uint16_t plane[2] = {7, 0};
    SParam_GenerateMaskData param = {};
};

/// What a cut that must fail logs.
Records CutRefusal(CMaskBlock& block, const std::function<void(SParam_GenerateMaskData&)>& change)
{
    const CLogCapture log;
    SCut cut(block);
    change(cut.param);
    EXPECT_FALSE(CMaskData_Base::GenerateMaskData(cut.param));
    return log.Records();
}

/// Runs a builder of `count` entries on a table between guards.
/// @return whether it left all guards alone
bool StaysInside(int count, const std::function<void(SCutTable*)>& build)
{
    constexpr std::ptrdiff_t GUARDS = 64;
    const int held = std::max(count, 0);
    std::vector<SCutTable> table(static_cast<std::size_t>(held) + 2 * GUARDS, UNTOUCHED_ENTRY);
    build(table.data() + GUARDS);
    const auto isUntouched = [](SCutTable entry) {
        return entry.upperLimit == UNTOUCHED_ENTRY.upperLimit &&
               entry.lowerLimit == UNTOUCHED_ENTRY.lowerLimit;
    };
    return std::all_of(table.begin(), table.begin() + GUARDS, isUntouched) &&
           std::all_of(table.begin() + GUARDS + held, table.end(), isUntouched);
}

constexpr int COUNTS[] = {LEAST, LEAST + 1, -65536, -7, -1, 0, 1, 2, 3, 10};

} // namespace

TEST(CutEdges, EmptyBlockIsTrueAtOnce)
{
    const CLogCapture log;
    for (const auto& [width, height] : {std::pair(0, 0), std::pair(0, 5), std::pair(5, 0)}) {
        CMaskBlock block(width, height);
        SParam_GenerateMaskData param = {}; // no plane, no table: nothing of it is read
        param.maskBlock = &block;
        EXPECT_TRUE(CMaskData_Base::GenerateMaskData(param));
    }
    CMaskBlock none;
    SCut cut(none);
    EXPECT_TRUE(CMaskData_Base::GenerateMaskData(cut.param));
    EXPECT_EQ(log.Records(), Records());
}

TEST(CutEdges, PlaneWithoutCellsAndUnknownDepthFail)
{
    const Records failure = {Failure(UNIT_MASK, SCOPE_MASK_CUT)};
    CMaskBlock block(2, 1);
    for (const int value : {0, -1, LEAST}) {
        EXPECT_EQ(CutRefusal(block, [&](SParam_GenerateMaskData& p) { p.baseMaskWidth = value; }), failure);
        EXPECT_EQ(CutRefusal(block, [&](SParam_GenerateMaskData& p) { p.baseMaskHeight = value; }), failure);
    }
    for (const int bits : {-1, 3, 8, MOST, LEAST})
        EXPECT_EQ(CutRefusal(block, [&](SParam_GenerateMaskData& p) { p.bitsPerPixel = bits; }), failure);
    // The bytes of this block are 65536, which is a single row of its 65537.
    CMaskBlock wrapped(65536, 65537);
    EXPECT_EQ(CutRefusal(wrapped, [](SParam_GenerateMaskData&) {}), failure);
    EXPECT_EQ(std::vector<std::uint8_t>(block.MaskData(), block.MaskData() + 2),
              std::vector<std::uint8_t>(2, 0));
}

TEST(CutEdges, DepthOfNoBitsMarksWithNothing)
{
    CMaskBlock block(2, 1);
    block.MaskData()[0] = block.MaskData()[1] = 0x55;
    SCut cut(block);
    cut.param.bitsPerPixel = 0;
    EXPECT_TRUE(CMaskData_Base::GenerateMaskData(cut.param));
    EXPECT_EQ(block.MaskData()[0], 0x00); // threshold 7 lies inside the range
    EXPECT_EQ(block.MaskData()[1], 0x55); // threshold 0 never does
}

TEST(SizeEdges, NegativeSizesFailAsAllocationsDo)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    ASSERT_NO_FATAL_FAILURE(Geometry_Create(peek, MaskParam_Plain()));
    SCutTable entry = UNTOUCHED_ENTRY;
    peek.Current().basePass = 4;
    peek.Current().colorTimes = 2;
    peek.StepHeight_NoneRes() = -1; // a group of -2 rows
    EXPECT_THROW(mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(&entry, 1), std::bad_alloc);
    peek.StepHeight_NoneRes() = 2; // a ramp of 1 - 4 rows
    EXPECT_THROW(mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(&entry, 1), std::bad_alloc);
    peek.Smooth2PassHeightTotal() = -1;
    EXPECT_THROW(mask.CreateCutTable_Smooth_2(&entry, 1), std::bad_alloc);
    const int height = peek.MaskHeight_NoneRes();
    peek.MaskHeight_NoneRes() = -1;
    EXPECT_THROW(peek.CreateMaskData_Old(), std::bad_alloc);
    EXPECT_THROW(peek.CreateMaskData(), std::bad_alloc);
    peek.MaskHeight_NoneRes() = height;
    peek.Current().xResPass = -1;
    EXPECT_THROW(peek.CreateMaskData_Old(), std::bad_alloc);
}

TEST(SizeEdges, ProductsThatWrapFailAsAllocationsDo)
{
    CSineMask sine; // 207248 * 20724 is 2 to the 32 and 40256
    EXPECT_THROW(sine.Create(MOST, 207248, 1, SinMaskType_Stored), std::bad_alloc);
    EXPECT_EQ(sine.MaskBuffer_Down_Get(), nullptr);
    EXPECT_EQ(sine.MaskSize_Get(), 0);
    CSineMask probe;
    EXPECT_THROW(probe.Create(MOST, 207248, 1, SinMaskType_Probe), std::bad_alloc);
    for (const auto& [width, height] :
         {std::pair(524288, 8193), std::pair(65536, 65536), std::pair(MOST, MOST)}) {
        CBaseMaskData planes;
        EXPECT_THROW(planes.Create(width, height, 1), std::bad_alloc);
        CBaseMaskData none;
        EXPECT_TRUE(none.Create(width, height, 0)); // no plane, no product
    }
}

TEST(SizeEdges, BuildersWriteAtMostWhatTheTableHolds)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.Current().featherLevelPercent = 100;
    for (const int count : COUNTS)
        for (const int step : COUNTS) {
            SCOPED_TRACE(testing::Message() << count << " entries, steps of " << step);
            EXPECT_TRUE(
                StaysInside(count, [&](SCutTable* table) { SlidingRamp_Fill(table, count, step, 65535); }));
            EXPECT_TRUE(StaysInside(count, [&](SCutTable* table) {
                CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_2(table, count, step);
            }));
            peek.StepHeight_NoneRes() = step;
            for (const int times : {1, 2, 5}) {
                peek.Current().colorTimes = times;
                EXPECT_TRUE(StaysInside(
                    count, [&](SCutTable* table) { mask.CreateCutTable_Smooth_3(table, count); }));
            }
            for (const int times : COUNTS) { // passes are the table's rows, one each
                const std::vector<SCutRange> ranges = CutRanges_InGroups(count, times, 1);
                EXPECT_LE(ranges.size(), static_cast<std::size_t>(std::max(count, 0))) << times << " groups";
            }
        }
}

TEST(SizeEdges, NoTimesMakeNoGroups)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.Current().basePass = LEAST; // over -1 the quotient would not fit
    peek.StepHeight_NoneRes() = 2;
    for (const int times : {LEAST, -1, 0}) {
        peek.Current().colorTimes = times;
        EXPECT_TRUE(StaysInside(10, [&](SCutTable* table) {
            EXPECT_TRUE(mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(table, 10));
        }));
    }
}

TEST(MaskDataEdges, NothingWithoutABlock)
{
    const CMaskData_Base mask;
    int position = 3;
    EXPECT_EQ(mask.MaskData_Get(-1, position), nullptr);
    EXPECT_EQ(position, 3);
}

TEST(MaskDataEdges, FailedSecondCreateStaysInside)
{
    const auto isInside = [](const CMaskData_Base& mask) {
        const CMaskBlock& block = *SMaskData_Base_Peek{const_cast<CMaskData_Base&>(mask)}.MaskBlock();
        for (int color = 0; color < mask.MaskParam_Current().colorCount; ++color)
            for (int position = -1; position < 20; ++position) {
                int next = position;
                const std::uint8_t* bytes = mask.MaskData_Get(color, next);
                if (bytes != nullptr && (bytes < block.MaskData_Const() ||
                                         bytes + mask.MaskBytes_OnePosition() >
                                             block.MaskData_Const() + block.MaskDataBytesCount()))
                    return false;
            }
        return true;
    };
    using Change = std::function<void(SMaskParam&)>;
    const Change changes[] = {
        [](SMaskParam& p) { p.colorTimes = 0, p.colorCount = 7; },
        [](SMaskParam& p) { p.bitsPerPixel = 0, p.colorCount = 7, p.yResPass = 64; },
        [](SMaskParam& p) { p.featherMode = 7, p.colorCount = 7, p.yResPass = 3; },
        [](SMaskParam& p) { p.nozzleCount = 31580642, p.colorCount = 2; },
        [](SMaskParam& p) { p.nozzleCount = 15790321, p.colorCount = 2; },
        [](SMaskParam& p) { p.nozzleCount = 5440, p.xResPass = 2, p.bitsPerPixel = 2, p.colorCount = 1452; },
        [](SMaskParam& p) { p.colorCount = 7, p.colorTimes = 0; },
    };
    for (const Change& change : changes) {
        const CLogCapture log;
        CMaskData_Base mask;
        SMaskParam param = MaskParam_Plain();
        param.nozzleCount = 16;
        param.basePass = 2;
        ASSERT_TRUE(mask.Create(param));
        delete[] SMaskData_Base_Peek{mask}.XResStep(); // a second Create loses the arrays of the first
        delete[] SMaskData_Base_Peek{mask}.YResStep();
        SMaskData_Base_Peek{mask}.XResStep() = SMaskData_Base_Peek{mask}.YResStep() = nullptr;
        change(param);
        ASSERT_FALSE(mask.Create(param));
        EXPECT_TRUE(isInside(mask)) << param;
    }
}
