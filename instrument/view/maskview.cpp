#include "view/maskview.h"

#include <cstddef>

namespace dotweave {

static constexpr int BYTE_BITS = 8;

/// Pixels fill a byte from its most significant bit down.
static std::uint8_t Line_Pixel(const std::uint8_t* line, int x, int bitsPerPixel)
{
    const int pixelsPerByte = BYTE_BITS / bitsPerPixel;
    const int shift = BYTE_BITS - bitsPerPixel * (x % pixelsPerByte + 1);
    const unsigned int pixelMask = (1U << bitsPerPixel) - 1U;
    return static_cast<std::uint8_t>(unsigned{line[x / pixelsPerByte]} >> shift & pixelMask);
}

std::uint8_t SMaskLines::Pixel(int x, int y) const
{
    return Line_Pixel(bytes + static_cast<std::ptrdiff_t>(y) * lineBytes, x, bitsPerPixel);
}

void SMaskLines::Line_Unpack(int y, std::uint8_t* pixels) const
{
    const std::uint8_t* line = bytes + static_cast<std::ptrdiff_t>(y) * lineBytes;
    for (int x = 0; x < width; ++x)
        pixels[x] = Line_Pixel(line, x, bitsPerPixel);
}

SMaskLines CMaskView::Lines(int color, int position) const
{
    int counter = position - 1; // MaskData_Get advances it first
    const std::uint8_t* bytes = m_mask.MaskData_Get(color, counter);
    return {bytes, m_mask.MaskWidth(), m_mask.MaskHeight_IncludeRes(), m_mask.MaskLineBytes_OneColor(),
            m_mask.BitsPerPixel()};
}

} // namespace dotweave
