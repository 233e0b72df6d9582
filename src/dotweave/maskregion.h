#pragma once

/// @file
/// Where in its threshold plane a mask region starts.

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

} // namespace dotweave
