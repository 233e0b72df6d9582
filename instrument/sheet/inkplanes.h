#pragma once

#include "sheet/bitimage.h"
#include "view/pixelpicture.h"

#include <cstdint>
#include <vector>

namespace dotweave {

/// Amount of one ink for each pixel of a picture, row-major: 0 is none, 255 is full.
struct SInkPlane {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> amounts;
};

/// A picture as black ink alone.
/// A grey picture: black = 255 - grey. A colour picture: grey is Rec. 601 luma,
/// (299 red + 587 green + 114 blue) / 1000, rounded to the nearest.
SInkPlane InkPlane_Grey(const SPixelPicture& picture);

/// A picture as black, cyan, magenta, yellow, in this order, as planes 0 to 3 of most presses.
/// Complete black replacement: black is what the three colours have in common, and they give it up:
///   black = min(255 - red, 255 - green, 255 - blue), cyan = 255 - red - black, and so on.
/// A grey picture uses black alone.
std::vector<SInkPlane> InkPlanes_Colour(const SPixelPicture& picture);

/// A plane screened by a threshold matrix: a pixel gets ink as in a tint of share amount / 255.
/// @param matrix  as in Tint_Make
/// @return an image with blank edges
CBitImage InkPlane_Screen(const SInkPlane& plane, int matrix);

} // namespace dotweave
