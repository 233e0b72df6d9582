#pragma once

#include <cstdint>
#include <vector>

/// Mask lines as the library hands them out: packed pixels, line by line.
struct SMaskLines {
    const std::uint8_t* bytes; ///< height lines of lineBytes
    int width;                 ///< pixels of a line
    int height;                ///< lines
    int lineBytes;             ///< bytes of a line
    int bitsPerPixel;          ///< 1 or 2
};

/// A mask as a picture file.
/// Every pixel of the mask is a pixel of the picture: black where a dot is set, white elsewhere.
/// @return the bytes of a PNG file, greyscale of 1 bit
/// @throws std::runtime_error for a size that a PNG file cannot have
std::vector<std::uint8_t> MaskPicture_Png(const SMaskLines& lines);
