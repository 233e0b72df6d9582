#pragma once

#include "sheet/masklaw.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace dotweave {

/// Why a pixel is not printed colorTimes times.
enum class EUnevenCause : std::size_t {
    ThresholdZero, ///< level 0 never prints
    FeatherLevel,  ///< level above the feather level of smooth-3
    FeatherZone,   ///< feather zone of smooth-2, which prints once
    Widened,       ///< ranges of smooth-3 that are widened for a colour that prints several times
    SineEdge,      ///< dots that the sine edge moves
    NotAsBuilt,    ///< none of these: the bytes are not what the mode says
};
inline constexpr std::size_t UNEVEN_CAUSE_COUNT = 6;

/// One word for programs, such as "threshold-zero", and a text for people.
const char* UnevenCause_Name(EUnevenCause cause);
const char* UnevenCause_Text(EUnevenCause cause);

/// Pixels and lines of a sheet.
struct SSheetShare {
    std::int64_t pixelCount = 0;
    std::int64_t lineCount = 0; ///< lines with any of the pixels
};

/// How evenly a sheet of one colour is printed.
struct SUniformCheck {
    SSheetShare all;
    SSheetShare uneven; ///< not printed colorTimes times
    std::array<SSheetShare, UNEVEN_CAUSE_COUNT> causes;

    const SSheetShare& Cause(EUnevenCause cause) const { return causes[static_cast<std::size_t>(cause)]; }
    /// Pixels of threshold 0 do not count: no mode prints them, and there are 9 in a million.
    bool IsUniform() const { return uneven.pixelCount == Cause(EUnevenCause::ThresholdZero).pixelCount; }
    void Add(const SUniformCheck& other);
};

/// Prints some lines of one colour's sheet and counts the pixels that are not printed colorTimes times, each
/// under its cause. The whole sheet is Layout().CycleLines() lines from SteadyLine_First() on; it may be
/// checked in parts.
/// @param mask  the object that the law was made of
SUniformCheck Uniform_Check(const CMaskData_Base& mask, const CMaskLaw& law, int color,
                            std::int64_t firstLine, int lineCount);

} // namespace dotweave
