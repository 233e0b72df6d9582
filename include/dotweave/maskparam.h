#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// @file
/// The record that describes one print mode. It is the only input of the library and the key of its cache.

/// Values of SMaskParam::featherMode: whether the edges of a band are feathered.
enum EFeatherMode : std::int32_t {
    /// Hard band edges. Turns itself into smooth-2 feathering when the rows do not divide into the passes.
    FeatherMode_None = 0,
    /// Edges feathered over nozzle rows, in the profile that SMaskParam::featherNozzleType names.
    FeatherMode_Nozzle = 1,
};

/// Values of SMaskParam::featherNozzleType: the feather profile.
enum EFeatherNozzleType : std::int32_t {
    FeatherNozzle_Smooth_2 = 1,      ///< ramps only in zones between the passes
    FeatherNozzle_Smooth_3 = 2,      ///< one ramp over the whole head
    FeatherNozzle_Smooth_3_Sine = 3, ///< as smooth-3; dots of the edge rows are moved along a sine curve too
    FeatherNozzle_Reserved = 4,      ///< known, never built
};

/// Values of SMaskParam::resSplitType: how resolution passes are split between separately handled parts.
enum EResSplitType : std::int32_t {
    ResSplit_None = 0, ///< nothing is split; so is every value that is not listed here
    ResSplit_X2 = 1,   ///< xResPass is halved
    ResSplit_Y2 = 2,   ///< yResPass is halved
    ResSplit_Y3 = 3,   ///< a third of yResPass
    ResSplit_Y4 = 4,   ///< a quarter of yResPass
    ResSplit_X2Y2 = 5, ///< both are halved
};

/// One print mode: 12 fields of 32 bits, 48 bytes, no gaps and no defaults.
/// Two records are the same mode only when all 48 bytes are equal, so a field that the mode never reads and
/// the sign of a zero separate two modes too. A host zeroes the record before it fills it.
struct SMaskParam {
    /// Nozzle rows of the head that take part in one band, >= 1.
    std::int32_t nozzleCount;
    /// Passes that together print one band, >= 1. The paper advances by one step per pass.
    std::int32_t basePass;
    /// Pixel columns of the output that are interleaved per threshold column; >= 1, also after the split.
    std::int32_t xResPass;
    /// Mask lines that are interleaved per nozzle row; >= 1, also after the split.
    std::int32_t yResPass;
    /// Colour planes, >= 1. Plane i is cut from threshold matrix i modulo 16.
    std::int32_t colorCount;
    /// Bits that one mask pixel takes in the mask bytes: 1 or 2.
    std::int32_t bitsPerPixel;
    /// EFeatherMode.
    std::int32_t featherMode;
    /// Share of the head in percent that feathering may take, 0 to 100; the set-up scales it by 0.75.
    /// Read only when featherMode is FeatherMode_Nozzle.
    float featherPercent;
    /// EFeatherNozzleType. The value FeatherNozzle_Smooth_3_Sine moves dots whatever featherMode is.
    std::int32_t featherNozzleType;
    /// How many passes may print the same pixel of one colour, 1 to basePass.
    std::int32_t colorTimes;
    /// Top of the smooth-3 ramps in percent of the threshold scale, 0 to 100. Read only by smooth-3.
    std::int32_t featherLevelPercent;
    /// EResSplitType.
    std::int32_t resSplitType;
};

static_assert(sizeof(SMaskParam) == 48 && alignof(SMaskParam) == 4 && std::is_standard_layout_v<SMaskParam> &&
                  std::is_trivial_v<SMaskParam>,
              "the cache compares whole records byte for byte");
static_assert(offsetof(SMaskParam, featherPercent) == 28 && offsetof(SMaskParam, resSplitType) == 44,
              "the order of the fields is agreed with the hosts");
