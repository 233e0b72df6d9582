#pragma once

#include "view/maskview.h"

#include <cstdint>
#include <vector>

namespace dotweave {

/// A mask as a picture.
/// Every pixel of the mask is a pixel of the picture: black where a dot is set, white elsewhere.
/// @return the bytes of a PNG file, greyscale of 1 bit
/// @throws std::runtime_error for a size that a PNG file cannot have
/// @throws std::bad_alloc
std::vector<std::uint8_t> MaskPicture_Png(const SMaskLines& lines);

} // namespace dotweave
