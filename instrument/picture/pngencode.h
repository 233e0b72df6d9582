#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace dotweave {

/// The shape of a PNG file.
struct SPngShape {
    int width;
    int height;
    int bitDepth;           ///< 1 or 8 bits a channel
    int channelCount;       ///< 1 is grey, 3 is red, green, blue
    int pixelsPerMetre = 0; ///< resolution that the file names; 0 for none
};

/// Fills one row of a picture: width * channelCount values, one byte each, also when the file gets bits.
using CPngRow = std::function<void(int y, std::uint8_t* row)>;

/// Encodes a picture row by row, from the top. Everything that makes PNG files goes through here.
/// @return the bytes of the file
/// @throws std::runtime_error for a size that a PNG file cannot have
/// @throws std::bad_alloc, and what the row function throws
std::vector<std::uint8_t> Png_Encode(const SPngShape& shape, const CPngRow& row);

} // namespace dotweave
