// What the library's operations hand to each other where no result shows it.

#include "handovers.h"

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/rawmaskdata.h"
#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

TEST(Handovers, ACreationWaitsOnceAndForAMinute)
{
    std::vector<unsigned int> waits;
    CHandovers handovers;
    handovers.m_generatorWait = [&waits](unsigned int milliseconds) {
        waits.push_back(milliseconds);
        return true;
    };
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(MaskParam_Plain()));
    EXPECT_EQ(waits, std::vector<unsigned int>({60000}));
}

TEST(Handovers, AGeneratorThatTakesMoreThanAMinuteLeavesTheBlockAttached)
{
    int waitCount = 0;
    CHandovers handovers;
    handovers.m_generatorWait = [&waitCount](unsigned int /*milliseconds*/) {
        ++waitCount;
        return false;
    };
    const CLogCapture quiet; // its records stand among the cases of the assembly
    CMaskData_Base mask;
    EXPECT_FALSE(mask.Create(MaskParam_Plain()));
    EXPECT_EQ(waitCount, 1);
    const CMaskBlock* block = SMaskData_Base_Peek{mask}.MaskBlock();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->Width(), 544 * 68);
    EXPECT_EQ(block->Height(), 1);
}

TEST(Handovers, TheSampleIsMadeOfTheAgreedRecord)
{
    std::vector<SMaskParam> records;
    CHandovers handovers;
    handovers.m_maskCreate = [&records](const SMaskParam& param) { records.push_back(param); };
    EXPECT_TRUE(CMaskData_Base::Usage());
    ASSERT_EQ(records.size(), 1U);
    const SMaskParam& record = records.front();
    EXPECT_EQ(record.nozzleCount, 544);
    EXPECT_EQ(record.basePass, 1);
    EXPECT_EQ(record.xResPass, 1);
    EXPECT_EQ(record.yResPass, 1);
    EXPECT_EQ(record.colorCount, 1);
    EXPECT_EQ(record.bitsPerPixel, 1);
    EXPECT_EQ(record.featherMode, 0);
    EXPECT_EQ(record.featherPercent, 50.0F);
    EXPECT_EQ(record.featherNozzleType, 0);
    EXPECT_EQ(record.colorTimes, 1);
    EXPECT_EQ(record.featherLevelPercent, 0);
    EXPECT_EQ(record.resSplitType, 0);
}

TEST(Handovers, TheGeneratorGetsTheGeometryFieldByField)
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
    CHandovers handovers;
    handovers.m_generatorCreate = [&mask, &callCount](const SMaskDataGenerate_Param& param) {
        ++callCount;
        const int lineBytes = 544 * 2 * 3 / 8;
        EXPECT_EQ(param.pMaskBlock, SMaskData_Base_Peek{mask}.MaskBlock());
        EXPECT_EQ(param.maskBytes_OneColor, 9 * 4 * 240 * lineBytes);
        EXPECT_EQ(param.maskBytes_OnePosition, 4 * 240 * lineBytes);
        EXPECT_EQ(param.maskLineBytes, lineBytes);
        EXPECT_EQ(param.thresholdHeight, 540); // of which 120 rows take 9 positions
        EXPECT_EQ(param.thresholdWidth, 544);
        EXPECT_EQ(param.colorCount, 5);
        EXPECT_EQ(param.positionCount, 9);
        EXPECT_EQ(param.cutTableCount, 240);
        EXPECT_EQ(param.blockHeight, 240);
        EXPECT_EQ(param.rowStep, 120);
        EXPECT_EQ(param.splitCount_XRes, 3);
        EXPECT_EQ(param.splitCount_YRes, 4);
        EXPECT_EQ(param.dotBits, 2);
        EXPECT_EQ(param.featherNozzleType, 7);

        ASSERT_NE(param.pMaskBlock, nullptr);
        EXPECT_EQ(param.pMaskBlock->Width(), 9 * 4 * 240 * lineBytes);
        EXPECT_EQ(param.pMaskBlock->Height(), 5);
        ASSERT_NE(param.pCutTable, nullptr);
        CRanges table;
        for (int row = 0; row < 240; ++row)
            table.push_back({param.pCutTable[row].lowerLimit, param.pCutTable[row].upperLimit});
        EXPECT_EQ(table, PassZones(2, 120));
        ASSERT_NE(param.pBaseMaskData, nullptr);
        for (int color = 0; color < 5; ++color) {
            const std::uint16_t* matrix = CRawMaskData::RawData(color);
            EXPECT_TRUE(
                std::equal(matrix, matrix + std::ptrdiff_t{540} * 544, param.pBaseMaskData->MaskData(color)))
                << color;
        }
    };
    EXPECT_TRUE(mask.Create(mode));
    EXPECT_EQ(callCount, 1);
}
