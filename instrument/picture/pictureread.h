#pragma once

#include "view/pixelpicture.h"

#include <cstdint>
#include <span>

namespace dotweave {

/// The most pixels that a picture may have: 134 million.
inline constexpr std::int64_t PICTURE_PIXELS_MAX = std::int64_t{1} << 27;

/// Decodes a PNG file, of which nothing is trusted.
/// Palettes, 1, 2, 4 and 16 bits become 8 bits; a transparent picture is laid on white. Levels that a file
/// declares for another gamma are converted to those of sRGB. Colour profiles are ignored.
/// @param bytes  of the whole file
/// @return grey or colour, as the file says
/// @throws std::runtime_error, with the reason in one line, for bytes that are no PNG file, a file that is cut
///         off or damaged, more than PICTURE_PIXELS_MAX pixels, and more than the bytes can hold
/// @throws std::bad_alloc
SPixelPicture Picture_Read(std::span<const std::uint8_t> bytes);

} // namespace dotweave
