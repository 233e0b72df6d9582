#pragma once

#include "dotweave/maskdata_base.h"
#include "logcapture.h"
#include "maskparams.h"
#include "peek.h"

#include <ostream>
#include <vector>

/// @file
/// The nozzle-row set-up of a mask object, run on its own and looked at from all sides.

/// A member that a set-up step must not have touched still has this value.
inline constexpr int UNTOUCHED = -7777;

/// What the set-up in nozzle rows leaves behind.
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

/// The set-up of one head, with everything that it sets or may switch.
struct SSetUp {
    bool isDone = false;
    SLayout layout;
    int featherMode = 0;
    int featherNozzleType = 0;
    std::vector<SLogRecord> records;
};

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

/// Hard edges; the feather profile is not read and shows a switch.
inline SMaskParam FeatherNone(int nozzleCount, int basePass, int xResPass, int yResPass)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    param.featherNozzleType = FeatherNozzle_Smooth_3;
    return param;
}

/// Feathered edges at the given resolution passes.
inline SMaskParam Feathered(int type, int nozzleCount, int basePass, int xResPass, int yResPass,
                            float percent)
{
    SMaskParam param = MaskParam_Feathered(type, nozzleCount, basePass, percent);
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    return param;
}

/// A layout without zones of its own.
inline SLayout HardLayout(int step, int maskHeight, int leadBlank)
{
    SLayout layout;
    layout.step = step;
    layout.maskHeight = maskHeight;
    layout.leadBlank = leadBlank;
    return layout;
}
