#pragma once

#include <cstdint>

class CMaskData_Base;

namespace dotweave {

/// How all mask bytes of a mode lie one after the other: colour planes, in them band positions, in them mask
/// lines, without gaps (docs/mask-bytes.md).
struct SMaskShape {
    int colorCount = 0;
    int positionCount = 0;
    int height = 0;       ///< lines of one position
    int width = 0;        ///< pixels of a line
    int lineBytes = 0;    ///< enough for width * bitsPerPixel bits
    int bitsPerPixel = 0; ///< 1 or 2

    bool operator==(const SMaskShape&) const = default;
    std::int64_t PositionBytes() const { return std::int64_t{height} * lineBytes; }
    std::int64_t ByteCount() const { return PositionBytes() * positionCount * colorCount; }
};

/// @param mask  a created object
SMaskShape MaskShape_Of(const CMaskData_Base& mask);

/// Whether the numbers can be those of a mask: none below 1, the pixels fit their lines, and all bytes fit 63
/// bits. For shapes that come out of a file.
bool MaskShape_IsPossible(const SMaskShape& shape);

} // namespace dotweave
