#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Records = std::vector<SLogRecord>;

/// A mask object that stands before its resolution set-up.
struct SBeforeResolution {
    int xResPass, yResPass, featherMode, step, height, lead;
};

void Prepare(CMaskData_Base& mask, const SBeforeResolution& state)
{
    SMaskData_Base_Peek peek{mask};
    peek.Current().xResPass = state.xResPass;
    peek.Current().yResPass = state.yResPass;
    peek.Current().featherMode = state.featherMode;
    peek.BaseMaskWidth() = 544;
    peek.StepHeight_NoneRes() = state.step;
    peek.MaskHeight_NoneRes() = state.height;
    peek.LeadBlankHeight_NoneRes() = state.lead;
}

std::vector<int> XResSteps(const CMaskData_Base& mask)
{
    return {mask.XResStep(), mask.XResStep() + mask.XResPass()};
}

std::vector<int> YResSteps(const CMaskData_Base& mask)
{
    return {mask.YResStep(), mask.YResStep() + mask.YResPass()};
}

SLogRecord LeadTooLarge(int height, int lead)
{
    return {SCOPE_RES_PARAM, UNIT_MASK, 941, 1,
            "m_maskHeight = " + std::to_string(height) + ", m_leadBlankHeight = " + std::to_string(lead)};
}

} // namespace

TEST(MaskDataBaseGeometry, WithoutResolutionPassesEveryStepIsTheNozzleRowStep)
{
    const CLogCapture log;
    CMaskData_Base mask;
    Prepare(mask, {1, 1, FeatherMode_None, 136, 544, 408});
    EXPECT_TRUE(SMaskData_Base_Peek{mask}.InitResParam());
    EXPECT_EQ(YResSteps(mask), std::vector<int>({0}));
    EXPECT_EQ(XResSteps(mask), std::vector<int>({0}));
    EXPECT_EQ(mask.StepHeight_IncludeRes(), 136);
    EXPECT_EQ(mask.RealStepHeight_IncludeRes(), 136);
    EXPECT_EQ(mask.MaskWidth(), 544);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 544);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 544 - 136);
    EXPECT_EQ(log.Records(), Records());
}

TEST(MaskDataBaseGeometry, TwoByTwoPassesShareAStepOfEight)
{
    CMaskData_Base mask;
    Prepare(mask, {2, 2, FeatherMode_None, 8, 32, 24});
    EXPECT_TRUE(SMaskData_Base_Peek{mask}.InitResParam());
    EXPECT_EQ(YResSteps(mask), std::vector<int>({0, 8}));
    EXPECT_EQ(XResSteps(mask), std::vector<int>({0, 4}));
    EXPECT_EQ(mask.StepHeight_IncludeRes(), 16);
    EXPECT_EQ(mask.RealStepHeight_IncludeRes(), 4);
    EXPECT_EQ(mask.MaskWidth(), 1088);
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 64);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 60);
}

TEST(MaskDataBaseGeometry, ResolutionPassesAreEvenlySpaced)
{
    for (int x = 1; x <= 6; ++x) {
        for (int y = 1; y <= 6; ++y) {
            for (int perPass = 1; perPass <= 7; ++perPass) {
                SCOPED_TRACE(testing::Message() << "x " << x << ", y " << y << ", rows " << perPass);
                const int step = perPass * x * y;
                CMaskData_Base mask;
                Prepare(mask, {x, y, FeatherMode_Nozzle, step, 3 * step, 2 * step});
                ASSERT_TRUE(SMaskData_Base_Peek{mask}.InitResParam());
                for (int i = 0; i < y; ++i)
                    EXPECT_EQ(mask.YResStep()[i], perPass * x * y * i);
                for (int i = 0; i < x; ++i)
                    EXPECT_EQ(mask.XResStep()[i], perPass * y * i);
                EXPECT_EQ(mask.StepHeight_IncludeRes(), perPass * x * y * y);
                EXPECT_EQ(mask.RealStepHeight_IncludeRes(), perPass * y);
                EXPECT_EQ(mask.MaskWidth(), 544 * x);
                EXPECT_EQ(mask.MaskHeight_IncludeRes(), 3 * perPass * x * y * y);
                EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 3 * perPass * x * y * y - perPass * y);
            }
        }
    }
}

TEST(MaskDataBaseGeometry, RealStepIsDividedByTheXPassesFirst)
{
    // A step that the passes do not divide, as a derived object may set it: 7 * 3 = 21; 21 / 2 = 10; 10 / 3
    // = 3.
    CMaskData_Base mask;
    Prepare(mask, {2, 3, FeatherMode_Nozzle, 7, 20, 10});
    EXPECT_TRUE(SMaskData_Base_Peek{mask}.InitResParam());
    EXPECT_EQ(XResSteps(mask), std::vector<int>({0, 3}));
    EXPECT_EQ(mask.RealStepHeight_IncludeRes(), 3);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 57);
}

TEST(MaskDataBaseGeometry, HardEdgesAddTheLastResolutionOffsetsToTheLead)
{
    // Lead 24 * 2 rows, last Y pass 8 rows, last X pass 4 rows: 60 in all.
    CMaskData_Base fits;
    Prepare(fits, {2, 2, FeatherMode_None, 8, 31, 24});
    EXPECT_TRUE(SMaskData_Base_Peek{fits}.InitResParam());
    EXPECT_EQ(fits.LeadBlankHeight_IncludeRes(), 62 - 4);

    const CLogCapture log;
    CMaskData_Base full;
    Prepare(full, {2, 2, FeatherMode_None, 8, 30, 24});
    EXPECT_FALSE(SMaskData_Base_Peek{full}.InitResParam());
    EXPECT_EQ(full.LeadBlankHeight_IncludeRes(), 60);
    EXPECT_EQ(log.Records(), Records({LeadTooLarge(60, 60)}));
}

TEST(MaskDataBaseGeometry, ALeadBeyondTheBandIsToldBesideTheHeightItWasHeldAgainst)
{
    // The lead of 60 as above against 29 * 2 lines: the record tells the height first, each with its own number.
    const CLogCapture log;
    CMaskData_Base mask;
    Prepare(mask, {2, 2, FeatherMode_None, 8, 29, 24});
    EXPECT_FALSE(SMaskData_Base_Peek{mask}.InitResParam());
    EXPECT_EQ(log.Records(), Records({LeadTooLarge(58, 60)}));
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 58);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 60);
}

TEST(MaskDataBaseGeometry, FeatheredEdgesAddNothingToTheLead)
{
    CMaskData_Base fits;
    Prepare(fits, {2, 2, FeatherMode_Nozzle, 8, 25, 24});
    EXPECT_TRUE(SMaskData_Base_Peek{fits}.InitResParam());
    EXPECT_EQ(fits.LeadBlankHeight_IncludeRes(), 50 - 4);

    const CLogCapture log;
    CMaskData_Base full;
    Prepare(full, {2, 2, FeatherMode_Nozzle, 8, 24, 24});
    EXPECT_FALSE(SMaskData_Base_Peek{full}.InitResParam());
    EXPECT_EQ(log.Records(), Records({LeadTooLarge(48, 48)}));
}

TEST(MaskDataBaseGeometry, TheLeadRuleReadsTheModeThatTheSwitchLeft)
{
    // 545 rows in 4 passes of 4: step 136, one row over, lead 544 of 545. With the offsets it would not fit.
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 545;
    param.basePass = 4;
    param.xResPass = param.yResPass = 2;
    const CLogCapture log;
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(param));
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 1090);
    EXPECT_EQ(mask.RealStepHeight_IncludeRes(), 68);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 1090 - 68);
    EXPECT_EQ(log.Records(), Records());
}

TEST(MaskDataBaseGeometry, Smooth2WithoutFeatherRowsHasNoBandLeft)
{
    const CLogCapture log;
    CMaskData_Base mask;
    EXPECT_FALSE(mask.Create(MaskParam_Feathered(FeatherNozzle_Smooth_2, 544, 4, 0.0F)));
    EXPECT_EQ(log.Records(), Records({LeadTooLarge(544, 544), Failure(UNIT_MASK, SCOPE_MASK_CREATE, 118)}));
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 544);
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 544);
}

TEST(MaskDataBaseGeometry, SplitInXAndYHalvesBothCounts)
{
    SMaskParam param = MaskParam_Plain();
    param.xResPass = 4;
    param.yResPass = 2;
    param.resSplitType = ResSplit_X2Y2;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(mask.XResPass(), 2);
    EXPECT_EQ(mask.YResPass(), 1);
    EXPECT_EQ(mask.SplitCount_XRes_Get(), 2);
    EXPECT_EQ(mask.SplitCount_YRes_Get(), 2);
    EXPECT_EQ(XResSteps(mask), std::vector<int>({0, 272}));
    EXPECT_EQ(YResSteps(mask), std::vector<int>({0}));
}

TEST(MaskDataBaseGeometry, StepOfAHeadForHosts)
{
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(544, 4, 50.0F), 85);
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(180, 4, 0.0F), 45);
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(100, 3, 33.3F), 25);
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(544, 1, 100.0F), 136);
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(0, 4, 50.0F), 0);
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(3, 4, 0.0F), 0);
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(-7, 2, 0.0F), -3); // toward zero
}

TEST(MaskDataBaseGeometry, StepOfAHeadRoundsInTheAgreedOrder)
{
    // 84 % in single precision is 14092861 / 2^24. Times 75 that is 63 - 33 / 2^24; singles near 63 lie
    // 64 / 2^24 apart, so the product falls to the one below 63 and 62 rows are taken. Percent times 0.75
    // first, dividing last, or double precision would each take 63.
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(100, 1, 84.0F), 38);
    // 78 % likewise: 150 times it is just below 117. Dividing by 100 last would give 117.
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(200, 1, 78.0F), 84);
    // 4 % is just below 0.04, but 75 times it rounds up to 3: kept in single precision, not wider.
    EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(100, 1, 4.0F), 97);
}
