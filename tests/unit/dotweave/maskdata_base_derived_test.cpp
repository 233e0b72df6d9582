#include "dotweave/maskdata_base.h"

#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace {

using Records = std::vector<SLogRecord>;

/// A derived mask object whose set-up steps run what the test gives it, then the library's own step.
class CHookedMask : public CMaskData_Base {
public:
    using Hook = std::function<bool(SMaskData_Base_Peek)>;

    Hook m_featherNone, m_smooth3, m_resParam; ///< a hook replaces the step
    std::vector<std::string> m_calls;

    bool OwnFeatherNone() { return CMaskData_Base::InitNoneRes_FeatherNone(); }
    bool OwnSmooth3() { return CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_3(); }
    bool OwnResParam() { return CMaskData_Base::InitResParam(); }

    /// Where the library's virtual table keeps each set-up step, in the order of the steps below.
    static std::array<std::ptrdiff_t, 3> SlotOffsets();

protected:
    bool InitNoneRes_FeatherNone() override
    {
        m_calls.emplace_back("FeatherNone");
        return m_featherNone ? m_featherNone(SMaskData_Base_Peek{*this}) : OwnFeatherNone();
    }
    bool InitNoneRes_FeatherNozzle_Smooth_3() override
    {
        m_calls.emplace_back("Smooth3");
        return m_smooth3 ? m_smooth3(SMaskData_Base_Peek{*this}) : OwnSmooth3();
    }
    bool InitResParam() override
    {
        m_calls.emplace_back("ResParam");
        return m_resParam ? m_resParam(SMaskData_Base_Peek{*this}) : OwnResParam();
    }
};

std::array<std::ptrdiff_t, 3> CHookedMask::SlotOffsets()
{
    // In this ABI a pointer to a virtual member starts with its offset in the table plus one.
    const auto offset = [](bool (CHookedMask::*step)()) {
        std::ptrdiff_t first = 0;
        std::memcpy(&first, &step, sizeof first);
        return first - 1;
    };
    return {offset(&CHookedMask::InitNoneRes_FeatherNone),
            offset(&CHookedMask::InitNoneRes_FeatherNozzle_Smooth_3), offset(&CHookedMask::InitResParam)};
}

/// What Create of a derived object logs; it must fail.
Records RefusalOf(CHookedMask& mask, const SMaskParam& param)
{
    const CLogCapture log;
    EXPECT_FALSE(mask.Create(param));
    return log.Records();
}

} // namespace

TEST(Derived, VirtualStepsFollowTheDestructor)
{
#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
    constexpr std::ptrdiff_t SLOT = sizeof(void*); // the destructor takes two slots in this ABI
    EXPECT_EQ(CHookedMask::SlotOffsets(), (std::array<std::ptrdiff_t, 3>{2 * SLOT, 3 * SLOT, 4 * SLOT}));
#else
    GTEST_SKIP() << "how a pointer to a virtual member is stored is not known here";
#endif
}

TEST(Derived, SetUpStepsAreCalledThroughTheVirtualTable)
{
    CHookedMask hard;
    ASSERT_TRUE(static_cast<CMaskData_Base&>(hard).Create(MaskParam_Plain()));
    EXPECT_EQ(hard.m_calls, std::vector<std::string>({"FeatherNone", "ResParam"}));
    for (const int type : {FeatherNozzle_Smooth_3, FeatherNozzle_Smooth_3_Sine}) {
        CHookedMask feathered;
        ASSERT_TRUE(static_cast<CMaskData_Base&>(feathered).Create(MaskParam_Feathered(type, 100, 2, 50.0F)));
        EXPECT_EQ(feathered.m_calls, std::vector<std::string>({"Smooth3", "ResParam"}));
    }
    CHookedMask smooth2; // its own set-up cannot be replaced
    ASSERT_TRUE(static_cast<CMaskData_Base&>(smooth2).Create(
        MaskParam_Feathered(FeatherNozzle_Smooth_2, 100, 2, 50.0F)));
    EXPECT_EQ(smooth2.m_calls, std::vector<std::string>({"ResParam"}));
}

TEST(Derived, StepsFindWhatTheStepsBeforeThemSet)
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 4;
    param.yResPass = 2;
    param.resSplitType = ResSplit_Y2;
    CHookedMask mask;
    mask.m_featherNone = [&](SMaskData_Base_Peek peek) {
        EXPECT_EQ(mask.MaskParam_Input().yResPass, 2);
        EXPECT_EQ(mask.YResPass(), 1);
        EXPECT_EQ(peek.BaseMaskHeight(), 544);
        EXPECT_EQ(peek.BaseMaskWidth(), 544);
        EXPECT_EQ(peek.StepHeight_NoneRes(), 0);
        return mask.OwnFeatherNone();
    };
    mask.m_resParam = [&](SMaskData_Base_Peek peek) {
        EXPECT_EQ(peek.StepHeight_NoneRes(), 136);
        EXPECT_EQ(mask.YResStep(), nullptr);
        EXPECT_EQ(peek.PositionCount(), 0);
        EXPECT_EQ(peek.MaskLineBytes(), 0);
        EXPECT_EQ(peek.MaskBlock(), nullptr);
        return mask.OwnResParam();
    };
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(mask.m_calls, std::vector<std::string>({"FeatherNone", "ResParam"}));
    EXPECT_EQ(SMaskData_Base_Peek{mask}.PositionCount(), 4);
}

TEST(Derived, FailingAssemblyLogsThroughEveryLevel)
{
    CHookedMask unknownMode;
    unknownMode.m_resParam = [&](SMaskData_Base_Peek peek) {
        peek.Current().featherMode = 9;
        return unknownMode.OwnResParam();
    };
    EXPECT_EQ(RefusalOf(unknownMode, MaskParam_Plain()),
              Records({{SCOPE_CUT_TABLE, UNIT_MASK, LINE_ANY, 2, "m_maskParam_Current.featherMode = 9"},
                       Failure(UNIT_MASK, SCOPE_MASK_DATA),
                       Failure(UNIT_MASK, SCOPE_MASK_CREATE, 120)}));

    const SMaskParam feathered = MaskParam_Feathered(FeatherNozzle_Smooth_3, 544, 4, 50.0F);
    CHookedMask unknownType;
    unknownType.m_resParam = [&](SMaskData_Base_Peek peek) {
        peek.Current().featherNozzleType = -3;
        return unknownType.OwnResParam();
    };
    EXPECT_EQ(RefusalOf(unknownType, feathered), Records({{SCOPE_CUT_TABLE, UNIT_MASK, LINE_ANY, 2,
                                                           "m_maskParam_Current.featherNozzleType = -3"},
                                                          Failure(UNIT_MASK, SCOPE_MASK_DATA),
                                                          Failure(UNIT_MASK, SCOPE_MASK_CREATE, 120)}));

    CHookedMask reserved; // the cut table dispatch refuses it without a record of its own
    reserved.m_resParam = [&](SMaskData_Base_Peek peek) {
        peek.Current().featherNozzleType = FeatherNozzle_Reserved;
        return reserved.OwnResParam();
    };
    EXPECT_EQ(RefusalOf(reserved, feathered),
              Records({Failure(UNIT_MASK, SCOPE_MASK_DATA), Failure(UNIT_MASK, SCOPE_MASK_CREATE, 120)}));
}

TEST(Derived, ADerivedObjectMayReplaceTheGeometry)
{
    CHookedMask mask;
    mask.m_featherNone = [](SMaskData_Base_Peek peek) {
        peek.StepHeight_NoneRes() = 100;
        peek.MaskHeight_NoneRes() = 200;
        peek.LeadBlankHeight_NoneRes() = 100;
        return true;
    };
    SMaskParam param = MaskParam_Plain();
    param.basePass = 2;
    const CLogCapture log;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(log.Records(), Records());
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 200);
    EXPECT_EQ(mask.StepHeight_IncludeRes(), 100);
    EXPECT_EQ(mask.MaskBytes_OneColor(), 200 * 5 * 68); // step 100 repeats after 5 positions
    int position = -1;
    EXPECT_NE(mask.MaskData_Get(0, position), nullptr);
}

TEST(Derived, RefusalByAReplacedStepFailsTheCreation)
{
    const auto refuse = [](SMaskData_Base_Peek) { return false; };
    CHookedMask none;
    none.m_featherNone = refuse;
    EXPECT_EQ(RefusalOf(none, MaskParam_Plain()), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
    EXPECT_EQ(none.m_calls, std::vector<std::string>({"FeatherNone"}));
    CHookedMask smooth3;
    smooth3.m_smooth3 = refuse;
    EXPECT_EQ(RefusalOf(smooth3, MaskParam_Feathered(FeatherNozzle_Smooth_3, 100, 2, 50.0F)),
              Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
    CHookedMask resolution;
    resolution.m_resParam = refuse;
    EXPECT_EQ(RefusalOf(resolution, MaskParam_Plain()),
              Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 118)}));
    EXPECT_EQ(SMaskData_Base_Peek{resolution}.MaskBlock(), nullptr);
}

TEST(Derived, NonsenseOfAReplacedSetUpIsRefused)
{
    constexpr int MOST = std::numeric_limits<int>::max();
    constexpr int LEAST = std::numeric_limits<int>::min();
    struct SNonsense {
        int step, height;
    };
    SMaskParam hard = MaskParam_Plain();
    hard.basePass = 2;
    hard.yResPass = 2;
    const std::vector<SNonsense> all = {{0, 0},       {0, 100},   {-1, 100},    {100, 0},     {100, -1},
                                        {-100, -100}, {101, 100}, {LEAST, 100}, {100, LEAST}, {LEAST, LEAST},
                                        {MOST, MOST}, {1, MOST},  {MOST, 1}};
    for (const SNonsense& nonsense : all) {
        SCOPED_TRACE(testing::Message() << "step " << nonsense.step << ", height " << nonsense.height);
        const auto set = [&](SMaskData_Base_Peek peek) {
            peek.StepHeight_NoneRes() = nonsense.step;
            peek.MaskHeight_NoneRes() = nonsense.height;
            return true;
        };
        CHookedMask none;
        none.m_featherNone = set;
        EXPECT_EQ(RefusalOf(none, hard), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
        CHookedMask smooth3;
        smooth3.m_smooth3 = set;
        SMaskParam feathered = MaskParam_Feathered(FeatherNozzle_Smooth_3, 100, 2, 50.0F);
        feathered.yResPass = 2;
        EXPECT_EQ(RefusalOf(smooth3, feathered), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
    }
    // Two hard passes of 60 rows do not fit into 100.
    CHookedMask overlong;
    overlong.m_featherNone = [](SMaskData_Base_Peek peek) {
        peek.StepHeight_NoneRes() = 60;
        peek.MaskHeight_NoneRes() = 100;
        return true;
    };
    EXPECT_EQ(RefusalOf(overlong, hard), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
}

TEST(Derived, NonsenseZonesOfAReplacedSetUpAreRefused)
{
    constexpr int MOST = std::numeric_limits<int>::max();
    struct SZones {
        int pass, passTotal, feather, featherTotal;
    };
    // 2 passes of a mask of 100 rows: pass zones are 2, feather zones 3.
    const std::vector<SZones> all = {{-1, -2, 34, 102},      {50, 100, -1, -3},       {20, 41, 10, 30},
                                     {20, 40, 10, 31},       {20, 40, 21, 63},        {MOST, -2, 0, 0},
                                     {0, 0, MOST, MOST - 2}, {MOST, MOST, MOST, MOST}};
    for (const SZones& zones : all) {
        SCOPED_TRACE(testing::Message() << "pass " << zones.pass << ", feather " << zones.feather);
        CHookedMask mask;
        mask.m_featherNone = [&](SMaskData_Base_Peek peek) {
            peek.Current().featherMode = FeatherMode_Nozzle;
            peek.Current().featherNozzleType = FeatherNozzle_Smooth_2;
            peek.StepHeight_NoneRes() = 40;
            peek.MaskHeight_NoneRes() = 100;
            peek.Smooth2PassHeight() = zones.pass;
            peek.Smooth2PassHeightTotal() = zones.passTotal;
            peek.Smooth2FeatherHeight() = zones.feather;
            peek.Smooth2FeatherHeightTotal() = zones.featherTotal;
            return true;
        };
        SMaskParam param = MaskParam_Plain();
        param.basePass = 2;
        EXPECT_EQ(RefusalOf(mask, param), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
    }
}

TEST(Derived, AMatrixWidthOfNothingIsRefused)
{
    for (const int width : {0, -1, std::numeric_limits<int>::min()}) {
        CHookedMask mask;
        mask.m_resParam = [&](SMaskData_Base_Peek peek) {
            peek.BaseMaskWidth() = width;
            return mask.OwnResParam();
        };
        EXPECT_EQ(RefusalOf(mask, MaskParam_Plain()), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 119)}));
    }
}

TEST(Derived, AStepLostInTheResolutionSetUpIsRefused)
{
    CHookedMask mask;
    mask.m_resParam = [&](SMaskData_Base_Peek peek) {
        const bool isDone = mask.OwnResParam();
        peek.StepHeight_NoneRes() = 0;
        return isDone;
    };
    EXPECT_EQ(RefusalOf(mask, MaskParam_Plain()), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 119)}));
}

TEST(Derived, ZonesThatFillTheBandMakeUpForAnyStep)
{
    // 2 passes: 3 feather zones of 10 rows and 2 pass zones of 35 make 100 rows; the step plays no part in
    // them.
    const auto smooth2 = [](int step, int height) {
        return [=](SMaskData_Base_Peek peek) {
            peek.Current().featherMode = FeatherMode_Nozzle;
            peek.Current().featherNozzleType = FeatherNozzle_Smooth_2;
            peek.StepHeight_NoneRes() = step;
            peek.MaskHeight_NoneRes() = height;
            peek.LeadBlankHeight_NoneRes() = 0;
            peek.Smooth2PassHeight() = 35;
            peek.Smooth2PassHeightTotal() = 70;
            peek.Smooth2FeatherHeight() = 10;
            peek.Smooth2FeatherHeightTotal() = 30;
            return true;
        };
    };
    SMaskParam param = MaskParam_Plain();
    param.basePass = 2;
    for (const int step : {100, 101, 136, 544}) {
        CHookedMask mask;
        mask.m_featherNone = smooth2(step, 100);
        EXPECT_TRUE(mask.Create(param)) << step;
        EXPECT_EQ(mask.MaskHeight_IncludeRes(), 100);
    }
    CHookedMask loose; // a row that no zone fills
    loose.m_featherNone = smooth2(102, 101);
    EXPECT_EQ(RefusalOf(loose, param), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
    CHookedMask steep; // a step that Y resolution takes out of 32 bits
    param.yResPass = 2;
    steep.m_featherNone = smooth2(std::numeric_limits<int>::max() / 2 + 1, 100);
    EXPECT_EQ(RefusalOf(steep, param), Records({Failure(UNIT_MASK, SCOPE_MASK_CREATE, 117)}));
}
