#include "failuremodes.h"

#include "dotweave/maskdata_base.h"

#include "logcapture.h"

#include <ostream>

namespace {

SMaskParam HardEdges(int basePass, int colorTimes)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 136 * basePass; // 4 positions
    param.basePass = basePass;
    param.colorTimes = colorTimes;
    return param;
}

SMaskParam Feathered(int featherNozzleType, int colorTimes)
{
    SMaskParam param = MaskParam_Feathered(featherNozzleType, 272, 4, 50.0F);
    param.colorTimes = colorTimes;
    return param;
}

SMaskParam TwoBits(SMaskParam param)
{
    param.bitsPerPixel = 2;
    return param;
}

SMaskParam InTwoColours(SMaskParam param)
{
    param.colorCount = 2;
    return param;
}

SMaskParam InResolutionPasses(SMaskParam param, int xResPass, int yResPass)
{
    param.xResPass = xResPass;
    param.yResPass = yResPass;
    return param;
}

SMaskParam WithRowsLeftOver()
{
    SMaskParam param = HardEdges(2, 1);
    ++param.nozzleCount;
    return param;
}

} // namespace

const std::vector<SFailureMode>& FailureModes()
{
    static const std::vector<SFailureMode> modes = {
        {"HardEdges", HardEdges(1, 1)},
        {"HardEdgesPrintedTwice", HardEdges(3, 2)},
        {"HardEdgesTurnedSmooth2", WithRowsLeftOver()},
        {"Smooth2", Feathered(FeatherNozzle_Smooth_2, 1)},
        {"Smooth2PrintedTwice", Feathered(FeatherNozzle_Smooth_2, 2)},
        {"Smooth3", Feathered(FeatherNozzle_Smooth_3, 1)},
        {"Smooth3PrintedTwice", Feathered(FeatherNozzle_Smooth_3, 2)},
        {"Smooth3Sine", Feathered(FeatherNozzle_Smooth_3_Sine, 1)},
        {"TwoBitsTwoColours", InTwoColours(TwoBits(HardEdges(1, 1)))},
        {"ResolutionPasses", InResolutionPasses(HardEdges(1, 1), 2, 2)},
        {"SineTwoBitsResolutionPasses",
         InResolutionPasses(TwoBits(Feathered(FeatherNozzle_Smooth_3_Sine, 1)), 2, 1)},
    };
    return modes;
}

std::ostream& operator<<(std::ostream& stream, const SFailureMode& mode)
{
    return stream << mode.name << ' ' << mode.param;
}

void FirstRecord_Log()
{
    const CLogCapture quiet;
    CMaskData_Base rejected;
    static_cast<void>(rejected.Create({}));
}
