#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dotweave {

/// What is beside an image.
enum class EImageEdge {
    Blank,  ///< no ink: a picture
    Repeat, ///< the image again: a tint
};

/// A 1-bit image of one colour plane: which pixels the sheet asks for.
/// Layout: height lines, packed as masks are: eight pixels a byte, the leftmost in the most significant bit;
///         1 is ink.
/// Thread-safety: any number of threads may read.
class CBitImage {
public:
    /// Blank at first.
    /// @throws std::invalid_argument for a side below 1
    CBitImage(int width, int height, EImageEdge edge);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    EImageEdge Edge() const { return m_edge; }
    /// Inks a pixel. x and y are not checked.
    void Pixel_Set(int x, int y);
    /// Whether a pixel has ink. Any x and y: beside the image its edge decides.
    bool Pixel(std::int64_t x, std::int64_t y) const;
    /// Unpacks a part of a line.
    /// @param x, y    the first pixel; may be beside the image
    /// @param count   pixels
    /// @param pixels  takes count values, 1 for ink and 0 for none
    void Line_Unpack(std::int64_t x, std::int64_t y, int count, std::uint8_t* pixels) const;

private:
    int m_width;
    int m_height;
    EImageEdge m_edge;
    std::ptrdiff_t m_lineBytes;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace dotweave
