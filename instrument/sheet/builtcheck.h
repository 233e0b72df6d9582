#pragma once

#include "sheet/masklaw.h"

#include <cstdint>
#include <string>

namespace dotweave {

/// Whether the bytes of one colour's masks are what the mode says, and where they are not.
struct SBuiltCheck {
    std::int64_t pixelCount = 0;      ///< mask pixels that were compared
    std::int64_t wrongPixelCount = 0; ///< pixels that are set or clear against the law, and half-set ones
    std::int64_t paddingBitCount = 0; ///< bits after the last pixel of a line that are not zero
    bool wrapsWithoutSeam = true;     ///< the band after the last position prints what position 0 has
    int position = -1;                ///< of the first wrong pixel or padding bit; -1 when there is none
    int line = -1;
    int column = -1; ///< its pixel; -1 for a padding bit

    bool IsGood() const { return wrongPixelCount == 0 && paddingBitCount == 0 && wrapsWithoutSeam; }
    void Add(const SBuiltCheck& other);
};

/// Compares all positions of one colour with the law, pixel by pixel. When they agree, every pixel of the
/// sheet is printed as often as the cut table says, and in the sine rows as the sine edge says.
/// @param mask  the object that the law was made of
SBuiltCheck Built_Check(const CMaskData_Base& mask, const CMaskLaw& law, int color);

} // namespace dotweave
