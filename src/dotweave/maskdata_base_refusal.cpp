#include "maskdata_base_refusal.h"

#include "dotweave/maskdata_base.h"

#include "int32.h"
#include "refusalreason.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace dotweave {

namespace {

bool IsSmooth_2(const SMaskGeometry& geometry)
{
    return Layout_Of(geometry.param) == ELayout::Smooth_2;
}

bool IsSmooth_3(const SMaskGeometry& geometry)
{
    return Layout_Of(geometry.param) == ELayout::Smooth_3;
}

bool IsPercent(float value)
{
    return std::isfinite(value) && value >= 0.0F && value <= 100.0F;
}

bool IsPercent(int value)
{
    return value >= 0 && value <= 100;
}

bool AreZonesBroken(const SMaskGeometry& geometry)
{
    const std::int64_t passes = geometry.param.basePass;
    return geometry.featherZone < 0 || geometry.passZone < 0 ||
           passes * geometry.passZone != geometry.passZones ||
           (passes + 1) * geometry.featherZone != geometry.featherZones ||
           geometry.passZones + geometry.featherZones > geometry.height;
}

/// The builder of smooth-2 tables never reads the step, so zones that fill the band make up for any step.
bool IsFilledByZones(const SMaskGeometry& geometry)
{
    return IsSmooth_2(geometry) && !AreZonesBroken(geometry) &&
           geometry.passZones + geometry.featherZones == geometry.height;
}

/// The resolution set-up checks that the lead blank leaves a band. Here it only has to fit, together with the
/// offsets of the last resolution passes, which are less than another band.
bool AreLinesTooMany(const SMaskGeometry& geometry)
{
    const std::int64_t lines = Position_Lines(geometry);
    const std::int64_t lead = geometry.lead * geometry.param.yResPass;
    return !Int32_Holds(lead) || !Int32_Holds(lead + lines) || !Int32_Holds(lines) ||
           !Int32_Holds(geometry.step * geometry.param.yResPass);
}

/// Checked again at the end, as a derived mask object can change every number in its resolution set-up.
bool IsPositionTooLarge(const SMaskGeometry& geometry)
{
    return !Int32_Holds(Position_Lines(geometry)) || !Int32_Holds(Position_Bytes(geometry));
}

using enum ECreationStep;
using G = const SMaskGeometry&;

// A field that the mode never reads is no reason to refuse. At one step the first condition that applies
// gives the reason, and conditions may rely on those before them.
constexpr SRefusal REFUSALS[] = {
    {ColorTimes, [](G g) { return g.param.basePass < 1; }, Reason_BasePass},
    {ColorTimes, [](G g) { return g.param.colorTimes < 1; }, Reason_ColorTimes_TooFew},
    {ColorTimes, [](G g) { return g.param.colorTimes > g.param.basePass; }, Reason_ColorTimes_TooMany},

    {Param, [](G g) { return g.param.xResPass < 1; }, Reason_XResPass},
    {Param, [](G g) { return g.param.yResPass < 1; }, Reason_YResPass},
    {Param, [](G g) { return g.param.colorCount < 1; }, Reason_ColorCount},
    {Param, [](G g) { return g.param.bitsPerPixel != 1 && g.param.bitsPerPixel != 2; }, Reason_BitsPerPixel},
    {Param, [](G g) { return (IsSmooth_2(g) || IsSmooth_3(g)) && !IsPercent(g.param.featherPercent); },
     Reason_FeatherPercent},
    {Param, [](G g) { return IsSmooth_3(g) && !IsPercent(g.param.featherLevelPercent); },
     Reason_FeatherLevelPercent},
    {Param, [](G g) { return !Int32_Holds(Line_Bits(g) + 7); }, Reason_LineBits},

    {FeatherMode, [](G g) { return Layout_Of(g.param) == ELayout::UnknownMode; }, Reason_FeatherMode},
    {FeatherNozzle, [](G g) { return Layout_Of(g.param) == ELayout::UnknownProfile; },
     Reason_FeatherNozzleType},

    {Layout, [](G g) { return g.step < 1; }, Reason_NoStep},
    // A step that rounding makes smaller than its feather zone has no room for a pass zone.
    {Layout, [](G g) { return IsSmooth_2(g) && g.featherZone > g.step; }, Reason_FeatherAboveStep},

    // Layouts whose cut table would be longer than the band. The library's own are never among them.
    {Band, [](G g) { return g.height < 1 || g.step < 1; }, Reason_Layout},
    {Band, [](G g) { return g.step > g.height && !IsFilledByZones(g); }, Reason_Layout},
    {Band, [](G g) { return Layout_Of(g.param) == ELayout::None && g.param.basePass * g.step > g.height; },
     Reason_Layout},
    {Band, [](G g) { return IsSmooth_2(g) && AreZonesBroken(g); }, Reason_Layout},
    {Band, AreLinesTooMany, Reason_Lines},
    {Band, IsPositionTooLarge, Reason_Position},

    {Lead, [](G g) { return Position_Lines(g) <= LeadBlank_IncludeRes(g); }, Reason_NoBand},

    {MaskSize, [](G g) { return g.matrixHeight < 1 || g.matrixWidth < 1 || g.positionCount < 1; },
     Reason_NoRepeat},
    {MaskSize, IsPositionTooLarge, Reason_Position},
    // The cells of a plane are counted in 32 bits. All planes together may take what memory there is.
    {MaskSize, [](G g) { return !Int32_Holds(g.matrixWidth * g.matrixHeight); }, Reason_Plane},
    {MaskSize, [](G g) { return !Int32_Holds(OneColor_Bytes(g)); }, Reason_OneColor},
    {MaskSize, [](G g) { return !Int32_Holds(OneColor_Bytes(g) * g.param.colorCount); }, Reason_AllColors},
};

} // namespace

const SRefusal* Refusal_Find(ECreationStep step, const SMaskGeometry& geometry)
{
    const auto* const found =
        std::find_if(std::begin(REFUSALS), std::end(REFUSALS), [&](const SRefusal& refusal) {
            return refusal.step == step && refusal.applies(geometry);
        });
    return found == std::end(REFUSALS) ? nullptr : found;
}

} // namespace dotweave

bool CMaskData_Base::IsRefusedAt(dotweave::ECreationStep step) const
{
    return dotweave::Refusal_Find(step, Geometry_Get()) != nullptr;
}
