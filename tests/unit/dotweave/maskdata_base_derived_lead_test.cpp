#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "refusals.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// A derived mask object of 100 rows in steps of 40 with a lead blank of its own. In 2 Y resolution passes
/// the mask has 200 lines, and the last of them stands 40 rows further down.
class CLeadMask : public CMaskData_Base {
public:
    explicit CLeadMask(int lead) : m_lead(lead) {}

    bool Create_InTwoYPasses(int featherMode)
    {
        SMaskParam param = MaskParam_Feathered(FeatherNozzle_Smooth_3, 100, 2, 50.0F);
        param.featherMode = featherMode;
        param.yResPass = 2;
        return Create(param);
    }

protected:
    bool InitNoneRes_FeatherNone() override { return InitNoneRes_FeatherNozzle_Smooth_3(); }
    bool InitNoneRes_FeatherNozzle_Smooth_3() override
    {
        m_stepHeight_NoneRes = 40;
        m_maskHeight_NoneRes = 100;
        m_leadBlankHeight_NoneRes = m_lead;
        return true;
    }

private:
    int m_lead;
};

/// What the creation logs; it must fail.
Records RefusalOf(int lead, int featherMode)
{
    const CLogCapture log;
    CLeadMask mask(lead);
    EXPECT_FALSE(mask.Create_InTwoYPasses(featherMode));
    return log.Records();
}

Records NoBandLeft(int lead)
{
    return {{SCOPE_RES_PARAM, UNIT_MASK, 941, 1,
             "m_maskHeight = 200, m_leadBlankHeight = " + std::to_string(lead)},
            CreateFailure(118)};
}

} // namespace

TEST(DerivedLead, RefusedWhenItLeavesNoBand)
{
    EXPECT_EQ(RefusalOf(100, FeatherMode_Nozzle), NoBandLeft(200));
    EXPECT_EQ(RefusalOf(101, FeatherMode_Nozzle), NoBandLeft(202));
    EXPECT_EQ(RefusalOf(MOST / 2 - 100, FeatherMode_Nozzle), NoBandLeft(MOST - 201));
    // Hard edges add the 40 rows of the last Y resolution pass.
    EXPECT_EQ(RefusalOf(80, FeatherMode_None), NoBandLeft(200));
    EXPECT_EQ(RefusalOf(81, FeatherMode_None), NoBandLeft(202));
    EXPECT_EQ(RefusalOf(MOST / 2 - 100, FeatherMode_None), NoBandLeft(MOST - 161));
}

TEST(DerivedLead, RefusedBeyond32Bits)
{
    for (const int featherMode : {FeatherMode_Nozzle, FeatherMode_None}) {
        for (const int lead : {MOST / 2 - 99, MOST / 2 + 1, MOST, LEAST / 2 - 1, LEAST})
            EXPECT_EQ(RefusalOf(lead, featherMode), Records({CreateFailure(117)})) << lead;
    }
}

TEST(DerivedLead, OtherwiseOnlyServesAsTheCheck)
{
    const CLogCapture log;
    for (const int lead : {99, 0, -1, LEAST / 2}) {
        CLeadMask mask(lead);
        ASSERT_TRUE(mask.Create_InTwoYPasses(FeatherMode_Nozzle)) << lead;
        EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 200 - 40) << lead; // the height less the real step
    }
    for (const int lead : {79, -1, LEAST / 2}) {
        CLeadMask mask(lead);
        ASSERT_TRUE(mask.Create_InTwoYPasses(FeatherMode_None)) << lead;
        EXPECT_EQ(mask.LeadBlankHeight_IncludeRes(), 200 - 40) << lead;
    }
    EXPECT_EQ(log.Records(), Records());
}
