#pragma once

#include "view/pixelpicture.h"

#include <cstdint>
#include <string_view>

namespace dotweave {

/// @file
/// Rectangles and lettering in pictures of pixels, for rulers, labels and scale bars. What is outside the
/// picture is not drawn. Every channel gets the same value.

inline constexpr int LETTER_WIDTH = 6;   ///< pixels from one letter to the next, at scale 1
inline constexpr int LETTER_HEIGHT = 11; ///< pixels from one line of text to the next, at scale 1

/// A picture of one colour.
SPixelPicture Picture_Make(int width, int height, int channelCount, std::uint8_t value);

/// Fills a rectangle.
void Rect_Paint(SPixelPicture& picture, int x, int y, int width, int height, std::uint8_t value);

/// Writes one line of text in letters of 5 x 7 pixels; two more rows for what hangs below.
/// @param x, y   top left corner
/// @param text   ASCII from blank to tilde; any other byte becomes a box
/// @param scale  pixels of a letter's pixel, >= 1
void Text_Paint(SPixelPicture& picture, int x, int y, std::string_view text, std::uint8_t value = 0,
                int scale = 1);

/// Pixels that a text takes across.
int Text_Width(std::string_view text, int scale = 1);

/// Distance between two labels of a ruler: the smallest of 1, 2 or 5 times a power of ten.
/// @param least  a distance, >= 1, that is enough
int Ruler_Step(int least);

} // namespace dotweave
