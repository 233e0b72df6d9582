#include "pressmodes.h"

namespace {

/// Hard edges, one bit, no resolution passes. featherPercent is that of the sample record and is not read.
SMaskParam Mode_Hard(int nozzleCount, int basePass, int colorCount)
{
    SMaskParam param = {};
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    param.xResPass = 1;
    param.yResPass = 1;
    param.colorCount = colorCount;
    param.bitsPerPixel = 1;
    param.featherMode = FeatherMode_None;
    param.featherPercent = 50.0F;
    param.colorTimes = 1;
    return param;
}

SMaskParam Mode_Smooth3(int nozzleCount, int basePass, int colorCount)
{
    SMaskParam param = Mode_Hard(nozzleCount, basePass, colorCount);
    param.featherMode = FeatherMode_Nozzle;
    param.featherNozzleType = FeatherNozzle_Smooth_3;
    param.featherLevelPercent = 100;
    return param;
}

SMaskParam Mode_W2()
{
    SMaskParam param = Mode_Smooth3(544, 8, 8);
    param.xResPass = 2;
    param.yResPass = 2;
    param.bitsPerPixel = 2;
    return param;
}

} // namespace

std::array<SPressMode, 4> PressModes_Get()
{
    return {{
        {"W0", Mode_Hard(544, 1, 1)},
        {"W1", Mode_Smooth3(544, 4, 4)},
        {"W2", Mode_W2()},
        {"W3", Mode_Hard(1088, 4, 6)},
    }};
}

SPressMode PressMode_W2Sine_Get()
{
    SPressMode mode = {"W2Sine", Mode_W2()};
    mode.param.featherNozzleType = FeatherNozzle_Smooth_3_Sine;
    return mode;
}
