#pragma once

#include "sheet/printedpatch.h"
#include "view/pixelpicture.h"

#include <array>
#include <span>

namespace dotweave {

/// The colour of an ink: the share of red, green and blue light that one layer lets through, 0 to 1.
using CInkColour = std::array<double, 3>;

/// Black, cyan, magenta and yellow, in the order of InkPlanes_Colour, and again for further planes.
/// Simple inks for looking at: cyan takes red away, and so on.
CInkColour InkColour(int color);

/// Patches of several inks on the same paper as one picture, for looking at.
/// Each ink takes its share of light from each of red, green and blue: where a fully inked pixel lets a share
/// t through, one that is inked to an amount a lets 1 - a (1 - t) through, and the shares of all inks
/// multiply. The amount follows from the reflectance: a = (paper - reflectance) / (paper - ink). The result
/// is encoded for sRGB screens; unprinted paper is white.
/// @param patches  all of one size @throws std::invalid_argument for none or several sizes
/// @param colors   the colour plane of each patch; as many as patches
/// @param options  the paper and the ink that they were printed with
SPixelPicture InkPicture(std::span<const SPatch> patches, std::span<const int> colors,
                         const SPatchOptions& options);

} // namespace dotweave
