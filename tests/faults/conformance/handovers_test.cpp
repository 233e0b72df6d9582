// What the library's operations hand to each other where no result shows it.

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/rawmaskdata.h"
#include "generatorthread.h"
#include "logcapture.h"
#include "maskdata_base_usage.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

/// Looks at the record of a generator whose own thread is about to start: all that it was given.
template <typename TLook>
SThreadFaults Faults_GeneratorParam(TLook look)
{
    SThreadFaults faults;
    faults.starting = [look](CustomThreadBase& thread) {
        if (auto* generator = dynamic_cast<CMaskDataGenerator*>(&thread))
            look(SMaskDataGenerator_Peek{*generator}.Param());
    };
    return faults;
}

/// The record's numbers in their order, from the bytes of a colour to the feather profile.
std::vector<int> Numbers(const SMaskDataGenerate_Param& param)
{
    return {param.maskBytes_OneColor,
            param.maskBytes_OnePosition,
            param.maskLineBytes,
            param.thresholdHeight,
            param.thresholdWidth,
            param.colorCount,
            param.positionCount,
            param.cutTableCount,
            param.blockHeight,
            param.rowStep,
            param.splitCount_XRes,
            param.splitCount_YRes,
            param.dotBits,
            param.featherNozzleType};
}

TEST(Handovers, CreationWaitsOnceAndForAMinute)
{
    std::vector<unsigned int> waits;
    const CThreadFaults faults(Faults_GeneratorWait([&waits](unsigned int milliseconds) {
        waits.push_back(milliseconds);
        return false;
    }));
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(MaskParam_Plain()));
    EXPECT_EQ(waits, std::vector<unsigned int>({60000}));
}

TEST(Handovers, BlockStaysAttachedWhenTheMinuteIsOver)
{
    int waitCount = 0;
    const CThreadFaults faults(Faults_GeneratorWait([&waitCount](unsigned int /*milliseconds*/) {
        ++waitCount;
        return true;
    }));
    const CLogCapture quiet; // its records are among the cases of the assembly
    CMaskData_Base mask;
    EXPECT_FALSE(mask.Create(MaskParam_Plain()));
    EXPECT_EQ(waitCount, 1);
    const CMaskBlock* block = SMaskData_Base_Peek{mask}.MaskBlock();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->Width(), 544 * 68);
    EXPECT_EQ(block->Height(), 1);
}

TEST(Handovers, SampleIsMadeOfTheAgreedRecord)
{
    SMaskParam agreed = {};
    agreed.nozzleCount = 544;
    agreed.basePass = 1;
    agreed.xResPass = 1;
    agreed.yResPass = 1;
    agreed.colorCount = 1;
    agreed.bitsPerPixel = 1;
    agreed.featherPercent = 50.0F;
    agreed.colorTimes = 1;
    EXPECT_EQ(MaskParam_Bytes(dotweave::Usage_Param()), MaskParam_Bytes(agreed));
    std::vector<std::vector<int>> given;
    const CThreadFaults faults(Faults_GeneratorParam(
        [&given](const SMaskDataGenerate_Param& param) { given.push_back(Numbers(param)); }));
    EXPECT_TRUE(CMaskData_Base::Usage());
    EXPECT_EQ(given, (std::vector<std::vector<int>>{
                         {544 * 68, 544 * 68, 68, 544, 544, 1, 1, 544, 544, 544, 1, 1, 1, 0}}));
}

TEST(Handovers, GeneratorGetsTheGeometryFieldByField)
{
    // Two hard passes of 120 rows; no two of the numbers are alike but the two that must be.
    SMaskParam mode = MaskParam_Plain();
    mode.nozzleCount = 240;
    mode.basePass = 2;
    mode.xResPass = 3;
    mode.yResPass = 4;
    mode.colorCount = 5;
    mode.bitsPerPixel = 2;
    mode.featherNozzleType = 7; // never read with hard edges, and handed on all the same
    CMaskData_Base mask;
    int callCount = 0;
    const CThreadFaults faults(
        Faults_GeneratorParam([&mask, &callCount](const SMaskDataGenerate_Param& param) {
            ++callCount;
            const int line = 544 * 2 * 3 / 8;
            // Of the 544 rows of a plane, 120 rows a position take 9 positions and 540 rows.
            EXPECT_EQ(Numbers(param), (std::vector<int>{9 * 4 * 240 * line, 4 * 240 * line, line, 540, 544, 5,
                                                        9, 240, 240, 120, 3, 4, 2, 7}));
            EXPECT_EQ(param.pMaskBlock, SMaskData_Base_Peek{mask}.MaskBlock());
            ASSERT_NE(param.pMaskBlock, nullptr);
            EXPECT_EQ(param.pMaskBlock->Width(), 9 * 4 * 240 * line);
            EXPECT_EQ(param.pMaskBlock->Height(), 5);
            ASSERT_NE(param.pCutTable, nullptr);
            CRanges table;
            for (int row = 0; row < 240; ++row)
                table.push_back({param.pCutTable[row].lowerLimit, param.pCutTable[row].upperLimit});
            EXPECT_EQ(table, PassZones(2, 120));
            ASSERT_NE(param.pBaseMaskData, nullptr);
            for (int color = 0; color < 5; ++color) {
                const std::uint16_t* matrix = CRawMaskData::RawData(color);
                EXPECT_TRUE(std::equal(matrix, matrix + std::ptrdiff_t{540} * 544,
                                       param.pBaseMaskData->MaskData(color)))
                    << color;
            }
        }));
    EXPECT_TRUE(mask.Create(mode));
    EXPECT_EQ(callCount, 1);
}

} // namespace
