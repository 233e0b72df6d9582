#include "maskgeometry.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace dotweave {

namespace {

/// Band positions that are few enough to end the search for a matrix height.
constexpr int POSITION_COUNT_GOOD = 20;

/// Fills in smooth-2 zones: a feather zone before, between and after the pass zones.
void Zones_Set(SMaskGeometry& geometry, std::int64_t featherZone)
{
    const std::int64_t passes = geometry.param.basePass;
    geometry.featherZone = featherZone;
    geometry.featherZones = (passes + 1) * featherZone;
    geometry.passZone = geometry.step - featherZone;
    geometry.passZones = passes * geometry.passZone;
    geometry.height = geometry.passZones + geometry.featherZones;
    geometry.lead = geometry.height - featherZone;
}

} // namespace

SSplitCounts SplitCounts(int resSplitType)
{
    switch (resSplitType) {
    case ResSplit_X2:
        return {2, 1};
    case ResSplit_Y2:
        return {1, 2};
    case ResSplit_Y3:
        return {1, 3};
    case ResSplit_Y4:
        return {1, 4};
    case ResSplit_X2Y2:
        return {2, 2};
    default:
        return {1, 1};
    }
}

ELayout Layout_Of(const SMaskParam& param)
{
    if (param.featherMode == FeatherMode_None)
        return ELayout::None;
    if (param.featherMode != FeatherMode_Nozzle)
        return ELayout::UnknownMode;
    switch (param.featherNozzleType) {
    case FeatherNozzle_Smooth_2:
        return ELayout::Smooth_2;
    case FeatherNozzle_Smooth_3:
    case FeatherNozzle_Smooth_3_Sine:
        return ELayout::Smooth_3;
    default:
        return ELayout::UnknownProfile;
    }
}

void Geometry_Split(SMaskGeometry& geometry)
{
    const SSplitCounts split = SplitCounts(geometry.param.resSplitType);
    geometry.param.xResPass /= split.x;
    geometry.param.yResPass /= split.y;
}

void Geometry_FeatherNone(SMaskGeometry& geometry)
{
    SMaskParam& param = geometry.param;
    const std::int64_t passes = param.basePass;
    geometry.step = StepHeight_Rounded(param.nozzleCount / param.basePass, param.xResPass, param.yResPass);
    if (geometry.step < 1)
        return;
    const std::int64_t rest = param.nozzleCount - passes * geometry.step;
    if (rest <= 0) {
        geometry.height = passes * geometry.step;
        geometry.lead = (passes - 1) * geometry.step;
        return;
    }
    // Deliberate: rows left over would print a band edge of their own, so they become feather zones.
    param.featherMode = FeatherMode_Nozzle;
    param.featherNozzleType = FeatherNozzle_Smooth_2;
    Zones_Set(geometry, std::min(rest, geometry.step));
}

void Geometry_Smooth_2(SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    const std::int64_t passes = param.basePass;
    const auto share =
        static_cast<int>(FeatherAmount(param.nozzleCount, param.featherPercent) / (passes + 1));
    geometry.step =
        StepHeight_Rounded((param.nozzleCount - share) / param.basePass, param.xResPass, param.yResPass);
    if (geometry.step >= 1)
        Zones_Set(geometry, param.nozzleCount - passes * geometry.step);
}

void Geometry_Smooth_3(SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    geometry.height = param.nozzleCount;
    geometry.step =
        StepHeight_Rounded(StepHeight_Feathered(param.nozzleCount, param.basePass, param.featherPercent),
                           param.xResPass, param.yResPass);
    if (geometry.step >= 1)
        geometry.lead = geometry.height - FeatherRows(geometry.height, geometry.step);
}

void Geometry_MaskSize(SMaskGeometry& geometry)
{
    // The masks repeat after the least common multiple of the matrix rows in use and the step. Giving up some
    // rows of the matrix keeps the number of positions, and so the memory, small.
    std::int64_t best = std::numeric_limits<std::int32_t>::max();
    std::int64_t bestHeight = -1;
    geometry.lineBytes =
        MaskLineBytes(geometry.matrixWidth, geometry.param.bitsPerPixel, geometry.param.xResPass);
    geometry.positionCount = 0;
    if (geometry.step < 1)
        return;
    const std::int64_t fullHeight = geometry.matrixHeight;
    for (std::int64_t i = 0; i < fullHeight / 2; ++i) {
        const std::int64_t candidate = fullHeight - i;
        const std::int64_t repeat = std::lcm(candidate, geometry.step);
        if (repeat >= best)
            continue;
        best = repeat;
        bestHeight = candidate;
        if (best / geometry.step <= POSITION_COUNT_GOOD)
            break;
    }
    geometry.matrixHeight = bestHeight;
    geometry.positionCount = best / geometry.step;
}

std::int64_t LeadBlank_IncludeRes(const SMaskGeometry& geometry)
{
    const std::int64_t xPasses = geometry.param.xResPass;
    const std::int64_t yPasses = geometry.param.yResPass;
    const std::int64_t lead = geometry.lead * yPasses;
    // Deliberate: reads the current mode, which the feather-none set-up may have switched.
    if (geometry.param.featherMode == FeatherMode_Nozzle)
        return lead;
    return lead + geometry.step * (yPasses - 1) + geometry.step / xPasses * (xPasses - 1);
}

} // namespace dotweave
