#include "maskparams.h"

#include <ostream>

SMaskParam MaskParam_Plain()
{
    SMaskParam param = {};
    param.nozzleCount = 544;
    param.basePass = 1;
    param.xResPass = 1;
    param.yResPass = 1;
    param.colorCount = 1;
    param.bitsPerPixel = 1;
    param.featherMode = FeatherMode_None;
    param.featherPercent = 50.0F;
    param.colorTimes = 1;
    param.featherLevelPercent = 100;
    return param;
}

SMaskParam MaskParam_Small(int number)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = 8;
    param.featherLevelPercent = number;
    return param;
}

SMaskParam MaskParam_Feathered(int featherNozzleType, int nozzleCount, int basePass, float featherPercent)
{
    SMaskParam param = MaskParam_Plain();
    param.nozzleCount = nozzleCount;
    param.basePass = basePass;
    param.featherMode = FeatherMode_Nozzle;
    param.featherNozzleType = featherNozzleType;
    param.featherPercent = featherPercent;
    return param;
}

std::ostream& operator<<(std::ostream& stream, const SMaskParam& param)
{
    return stream << "{nozzleCount " << param.nozzleCount << ", basePass " << param.basePass << ", xResPass "
                  << param.xResPass << ", yResPass " << param.yResPass << ", colorCount " << param.colorCount
                  << ", bitsPerPixel " << param.bitsPerPixel << ", featherMode " << param.featherMode
                  << ", featherPercent " << param.featherPercent << ", featherNozzleType "
                  << param.featherNozzleType << ", colorTimes " << param.colorTimes
                  << ", featherLevelPercent " << param.featherLevelPercent << ", resSplitType "
                  << param.resSplitType << "}";
}
