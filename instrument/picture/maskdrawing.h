#pragma once

#include "view/maskview.h"
#include "view/pixelpicture.h"

#include <cstdint>
#include <string>

namespace dotweave {

/// The part of a mask that a drawing shows, and how large.
struct SMaskWindow {
    int firstLine;
    int lineCount;
    int firstColumn;
    int columnCount;
    int magnification; ///< pixels of the drawing across one pixel of the mask, >= 1
};

/// Magnification from which a drawing separates the pixels of the mask by thin lines.
inline constexpr int MAGNIFICATION_GRID = 6;

/// Draws a part of a mask, magnified, with rulers: the numbers of the mask lines at the left, of the columns
/// at the top. Black where a dot is set.
/// @param window  inside the mask, not checked
/// @param title   one line above the drawing; "" for none
/// @param rulers  whether there are numbers
SPixelPicture MaskDrawing_Make(const SMaskLines& lines, const SMaskWindow& window, const std::string& title,
                               bool rulers);

/// Pixels of such a drawing.
std::int64_t MaskDrawing_Pixels(const SMaskWindow& window, const std::string& title, bool rulers);

} // namespace dotweave
