#pragma once

#include <cstdint>
#include <vector>

namespace dotweave {

/// A picture in memory, 8 bits a channel.
struct SPixelPicture {
    int width = 0;
    int height = 0;
    int channelCount = 1;             ///< 1 is grey, 3 is red, green, blue
    std::vector<std::uint8_t> pixels; ///< height rows of width pixels of channelCount values; 0 is dark
};

} // namespace dotweave
