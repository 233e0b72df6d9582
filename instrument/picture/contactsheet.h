#pragma once

#include "view/maskview.h"
#include "view/pixelpicture.h"

#include <cstdint>

namespace dotweave {

/// Draws all masks of an object side by side: a row for every colour, a column for every band position, each
/// with its number.
/// @param reduction  pixels of a mask, across and down, that become one pixel of the sheet; >= 1. Its grey is
///                   the share of them that no dot covers.
SPixelPicture ContactSheet_Make(const CMaskView& view, int reduction);

/// Pixels of such a sheet.
std::int64_t ContactSheet_Pixels(const CMaskView& view, int reduction);

/// The smallest reduction whose sheet is no wider than so many pixels.
int ContactSheet_Reduction(const CMaskView& view, int width);

} // namespace dotweave
