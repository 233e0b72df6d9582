#include "picture/picturepng.h"

#include "picture/pngencode.h"

#include <algorithm>
#include <cstddef>

namespace dotweave {

std::vector<std::uint8_t> Picture_Png(const SPixelPicture& picture, int pixelsPerMetre)
{
    constexpr int BYTE_BITS = 8;
    const std::ptrdiff_t rowValues = std::ptrdiff_t{picture.width} * picture.channelCount;
    return Png_Encode({picture.width, picture.height, BYTE_BITS, picture.channelCount, pixelsPerMetre},
                      [&](int y, std::uint8_t* row) {
                          std::copy_n(picture.pixels.begin() + y * rowValues, rowValues, row);
                      });
}

} // namespace dotweave
