#pragma once

#include "constants.h"
#include "dotweave/maskparam.h"

#include <algorithm>
#include <cstdint>

/// @file
/// The numbers of a mask, computed from its record: how the head divides into steps and zones, how many band
/// positions there are, how many bytes they take. Sizes are 64 bits wide until they are known to fit; the
/// mask object keeps them in 32 bits.

namespace dotweave {

/// Parts that a resSplitType makes of the X and of the Y resolution passes.
struct SSplitCounts {
    int x;
    int y;
};

SSplitCounts SplitCounts(int resSplitType);

/// How a record lays out the head.
enum class ELayout {
    None,           ///< hard edges
    Smooth_2,       ///< feather zones between pass zones
    Smooth_3,       ///< one ramp over the whole head, with or without the sine edge
    UnknownMode,    ///< a featherMode that nobody knows
    UnknownProfile, ///< feathered, by a profile that is reserved or unknown
};

ELayout Layout_Of(const SMaskParam& param);

/// What a creation knows of its mask. Each step fills in its part; rows are nozzle rows, before resolution.
struct SMaskGeometry {
    SMaskParam input{};             ///< the record as the caller gave it
    SMaskParam param{};             ///< the completed record: passes after the split, the feather switch
    std::int64_t step = 0;          ///< rows that the paper advances per pass
    std::int64_t height = 0;        ///< rows of the mask
    std::int64_t lead = 0;          ///< rows of the lead blank
    std::int64_t passZone = 0;      ///< smooth-2: rows of one pass zone
    std::int64_t passZones = 0;     ///< smooth-2: rows of all pass zones
    std::int64_t featherZone = 0;   ///< smooth-2: rows of one feather zone
    std::int64_t featherZones = 0;  ///< smooth-2: rows of all feather zones
    std::int64_t matrixHeight = 0;  ///< threshold rows in use
    std::int64_t matrixWidth = 0;   ///< threshold columns in use
    std::int64_t positionCount = 0; ///< band positions until the masks repeat
    std::int64_t lineBytes = 0;     ///< bytes of one mask line
};

// ---- the steps of a creation, in their order

/// Divides the resolution passes of the current record by the split counts.
void Geometry_Split(SMaskGeometry& geometry);
/// Hard edges; rows left over turn the record into a smooth-2 one. Sets the step alone when it is below 1.
void Geometry_FeatherNone(SMaskGeometry& geometry);
/// Smooth-2 zones. Sets the step alone when it is below 1.
void Geometry_Smooth_2(SMaskGeometry& geometry);
/// Smooth-3. Sets the step and the height alone when the step is below 1.
void Geometry_Smooth_3(SMaskGeometry& geometry);
/// Chooses the matrix height, and with it the number of positions; sets the bytes of a line too. The height
/// is -1, or there are no positions, when no matrix height lets the masks repeat within 32 bits of rows.
void Geometry_MaskSize(SMaskGeometry& geometry);

// ---- arithmetic that more than one place needs

/// Rows of the head that feathering may take.
/// The order of the single-precision operations is agreed: it decides which way a boundary rounds.
/// @param featherPercent  0 to 100
inline int FeatherAmount(int nozzleCount, float featherPercent)
{
    const float share = featherPercent / 100.0F;
    const float rows = static_cast<float>(nozzleCount) * 0.75F * share;
    return static_cast<int>(rows);
}

/// The largest multiple of xResPass * yResPass that is not above a raw step, so that the step divides evenly
/// into the resolution passes.
/// @return 0 when the raw step is smaller than the product
inline int StepHeight_Rounded(int rawStep, int xResPass, int yResPass)
{
    const std::int64_t passes = std::int64_t{xResPass} * yResPass;
    return static_cast<int>(rawStep / passes * passes);
}

/// The raw step of a head that gives its whole feather amount to feathering.
/// @param basePass  not 0
inline int StepHeight_Feathered(int nozzleCount, int basePass, float featherPercent)
{
    return (nozzleCount - FeatherAmount(nozzleCount, featherPercent)) / basePass;
}

/// Last rows of a band: those that are left when it is divided into steps, or a whole step when none are.
/// @param step  >= 1
template <typename TRows>
constexpr TRows FeatherRows(TRows height, TRows step)
{
    const TRows rest = height % step;
    return rest != 0 ? rest : step;
}

/// Rows of the sine mask: at most half of the feather rows, and at most a tenth of its width.
constexpr int SineMaskRows(int featherHeight, int maskWidth)
{
    return std::min(featherHeight / 2, maskWidth / 10);
}

/// Whether dots of a band's last feather rows move along a sine curve. Deliberate: whatever featherMode is.
constexpr bool HasSineEdge(const SMaskParam& param)
{
    return param.featherNozzleType == FeatherNozzle_Smooth_3_Sine;
}

/// Top of the smooth-3 ramps on the threshold scale.
constexpr int FeatherLevel(int featherLevelPercent)
{
    return static_cast<int>(std::int64_t{featherLevelPercent} * THRESHOLD_LEVEL_MAX / 100);
}

/// Bytes of one mask line at full width: its pixels, rounded up to whole bytes.
constexpr std::int64_t MaskLineBytes(std::int64_t baseWidth, std::int64_t bitsPerPixel, std::int64_t xResPass)
{
    return (baseWidth * bitsPerPixel * xResPass + 7) / 8;
}

/// Lead blank in mask lines, as the resolution set-up checks it. Hard edges add the offsets of the last Y and
/// the last X resolution pass.
std::int64_t LeadBlank_IncludeRes(const SMaskGeometry& geometry);

} // namespace dotweave
