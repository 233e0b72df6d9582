#pragma once

#include "int32.h"

#include <cstddef>

/// @file
/// Where in its threshold plane a mask region starts, and where in the mask block its bytes do.

namespace dotweave {

/// Threshold row that the first row of a region reads: successive band positions read one step further down,
/// Y resolution passes take evenly spaced fractions of the step.
constexpr int MaskRegion_Row(int position, int stepHeight, int yResIndex, int yResPass)
{
    return yResIndex * stepHeight / yResPass + position * stepHeight;
}

/// Threshold column that the first column of a region reads: X resolution passes are spread evenly over the
/// plane.
constexpr int MaskRegion_Column(int xResIndex, int baseWidth, int xResPass)
{
    return baseWidth * xResIndex / xResPass;
}

/// Byte of the mask block that a band position of a colour starts with. Deliberate: 32-bit products, as hosts
/// know them; those of a mask that was built never wrap.
constexpr std::ptrdiff_t MaskRegion_FirstByte(int color, int oneColorBytes, int position,
                                              int onePositionBytes)
{
    return std::ptrdiff_t{Int32_Product(color, oneColorBytes)} + Int32_Product(position, onePositionBytes);
}

} // namespace dotweave
