#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

using Records = std::vector<SLogRecord>;

SMaskParam MaskParam_TwoByTwo()
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 4;
    param.xResPass = param.yResPass = 2;
    return param;
}

} // namespace

TEST(MaskDataBaseCreate, GoodCreationLogsNothing)
{
    const CLogCapture log;
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(MaskParam_TwoByTwo()));
    EXPECT_EQ(log.Records(), Records());
}

TEST(MaskDataBaseCreate, ASecondCallMakesNewArraysAndANewBlockAndKeepsTheOldOnes)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    ASSERT_TRUE(mask.Create(MaskParam_Plain()));
    const std::unique_ptr<int[]> oldXResStep(peek.XResStep()); // freed here, as the object does not
    const std::unique_ptr<int[]> oldYResStep(peek.YResStep());
    const std::unique_ptr<CMaskBlock> oldBlock(peek.MaskBlock());
    const std::vector<std::uint8_t> oldBytes(oldBlock->MaskData(),
                                             oldBlock->MaskData() + oldBlock->MaskDataBytesCount());
    ASSERT_TRUE(mask.Create(MaskParam_Small(100)));
    EXPECT_NE(peek.XResStep(), oldXResStep.get());
    EXPECT_NE(peek.YResStep(), oldYResStep.get());
    EXPECT_NE(peek.MaskBlock(), oldBlock.get());
    EXPECT_EQ(oldXResStep[0], 0);
    EXPECT_EQ(oldYResStep[0], 0);
    EXPECT_TRUE(std::equal(oldBytes.begin(), oldBytes.end(), oldBlock->MaskData()));
}

TEST(MaskDataBaseCreate, ColorTimesFromOnceToEveryPassAreAccepted)
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 4;
    for (param.colorTimes = 1; param.colorTimes <= 4; ++param.colorTimes) {
        CMaskData_Base mask;
        EXPECT_TRUE(mask.Create(param)) << param;
    }
}

TEST(MaskDataBaseCreate, ColorTimesOutsideThePassesFailBeforeAnythingIsComputed)
{
    for (const int colorTimes :
         {0, 5, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        SMaskParam param = MaskParam_TwoByTwo();
        param.resSplitType = ResSplit_X2Y2;
        param.colorTimes = colorTimes;
        const CLogCapture log;
        CMaskData_Base mask;
        EXPECT_FALSE(mask.Create(param));
        EXPECT_EQ(log.Records(), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 85)}));
        // Only the two copies are there: no split, no geometry.
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(param));
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Current()), MaskParam_Bytes(param));
        SMaskData_Base_Peek peek{mask};
        EXPECT_EQ(peek.BaseMaskHeight(), 0);
        EXPECT_EQ(peek.BaseMaskWidth(), 0);
        EXPECT_EQ(peek.StepHeight_NoneRes(), 0);
        EXPECT_EQ(peek.MaskHeight_NoneRes(), 0);
        EXPECT_EQ(peek.XResStep(), nullptr);
        EXPECT_EQ(peek.YResStep(), nullptr);
        EXPECT_EQ(peek.MaskBlock(), nullptr);
    }
}

TEST(MaskDataBaseCreate, WithoutAPassNoColorTimesAreAccepted)
{
    for (const int basePass : {0, -1, std::numeric_limits<int>::min()}) {
        for (const int colorTimes : {1, 0, basePass}) {
            SMaskParam param = MaskParam_Plain();
            param.basePass = basePass;
            param.colorTimes = colorTimes;
            const CLogCapture log;
            CMaskData_Base mask;
            EXPECT_FALSE(mask.Create(param));
            EXPECT_EQ(log.Records(), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 85)}));
        }
    }
}

TEST(MaskDataBaseCreate, EveryFailingStepLogsItselfFirstAndCreateLast)
{
    struct SCase {
        SMaskParam param;
        SLogRecord first;
        unsigned int createLine;
    };
    SMaskParam unknownMode = MaskParam_Plain();
    unknownMode.featherMode = 2;
    SMaskParam noStep = MaskParam_Plain();
    noStep.nozzleCount = 3;
    noStep.basePass = 4;
    SMaskParam noStepSmooth2 = MaskParam_Feathered(FeatherNozzle_Smooth_2, 3, 4, 50.0F);
    SMaskParam noStepSmooth3 = MaskParam_Feathered(FeatherNozzle_Smooth_3, 3, 4, 50.0F);
    const std::string prefix = "bool __cdecl CMaskData_Base::";
    const std::vector<SCase> cases = {
        {unknownMode, Failure(UNIT_MASK, prefix + "InitNoneRes(void)", 163), 117},
        {MaskParam_Feathered(FeatherNozzle_Reserved, 544, 4, 50.0F),
         Failure(UNIT_MASK, prefix + "InitNoneRes_FeatherNozzle(void)", 182), 117},
        {MaskParam_Feathered(0, 544, 4, 50.0F),
         Failure(UNIT_MASK, prefix + "InitNoneRes_FeatherNozzle(void)", 182), 117},
        {noStep, Failure(UNIT_MASK, prefix + "InitNoneRes_FeatherNone(void)", 237), 117},
        {noStepSmooth2, Failure(UNIT_MASK, prefix + "InitNoneRes_FeatherNozzle_Smooth_2(void)", 205), 117},
        {noStepSmooth3, Failure(UNIT_MASK, prefix + "InitNoneRes_FeatherNozzle_Smooth_3(void)"), 117},
        {MaskParam_Feathered(FeatherNozzle_Smooth_2, 544, 4, 0.0F),
         {prefix + "InitResParam(void)", UNIT_MASK, 941, 1, "m_maskHeight = 544, m_leadBlankHeight = 544"},
         118}};
    for (const SCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.param);
        const CLogCapture log;
        CMaskData_Base mask;
        EXPECT_FALSE(mask.Create(c.param));
        EXPECT_EQ(log.Records(), Records({c.first, Failure(UNIT_MASK, SCOPE_MASK_CREATE, c.createLine)}));
        EXPECT_EQ(SMaskData_Base_Peek{mask}.MaskBlock(), nullptr);
        EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskHeight(), 544); // set before the steps, never undone
        EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskWidth(), 544);
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(c.param));
    }
}

TEST(MaskDataBaseCreate, MasksThatNeverRepeatFailAtTheMaskSize)
{
    // A million and three rows are a prime number: the masks of 273 positions do not fit into 32 bits.
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 1000003;
    const CLogCapture log;
    CMaskData_Base mask;
    EXPECT_FALSE(mask.Create(param));
    EXPECT_EQ(log.Records(), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 119)}));
    EXPECT_EQ(SMaskData_Base_Peek{mask}.MaskBlock(), nullptr);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 1000003); // nothing is undone
    EXPECT_EQ(mask.YResStep()[0], 0);
}

TEST(MaskDataBaseCreate, ThresholdRowsAreLoweredByTheSearchAndColumnsAreNot)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 100;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskHeight(), 500);
    EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskWidth(), 544);
    EXPECT_EQ(SMaskData_Base_Peek{mask}.PositionCount(), 5);
}
