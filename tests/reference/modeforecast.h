#pragma once

#include "dotweave/maskparam.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

/// @file
/// A second opinion on which modes can be built and how large they are, in 64 bits throughout. Shares no code
/// with the library.

/// What Create is going to do with a record.
struct SForecast {
    bool isBuilt = false;
    std::int64_t blockBytes = 0;                  ///< of all colours
    std::int64_t workerBytes = 0;                 ///< of one worker's blocks
    std::int64_t planesBytes = 0;                 ///< of all threshold planes
    std::int64_t step = 0, height = 0;            ///< in nozzle rows
    std::int64_t matrixHeight = 0, positions = 0; ///< threshold rows in use, and band positions
};

inline bool Fits(std::int64_t size)
{
    return size <= 0x7FFFFFFF;
}

/// Where the band positions repeat.
struct SRepeat {
    std::int64_t matrixHeight = 0, positions = 0;
};

inline SRepeat Repeat_Forecast(std::int64_t step)
{
    SRepeat best;
    for (std::int64_t height = 544; height > 272; --height) {
        const std::int64_t positions = height / std::gcd(height, step);
        if (positions * step >= 0x7FFFFFFF)
            continue;
        if (positions <= 20)
            return {height, positions};
        if (best.positions == 0 || positions < best.positions)
            best = {height, positions};
    }
    return best;
}

/// Step and height of the mask in nozzle rows; 0 for a head that cannot be laid out.
struct SLayoutForecast {
    std::int64_t step = 0, height = 0;
};

inline SLayoutForecast Layout_Forecast(const SMaskParam& param, std::int64_t shares)
{
    const std::int64_t rows = param.nozzleCount;
    const std::int64_t passes = param.basePass;
    if (param.featherMode == FeatherMode_None) {
        const std::int64_t step = rows / passes / shares * shares;
        const std::int64_t rest = rows - passes * step;
        return step < 1 ? SLayoutForecast() : SLayoutForecast{step, passes * step + std::min(rest, step)};
    }
    const float part = param.featherPercent / 100.0F;
    const auto amount = static_cast<std::int64_t>(static_cast<float>(param.nozzleCount) * 0.75F * part);
    if (param.featherNozzleType != FeatherNozzle_Smooth_2) {
        const std::int64_t step = (rows - amount) / passes / shares * shares;
        return step < 1 ? SLayoutForecast() : SLayoutForecast{step, rows};
    }
    const std::int64_t step = (rows - amount / (passes + 1)) / passes / shares * shares;
    const std::int64_t feather = rows - passes * step; // none leaves no band, too much no pass zone
    return step < 1 || feather < 1 || feather > step ? SLayoutForecast() : SLayoutForecast{step, rows};
}

inline bool IsInRange(const SMaskParam& param)
{
    if (param.colorTimes < 1 || param.colorTimes > param.basePass || param.nozzleCount < 1 ||
        param.colorCount < 1 || param.bitsPerPixel < 1 || param.bitsPerPixel > 2)
        return false;
    if (param.featherMode == FeatherMode_None)
        return true;
    if (param.featherMode != FeatherMode_Nozzle || param.featherNozzleType < 1 || param.featherNozzleType > 3)
        return false;
    const bool isLevelRead = param.featherNozzleType != FeatherNozzle_Smooth_2;
    return param.featherPercent >= 0.0F && param.featherPercent <= 100.0F &&
           (!isLevelRead || (param.featherLevelPercent >= 0 && param.featherLevelPercent <= 100));
}

inline SForecast Forecast(const SMaskParam& param)
{
    const int split = param.resSplitType;
    const std::int64_t x = param.xResPass / (split == 1 || split == 5 ? 2 : 1);
    const std::int64_t y = param.yResPass / (split == 2 || split == 5 ? 2
                                             : split == 3             ? 3
                                             : split == 4             ? 4
                                                                      : 1);
    if (!IsInRange(param) || x < 1 || y < 1 || !Fits(544 * x * param.bitsPerPixel + 7))
        return {};
    const SLayoutForecast layout = Layout_Forecast(param, x * y);
    const std::int64_t lineBytes = 68 * x * param.bitsPerPixel;
    if (layout.step < 1 || !Fits(layout.height * y) || !Fits(layout.height * y * lineBytes))
        return {};
    const SRepeat repeat = Repeat_Forecast(layout.step);
    const std::int64_t colorBytes = layout.height * y * lineBytes * repeat.positions;
    const std::int64_t planesBytes = 544 * repeat.matrixHeight * 2 * param.colorCount;
    const std::int64_t workerBytes = 544 * layout.height * x;
    if (repeat.positions == 0 || !Fits(colorBytes) || !Fits(colorBytes * param.colorCount))
        return {};
    return {true,          colorBytes * param.colorCount, workerBytes,     planesBytes, layout.step,
            layout.height, repeat.matrixHeight,           repeat.positions};
}
