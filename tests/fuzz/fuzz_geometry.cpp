// Any 48 bytes as the record of a print mode, whose geometry alone is computed: whether it can be built, and
// how large it would be, against a second opinion. No masks are made, so there are many thousand runs a second.

#include "dotweave/maskparam_refusal.h"
#include "fuzzing.h"
#include "maskparams.h"
#include "modeforecast.h"
#include "modesearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

using namespace dotweave;

namespace {

/// Reasons that name the nearest value that builds take a hundred times as long as all the rest.
constexpr std::uint32_t REASON_EVERY = 512;

/// A record whose fields are near the ranges that presses use, some just outside of them.
SMaskParam Param_Near(const SMaskParam& any)
{
    SMaskParam param = any;
    param.nozzleCount = Fuzz_Number(any.nozzleCount, 0, 5000);
    param.basePass = Fuzz_Number(any.basePass, 0, 70);
    param.xResPass = Fuzz_Number(any.xResPass, 0, 33);
    param.yResPass = Fuzz_Number(any.yResPass, 0, 33);
    param.colorCount = Fuzz_Number(any.colorCount, 0, 65);
    param.bitsPerPixel = Fuzz_Number(any.bitsPerPixel, 0, 3);
    param.featherMode = Fuzz_Number(any.featherMode, -1, 2);
    if (!(any.featherPercent >= -1.0F && any.featherPercent <= 101.0F)) // so written, a NaN is replaced too
        param.featherPercent = 0.25F * static_cast<float>(Fuzz_Number(any.nozzleCount, -4, 404));
    param.featherNozzleType = Fuzz_Number(any.featherNozzleType, 0, 5);
    param.colorTimes = Fuzz_Number(any.colorTimes, 0, std::max(param.basePass + 1, 1));
    param.featherLevelPercent = Fuzz_Number(any.featherLevelPercent, -1, 101);
    param.resSplitType = Fuzz_Number(any.resSplitType, -1, 6);
    return param;
}

/// One line of ASCII, or nothing for a mode that builds.
void ExpectReason(const SMaskParam& param, bool isBuilt)
{
    const std::string reason = MaskParam_Refusal(param);
    EXPECT_EQ(reason.empty(), isBuilt) << reason;
    EXPECT_TRUE(std::all_of(reason.begin(), reason.end(), [](char c) { return c >= ' ' && c <= '~'; }))
        << reason;
}

void Mode_Check(const SMaskParam& param, bool withReason)
{
    const SForecast forecast = Forecast(param);
    SMaskGeometry geometry;
    const bool isBuilt = Mode_Try(param, geometry) == nullptr;
    const SMaskSize size = MaskParam_Size(param);
    const bool isRight = isBuilt == forecast.isBuilt && size.maskBytes == forecast.blockBytes &&
                         size.peakBytes >= size.maskBytes;
    EXPECT_TRUE(isRight) << param << ": built " << isBuilt << ", bytes " << size.maskBytes << " instead of "
                         << forecast.isBuilt << ' ' << forecast.blockBytes;
    if (isBuilt) {
        const bool isAlike = geometry.step == forecast.step && geometry.height == forecast.height &&
                             geometry.matrixHeight == forecast.matrixHeight &&
                             geometry.positionCount == forecast.positions;
        EXPECT_TRUE(isAlike) << param << ": step " << geometry.step << ", height " << geometry.height
                             << ", matrix " << geometry.matrixHeight << ", positions "
                             << geometry.positionCount;
    }
    if (withReason)
        ExpectReason(param, isBuilt);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SMaskParam param;
    if (size < sizeof param)
        return 0;
    std::memcpy(&param, data, sizeof param);
    static std::uint32_t s_runCount = 0;
    const bool withReason = s_runCount++ % REASON_EVERY == 0;
    Mode_Check(param, withReason);
    Mode_Check(Param_Near(param), withReason);
    return 0;
}
