#pragma once

#include <cstddef>
#include <cstdint>

/// @file
/// Rows of bits, without vectors: the first column is the most significant bit of the first byte, and the
/// bits after the last column are 0.

namespace dotweave {

/// Bytes that a load or store of a whole vector may touch after the last byte of a bit row.
inline constexpr int BIT_ROW_SLACK = 32;

/// Bytes that hold so many bits.
constexpr int BytesOfBits(int bits)
{
    return (bits + 7) / 8;
}

/// Repeats the first `period` bits of a row until it is `length` bits long, as the plane repeats on the
/// paper. Bits after the last one become undefined, up to the end of the byte after the last one.
/// @param bits    BytesOfBits(length) + 1 bytes at least; zeros follow the first `period` bits within their
///                byte
/// @param period  >= 1
void Bits_Repeat(std::uint8_t* bits, int period, int length);

/// Copies `count` bits, from bit `first` on, to the start of another row; zeros follow the last one.
/// @param count  >= 0; at 0 nothing is written
/// @param dest   BytesOfBits(count) bytes
void Bits_Copy(const std::uint8_t* bits, int first, int count, std::uint8_t* dest);

/// Packs the bit rows of all X resolution passes, `width` bits each, into one line, pixel by pixel: the way
/// for any number of passes. Writes whole bytes, padding included.
void Line_PackByBits(const std::uint8_t* const* rows, int xResPass, int bitsPerPixel, int width,
                     std::uint8_t* line);

/// Hands out the plane rows of consecutive block rows. The plane tiles; no remainder is computed per row.
class CPlaneRows {
public:
    /// @param height  >= 1
    CPlaneRows(const std::uint16_t* plane, int width, int height, int offsetY, int firstRow)
        : m_plane(plane), m_width(width), m_height(height), m_row((offsetY % height + firstRow) % height)
    {}

    const std::uint16_t* Next()
    {
        const std::uint16_t* row = m_plane + static_cast<std::ptrdiff_t>(m_row) * m_width;
        m_row = m_row + 1 == m_height ? 0 : m_row + 1;
        return row;
    }

private:
    const std::uint16_t* m_plane;
    int m_width;
    int m_height;
    int m_row;
};

} // namespace dotweave
