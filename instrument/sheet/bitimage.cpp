#include "sheet/bitimage.h"

#include <algorithm>
#include <stdexcept>

namespace dotweave {

static constexpr int BYTE_BITS = 8;

/// The remainder from 0 to size - 1, also of a negative value.
static std::int64_t Wrapped(std::int64_t value, int size)
{
    const std::int64_t rest = value % size;
    return rest < 0 ? rest + size : rest;
}

CBitImage::CBitImage(int width, int height, EImageEdge edge)
    : m_width(width), m_height(height), m_edge(edge),
      m_lineBytes((std::ptrdiff_t{width} + BYTE_BITS - 1) / BYTE_BITS)
{
    if (width < 1 || height < 1)
        throw std::invalid_argument("an image needs at least one pixel");
    m_bytes.resize(static_cast<std::size_t>(m_lineBytes) * static_cast<std::size_t>(height));
}

void CBitImage::Pixel_Set(int x, int y)
{
    std::uint8_t& byte = m_bytes[static_cast<std::size_t>(y * m_lineBytes + x / BYTE_BITS)];
    byte = static_cast<std::uint8_t>(byte | (0x80U >> x % BYTE_BITS));
}

bool CBitImage::Pixel(std::int64_t x, std::int64_t y) const
{
    if (m_edge == EImageEdge::Blank && (x < 0 || x >= m_width || y < 0 || y >= m_height))
        return false;
    const std::int64_t column = Wrapped(x, m_width);
    const std::uint8_t byte =
        m_bytes[static_cast<std::size_t>(Wrapped(y, m_height) * m_lineBytes + column / BYTE_BITS)];
    return (byte & (0x80U >> column % BYTE_BITS)) != 0;
}

void CBitImage::Line_Unpack(std::int64_t x, std::int64_t y, int count, std::uint8_t* pixels) const
{
    if (m_edge == EImageEdge::Blank) {
        for (int i = 0; i < count; ++i)
            pixels[i] = Pixel(x + i, y) ? 1 : 0;
        return;
    }
    // One period pixel by pixel, then the same again.
    const int period = std::min(count, m_width);
    for (int i = 0; i < period; ++i)
        pixels[i] = Pixel(x + i, y) ? 1 : 0;
    for (int i = period; i < count; ++i)
        pixels[i] = pixels[i - m_width];
}

} // namespace dotweave
