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
using Steps = std::vector<int>;

/// A mask object as it is before its resolution set-up, on which the set-up then runs.
class CResolved {
public:
    CResolved(int xResPass, int yResPass, int featherMode, int step, int height, int lead)
    {
        SMaskData_Base_Peek peek{m_mask};
        peek.Current().xResPass = xResPass;
        peek.Current().yResPass = yResPass;
        peek.Current().featherMode = featherMode;
        peek.BaseMaskWidth() = 544;
        peek.StepHeight_NoneRes() = step;
        peek.MaskHeight_NoneRes() = height;
        peek.LeadBlankHeight_NoneRes() = lead;
        const CLogCapture log;
        m_isDone = peek.InitResParam();
        m_records = log.Records();
    }

    CMaskData_Base m_mask;
    bool m_isDone;
    Records m_records;
};

Steps XResSteps(const CMaskData_Base& mask)
{
    return {mask.XResStep(), mask.XResStep() + mask.XResPass()};
}

Steps YResSteps(const CMaskData_Base& mask)
{
    return {mask.YResStep(), mask.YResStep() + mask.YResPass()};
}

SLogRecord LeadTooLarge(int height, int lead)
{
    return {SCOPE_RES_PARAM, UNIT_MASK, 941, 1,
            "m_maskHeight = " + std::to_string(height) + ", m_leadBlankHeight = " + std::to_string(lead)};
}

} // namespace

TEST(Resolution, TwoByTwoPassesAsWorkedByHand)
{
    const CResolved resolved(2, 2, FeatherMode_None, 8, 32, 24);
    EXPECT_TRUE(resolved.m_isDone);
    EXPECT_EQ(YResSteps(resolved.m_mask), (Steps{0, 8}));
    EXPECT_EQ(XResSteps(resolved.m_mask), (Steps{0, 4}));
    EXPECT_EQ(resolved.m_mask.StepHeight_IncludeRes(), 16);
    EXPECT_EQ(resolved.m_mask.RealStepHeight_IncludeRes(), 4);
    EXPECT_EQ(resolved.m_mask.MaskWidth(), 1088);
    EXPECT_EQ(resolved.m_mask.MaskHeight_IncludeRes(), 64);
    EXPECT_EQ(resolved.m_mask.LeadBlankHeight_IncludeRes(), 60);
}

TEST(Resolution, PassesAreEvenlySpaced)
{
    for (int x = 1; x <= 6; ++x)
        for (int y = 1; y <= 6; ++y)
            for (int rows = 1; rows <= 7; ++rows) {
                SCOPED_TRACE(testing::Message() << "x " << x << ", y " << y << ", rows " << rows);
                const int step = rows * x * y;
                const CResolved resolved(x, y, FeatherMode_Nozzle, step, 3 * step, 2 * step);
                const CMaskData_Base& mask = resolved.m_mask;
                ASSERT_TRUE(resolved.m_isDone);
                EXPECT_EQ(resolved.m_records, Records());
                for (int i = 0; i < y; ++i)
                    EXPECT_EQ(mask.YResStep()[i], rows * x * y * i);
                for (int i = 0; i < x; ++i)
                    EXPECT_EQ(mask.XResStep()[i], rows * y * i);
                EXPECT_EQ(mask.StepHeight_IncludeRes(), rows * x * y * y);
                EXPECT_EQ(mask.RealStepHeight_IncludeRes(), rows * y);
                EXPECT_EQ(mask.MaskWidth(), 544 * x);
                EXPECT_EQ(mask.MaskHeight_IncludeRes(), 3 * rows * x * y * y);
                EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 3 * rows * x * y * y - rows * y);
            }
}

TEST(Resolution, StepsThatDoNotDivideAreRoundedDown)
{
    // The passes need not divide the step of a derived object: 7 * 3 = 21; 21 / 2 = 10; 10 / 3 = 3.
    const CResolved resolved(2, 3, FeatherMode_Nozzle, 7, 20, 10);
    EXPECT_TRUE(resolved.m_isDone);
    EXPECT_EQ(XResSteps(resolved.m_mask), (Steps{0, 3}));
    EXPECT_EQ(resolved.m_mask.RealStepHeight_IncludeRes(), 3);
    EXPECT_EQ(resolved.m_mask.LeadBlankHeight_IncludeRes(), 57);
}

TEST(Resolution, TheLeadMustLeaveRowsOfTheBand)
{
    // The lead is 24 * 2 lines. Hard edges add the last Y pass, 8 lines, and the last X pass, 4: 60 in all.
    struct SCase {
        int featherMode, height, lead;
        bool isDone;
    };
    for (const SCase& c :
         {SCase{FeatherMode_None, 31, 60, true}, SCase{FeatherMode_None, 30, 60, false},
          SCase{FeatherMode_None, 29, 60, false}, SCase{FeatherMode_Nozzle, 25, 48, true},
          SCase{FeatherMode_Nozzle, 24, 48, false}, SCase{FeatherMode_Nozzle, 20, 48, false}}) {
        SCOPED_TRACE(testing::Message() << "mode " << c.featherMode << ", height " << c.height);
        const CResolved resolved(2, 2, c.featherMode, 8, c.height, 24);
        EXPECT_EQ(resolved.m_isDone, c.isDone);
        EXPECT_EQ(resolved.m_mask.MaskHeight_IncludeRes(), 2 * c.height);
        EXPECT_EQ(resolved.m_mask.LeadBlankHeight_IncludeRes(), c.isDone ? 2 * c.height - 4 : c.lead);
        EXPECT_EQ(resolved.m_records, c.isDone ? Records() : Records{LeadTooLarge(2 * c.height, c.lead)});
    }
}

TEST(Resolution, TheLeadRuleReadsTheModeAfterTheSwitch)
{
    // 545 rows in 4 passes of 4: step 136, one row over, lead 544 of 545. With the offsets it would not fit.
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 545;
    param.basePass = 4;
    param.xResPass = param.yResPass = 2;
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(param));
    EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 1090 - 68);
}

TEST(Resolution, ASplitHalvesTheOffsets)
{
    SMaskParam param = MaskParam_Plain();
    param.xResPass = 4;
    param.yResPass = 2;
    param.resSplitType = ResSplit_X2Y2;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(XResSteps(mask), (Steps{0, 272}));
    EXPECT_EQ(YResSteps(mask), Steps{0});
}

TEST(StepHeadNozzle, HeadsAsWorkedByHand)
{
    struct SCase {
        int nozzleCount, basePass;
        float percent;
        int step;
    };
    const SCase cases[] = {
        {544, 4, 50.0F, 85},
        {180, 4, 0.0F, 45},
        {100, 3, 33.3F, 25},
        {544, 1, 100.0F, 136},
        {0, 4, 50.0F, 0},
        {3, 4, 0.0F, 0},
        {-7, 2, 0.0F, -3}, // toward zero
        // 84 % in single precision is 14092861 / 2^24. Times 75 that is 63 - 33 / 2^24. Singles near 63 lie
        // 64 / 2^24 apart, so the product falls to the one below 63, and 62 rows are taken. Percent times
        // 0.75 first, dividing last, or double precision would each take 63.
        {100, 1, 84.0F, 38},
        {200, 1, 78.0F,
         84}, // likewise: 150 times 78 % is just below 117, which dividing by 100 last would give
        {100, 1, 4.0F, 97}, // just below 0.04, but 75 times it rounds up to 3 in single precision
    };
    for (const SCase& c : cases)
        EXPECT_EQ(CMaskData_Base::StepHeadNozzle_Get(c.nozzleCount, c.basePass, c.percent), c.step)
            << c.nozzleCount << " rows, " << c.basePass << " passes, " << c.percent << '%';
}
