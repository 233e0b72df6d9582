#pragma once

#include "dotweave/maskdata_base.h"
#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

/// @file
/// Runs the nozzle-row set-up of a mask object on its own and shows everything that it sets.

/// The value of a member that the set-up has not set.
inline constexpr int UNTOUCHED = -7777;

/// What the set-up in nozzle rows sets.
struct SLayout {
    int step = UNTOUCHED;
    int maskHeight = UNTOUCHED;
    int leadBlank = UNTOUCHED;
    int featherHeight = UNTOUCHED;
    int passHeight = UNTOUCHED;
    int featherHeightTotal = UNTOUCHED;
    int passHeightTotal = UNTOUCHED;
    bool operator==(const SLayout&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const SLayout& layout)
{
    return stream << "{step " << layout.step << ", mask " << layout.maskHeight << ", lead "
                  << layout.leadBlank << ", feather " << layout.featherHeight << ", pass "
                  << layout.passHeight << ", feather total " << layout.featherHeightTotal << ", pass total "
                  << layout.passHeightTotal << "}";
}

/// Feather zones of `feather` rows around pass zones, each pair one step.
inline SLayout Layout_Zones(int step, int passes, int feather)
{
    return {step,
            passes * step + feather,
            passes * step,
            feather,
            step - feather,
            (passes + 1) * feather,
            passes * (step - feather)};
}

/// A layout without zones of its own.
inline SLayout Layout_Hard(int step, int maskHeight, int leadBlank)
{
    SLayout layout;
    layout.step = step;
    layout.maskHeight = maskHeight;
    layout.leadBlank = leadBlank;
    return layout;
}

/// What the set-up of a head returns, sets, may switch and logs.
struct SSetUp {
    bool isDone = false;
    SLayout layout;
    int featherMode = 0;
    int featherNozzleType = 0;
    std::vector<SLogRecord> records = {};
    bool operator==(const SSetUp&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const SSetUp& setUp)
{
    return stream << (setUp.isDone ? "done " : "refused ") << setUp.layout << " mode " << setUp.featherMode
                  << " type " << setUp.featherNozzleType << ' ' << testing::PrintToString(setUp.records);
}

/// Runs the set-up on the record as the current copy, with every member that it may set at UNTOUCHED.
inline SSetUp SetUp_Of(const SMaskParam& param)
{
    const CLogCapture log;
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.Current() = param;
    peek.StepHeight_NoneRes() = peek.MaskHeight_NoneRes() = peek.LeadBlankHeight_NoneRes() = UNTOUCHED;
    peek.Smooth2FeatherHeight() = peek.Smooth2FeatherHeightTotal() = UNTOUCHED;
    peek.Smooth2PassHeight() = peek.Smooth2PassHeightTotal() = UNTOUCHED;
    SSetUp result;
    result.isDone = peek.InitNoneRes();
    result.layout = {peek.StepHeight_NoneRes(),      peek.MaskHeight_NoneRes(),
                     peek.LeadBlankHeight_NoneRes(), peek.Smooth2FeatherHeight(),
                     peek.Smooth2PassHeight(),       peek.Smooth2FeatherHeightTotal(),
                     peek.Smooth2PassHeightTotal()};
    result.featherMode = mask.MaskParam_Current().featherMode;
    result.featherNozzleType = mask.MaskParam_Current().featherNozzleType;
    result.records = log.Records();
    return result;
}

/// A head with hard edges. The feather type is not read and shows a switch.
inline SMaskParam Head_Hard(int nozzleCount, int basePass, int xResPass, int yResPass)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    param.featherNozzleType = FeatherNozzle_Smooth_3;
    return param;
}

/// A head with feathered edges.
inline SMaskParam Head_Feathered(int type, int nozzleCount, int basePass, int xResPass, int yResPass,
                                 float percent)
{
    SMaskParam param = Head_Hard(nozzleCount, basePass, xResPass, yResPass);
    param.featherMode = FeatherMode_Nozzle;
    param.featherNozzleType = type;
    param.featherPercent = percent;
    return param;
}
