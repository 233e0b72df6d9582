#pragma once

#include "view/pixelpicture.h"

#include <cstdint>
#include <vector>

namespace dotweave {

/// A picture as a PNG file, 8 bits a channel, grey or colour as the picture is.
/// @param pixelsPerMetre  resolution that the file names, so that programs print it at its size; 0 for none
/// @return the bytes of the file
/// @throws std::runtime_error for a size that a PNG file cannot have
/// @throws std::bad_alloc
std::vector<std::uint8_t> Picture_Png(const SPixelPicture& picture, int pixelsPerMetre = 0);

} // namespace dotweave
