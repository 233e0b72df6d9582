#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"
#include "refusals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

/// Whether a creation succeeds, without a log record.
bool IsBuilt(const SMaskParam& param)
{
    const CLogCapture log;
    CMaskData_Base mask;
    const bool isBuilt = mask.Create(param);
    EXPECT_EQ(log.Records().empty(), isBuilt) << param;
    return isBuilt;
}

SMaskParam Hard()
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 60;
    param.basePass = 2;
    return param;
}

SMaskParam Feathered(int type)
{
    return MaskParam_Feathered(type, 60, 2, 50.0F);
}

constexpr int ALL_PROFILES[] = {FeatherNozzle_Smooth_2, FeatherNozzle_Smooth_3, FeatherNozzle_Smooth_3_Sine};

std::vector<float> NoPercents()
{
    return {std::nanf(""),
            -std::nanf(""),
            std::numeric_limits<float>::infinity(),
            -std::numeric_limits<float>::infinity(),
            std::numeric_limits<float>::max(),
            std::numeric_limits<float>::lowest(),
            -std::numeric_limits<float>::denorm_min(),
            std::nextafter(100.0F, 200.0F)};
}

} // namespace

TEST(Refusal, FieldsThatEveryModeReads)
{
    const Records refused = {CreateFailure(85)};
    for (const int value : {0, -1, LEAST}) {
        for (const int mode : {0, 1, 2, 3}) {
            SMaskParam param = mode == 0 ? Hard() : Feathered(mode);
            SCOPED_TRACE(testing::Message() << "mode " << mode << ", value " << value);
            param.xResPass = value;
            EXPECT_EQ(RefusalOf(param), refused);
            param.xResPass = 1;
            param.yResPass = value;
            EXPECT_EQ(RefusalOf(param), refused);
            param.yResPass = 1;
            param.colorCount = value;
            EXPECT_EQ(RefusalOf(param), refused);
            param.colorCount = 1;
            param.bitsPerPixel = value;
            EXPECT_EQ(RefusalOf(param), refused);
            param.bitsPerPixel = 1;
            EXPECT_TRUE(IsBuilt(param));
        }
    }
}

TEST(Refusal, BitDepthsWithoutADotValue)
{
    for (const int bits : {3, 4, 8, MOST}) {
        SMaskParam param = Hard();
        param.bitsPerPixel = bits;
        EXPECT_EQ(RefusalOf(param), Records({CreateFailure(85)}));
    }
    SMaskParam param = Hard();
    param.bitsPerPixel = 2;
    EXPECT_TRUE(IsBuilt(param));
}

TEST(Refusal, ResolutionPassesThatTheSplitLeavesEmpty)
{
    struct SCase {
        int resSplitType, xResPass, yResPass;
        bool isBuilt;
    };
    const SCase cases[] = {{ResSplit_X2, 1, 1, false},
                           {ResSplit_X2, 2, 1, true},
                           {ResSplit_Y2, 1, 1, false},
                           {ResSplit_Y2, 1, 2, true},
                           {ResSplit_Y3, 1, 2, false},
                           {ResSplit_Y3, 1, 3, true},
                           {ResSplit_Y4, 1, 3, false},
                           {ResSplit_Y4, 1, 4, true},
                           {ResSplit_X2Y2, 2, 1, false},
                           {ResSplit_X2Y2, 1, 2, false},
                           {ResSplit_X2Y2, 2, 2, true},
                           {6, 1, 1, true},
                           {-1, 1, 1, true}};
    for (const SCase& c : cases) {
        SMaskParam param = Hard();
        param.resSplitType = c.resSplitType;
        param.xResPass = c.xResPass;
        param.yResPass = c.yResPass;
        SCOPED_TRACE(testing::Message() << param);
        if (c.isBuilt) {
            EXPECT_TRUE(IsBuilt(param));
        } else {
            EXPECT_EQ(RefusalOf(param), Records({CreateFailure(85)}));
        }
    }
}

TEST(Refusal, HeadsWithoutRowsHaveNoStep)
{
    for (const int rows : {0, -1, -544, LEAST}) {
        SMaskParam param = Hard();
        param.nozzleCount = rows;
        EXPECT_EQ(RefusalOf(param),
                  Records({StepFailure("InitNoneRes_FeatherNone", 237), CreateFailure(117)}))
            << rows;
        for (const int type : ALL_PROFILES) { // these need not be checked, and must not crash
            param = Feathered(type);
            param.nozzleCount = rows;
            const Records records = RefusalOf(param);
            ASSERT_FALSE(records.empty());
            EXPECT_EQ(records.back().scope, SCOPE_MASK_CREATE);
        }
    }
}

TEST(Refusal, FeatherPercentOnlyWhereAProfileReadsIt)
{
    for (const float percent : NoPercents()) {
        SCOPED_TRACE(testing::Message() << "percent " << percent);
        for (const int type : ALL_PROFILES) {
            SMaskParam param = Feathered(type);
            param.featherPercent = percent;
            EXPECT_EQ(RefusalOf(param), Records({CreateFailure(85)})) << "type " << type;
        }
        SMaskParam hard = Hard();
        hard.featherPercent = percent;
        EXPECT_TRUE(IsBuilt(hard));
        hard.nozzleCount = 61; // switches to smooth-2 zones made of the row left over
        EXPECT_TRUE(IsBuilt(hard));
        SMaskParam reserved = Feathered(FeatherNozzle_Reserved);
        reserved.featherPercent = percent;
        EXPECT_EQ(RefusalOf(reserved),
                  Records({StepFailure("InitNoneRes_FeatherNozzle", 182), CreateFailure(117)}));
        SMaskParam unknown = Hard();
        unknown.featherMode = 2;
        unknown.featherPercent = percent;
        EXPECT_EQ(RefusalOf(unknown), Records({StepFailure("InitNoneRes", 163), CreateFailure(117)}));
    }
}

TEST(Refusal, FeatherPercentsFromNothingToAllAreBuilt)
{
    for (const float percent : {0.0F, -0.0F, std::numeric_limits<float>::denorm_min(), 33.3F, 100.0F}) {
        SMaskParam param = Feathered(FeatherNozzle_Smooth_3);
        param.featherPercent = percent;
        EXPECT_TRUE(IsBuilt(param)) << percent;
    }
    SMaskParam param = Feathered(FeatherNozzle_Smooth_2);
    param.featherPercent = 100.0F;
    EXPECT_TRUE(IsBuilt(param));
}

TEST(Refusal, FeatherLevelOnlyWhereSmooth3ReadsIt)
{
    for (const int level : {-1, 101, MOST, LEAST}) {
        SCOPED_TRACE(testing::Message() << "level " << level);
        for (const int type : {FeatherNozzle_Smooth_3, FeatherNozzle_Smooth_3_Sine}) {
            SMaskParam param = Feathered(type);
            param.featherLevelPercent = level;
            EXPECT_EQ(RefusalOf(param), Records({CreateFailure(85)}));
        }
        SMaskParam smooth2 = Feathered(FeatherNozzle_Smooth_2);
        smooth2.featherLevelPercent = level;
        EXPECT_TRUE(IsBuilt(smooth2));
        SMaskParam hard = Hard();
        hard.featherLevelPercent = level;
        EXPECT_TRUE(IsBuilt(hard));
        hard.featherNozzleType = FeatherNozzle_Smooth_3; // not read, so neither is the level
        EXPECT_TRUE(IsBuilt(hard));
        hard.nozzleCount = 61;
        EXPECT_TRUE(IsBuilt(hard));
    }
    for (const int level : {0, 1, 100}) {
        SMaskParam param = Feathered(FeatherNozzle_Smooth_3);
        param.featherLevelPercent = level;
        EXPECT_TRUE(IsBuilt(param)) << level;
    }
}

TEST(Refusal, FieldsThatHardEdgesNeverRead)
{
    for (const int value : {0, 1, 2, 3, 4, 5, -1, MOST, LEAST}) {
        SMaskParam param = Hard();
        param.featherNozzleType = value;
        EXPECT_TRUE(IsBuilt(param)) << param;
        param.nozzleCount = 61;
        EXPECT_TRUE(IsBuilt(param)) << param;
    }
    for (const int value : {6, 7, -1, MOST, LEAST}) {
        for (SMaskParam param :
             {Hard(), Feathered(FeatherNozzle_Smooth_2), Feathered(FeatherNozzle_Smooth_3)}) {
            param.resSplitType = value;
            EXPECT_TRUE(IsBuilt(param)) << param;
        }
    }
}
