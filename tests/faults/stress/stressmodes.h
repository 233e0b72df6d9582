#pragma once

#include "maskbytes.h"
#include "maskparams.h"

#include <cstdint>
#include <vector>

/// A mode and the bytes that an undisturbed creation gives it.
struct SStressMode {
    explicit SStressMode(const SMaskParam& mode) : param(mode), bytes(MaskBytes_Undisturbed(mode)) {}

    SMaskParam param;
    std::vector<std::uint8_t> bytes;
};

/// Small modes of one step height, so that each may be applied while any other is current: 34 nozzle rows,
/// hard edges over one to four passes, one and two bits, one to three colours. No two have the same bytes.
/// @param count  at most 12
inline std::vector<SStressMode> StressModes_OneStep(int count)
{
    std::vector<SStressMode> modes;
    for (int number = 0; number < count; ++number) {
        SMaskParam param = MaskParam_Plain();
        param.basePass = 1 + number % 4;
        param.nozzleCount = 34 * param.basePass;
        param.colorCount = 1 + number % 3;
        param.bitsPerPixel = 1 + number / 6;
        modes.emplace_back(param);
    }
    return modes;
}

/// Small modes of every kind: hard edges, each feather, the sine mask, resolution passes, two bits.
inline std::vector<SStressMode> StressModes_Mixed()
{
    std::vector<SStressMode> modes = StressModes_OneStep(3);
    for (int featherNozzleType = FeatherNozzle_Smooth_2; featherNozzleType <= FeatherNozzle_Smooth_3_Sine;
         ++featherNozzleType) {
        SMaskParam param = MaskParam_Feathered(featherNozzleType, 96, 2, 50.0F);
        modes.emplace_back(param);
        param.colorTimes = 2;
        param.bitsPerPixel = 2;
        param.xResPass = 2;
        modes.emplace_back(param);
    }
    return modes;
}
