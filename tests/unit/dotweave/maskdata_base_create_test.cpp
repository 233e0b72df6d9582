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
#include <utility>
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

TEST(MaskDataCreate, ASecondCallKeepsTheOldBuffers)
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

TEST(MaskDataCreate, TakesColorTimesUpToThePasses)
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 4;
    for (param.colorTimes = 1; param.colorTimes <= 4; ++param.colorTimes) {
        const CLogCapture log;
        CMaskData_Base mask;
        EXPECT_TRUE(mask.Create(param)) << param;
        EXPECT_EQ(log.Records(), Records());
    }
}

TEST(MaskDataCreate, RefusesOtherColorTimesFirst)
{
    constexpr int MOST = std::numeric_limits<int>::max();
    constexpr int LEAST = std::numeric_limits<int>::min();
    for (const auto& [basePass, colorTimes] :
         {std::pair(4, 0), std::pair(4, 5), std::pair(4, -1), std::pair(4, MOST), std::pair(4, LEAST),
          std::pair(0, 1), std::pair(0, 0), std::pair(-1, -1), std::pair(LEAST, 1),
          std::pair(LEAST, LEAST)}) {
        SMaskParam param = MaskParam_TwoByTwo();
        param.resSplitType = ResSplit_X2Y2;
        param.basePass = basePass;
        param.colorTimes = colorTimes;
        const CLogCapture log;
        CMaskData_Base mask;
        EXPECT_FALSE(mask.Create(param)) << param;
        EXPECT_EQ(log.Records(), Records({MaskCreateFailure(85)}));
        // Only the two copies are there: no split, no geometry.
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(param));
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Current()), MaskParam_Bytes(param));
        SMaskData_Base_Peek peek{mask};
        EXPECT_EQ(peek.BaseMaskHeight(), 0);
        EXPECT_EQ(peek.StepHeight_NoneRes(), 0);
        EXPECT_EQ(peek.XResStep(), nullptr);
        EXPECT_EQ(peek.MaskBlock(), nullptr);
    }
}

TEST(MaskDataCreate, FailingStepsLogFirstAndCreateLast)
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
    const std::vector<SCase> cases = {
        {unknownMode, Failure(UNIT_MASK, SCOPE_INIT_NONE_RES, 163), 117},
        {MaskParam_Feathered(FeatherNozzle_Reserved, 544, 4, 50.0F),
         Failure(UNIT_MASK, SCOPE_FEATHER_NOZZLE, 182), 117},
        {noStep, Failure(UNIT_MASK, SCOPE_FEATHER_NONE, 237), 117},
        {noStepSmooth2, Failure(UNIT_MASK, SCOPE_SMOOTH_2, 205), 117},
        {noStepSmooth3, Failure(UNIT_MASK, SCOPE_SMOOTH_3), 117},
        {MaskParam_Feathered(FeatherNozzle_Smooth_2, 544, 4, 0.0F),
         {SCOPE_RES_PARAM, UNIT_MASK, 941, 1, "m_maskHeight = 544, m_leadBlankHeight = 544"},
         118}};
    for (const SCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.param);
        const CLogCapture log;
        CMaskData_Base mask;
        EXPECT_FALSE(mask.Create(c.param));
        EXPECT_EQ(log.Records(), Records({c.first, MaskCreateFailure(c.createLine)}));
        EXPECT_EQ(SMaskData_Base_Peek{mask}.MaskBlock(), nullptr);
        EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskHeight(), 544); // set before the steps, never undone
        EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskWidth(), 544);
        EXPECT_EQ(MaskParam_Bytes(mask.MaskParam_Input()), MaskParam_Bytes(c.param));
    }
}

TEST(MaskDataCreate, MasksThatNeverRepeatFail)
{
    // A million and three rows are a prime number: the masks of 273 positions do not fit into 32 bits.
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 1000003;
    const CLogCapture log;
    CMaskData_Base mask;
    EXPECT_FALSE(mask.Create(param));
    EXPECT_EQ(log.Records(), Records({MaskCreateFailure(119)}));
    EXPECT_EQ(SMaskData_Base_Peek{mask}.MaskBlock(), nullptr);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 1000003); // nothing is undone
    EXPECT_EQ(mask.YResStep()[0], 0);
}

TEST(MaskDataCreate, TheSearchLowersRowsAndNotColumns)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 100;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskHeight(), 500);
    EXPECT_EQ(SMaskData_Base_Peek{mask}.BaseMaskWidth(), 544);
    EXPECT_EQ(SMaskData_Base_Peek{mask}.PositionCount(), 5);
}
