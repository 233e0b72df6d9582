#pragma once

#include <dotweave/maskdata_base.h>

#include <cstdint>

namespace dotweave {

/// The mask lines of one band position of one colour: packed pixels, line by line, as the library hands them
/// out. Nothing else in the instrument reads mask bytes.
/// Lifetime: borrows the bytes from their owner.
struct SMaskLines {
    const std::uint8_t* bytes; ///< height lines of lineBytes
    int width;                 ///< pixels of a line
    int height;                ///< lines
    int lineBytes;             ///< bytes of a line, enough for width * bitsPerPixel bits
    int bitsPerPixel;          ///< 1 or 2

    /// The value of one pixel: 0 for none, all bits set for a dot. x and y are not checked.
    std::uint8_t Pixel(int x, int y) const;
    /// Unpacks one line.
    /// @param y       0 to height - 1, not checked
    /// @param pixels  takes width values, one byte a pixel
    void Line_Unpack(int y, std::uint8_t* pixels) const;
};

/// All mask lines of a created mask object, addressed by colour and position.
/// Thread-safety: reads only; any number of threads may share one view.
class CMaskView {
public:
    /// @param mask  a created object, which outlives this view and the lines that it gives
    explicit CMaskView(const CMaskData_Base& mask) : m_mask(mask) {}

    int ColorCount() const { return m_mask.MaskParam_Current().colorCount; }
    /// Band positions after which the masks repeat.
    int PositionCount() const { return m_mask.MaskBytes_OneColor() / m_mask.MaskBytes_OnePosition(); }
    /// Bytes of all colours and positions.
    std::int64_t ByteCount() const { return std::int64_t{m_mask.MaskBytes_OneColor()} * ColorCount(); }
    /// @param color     0 to ColorCount() - 1, not checked
    /// @param position  0 to PositionCount() - 1, not checked
    SMaskLines Lines(int color, int position) const;

private:
    const CMaskData_Base& m_mask;
};

} // namespace dotweave
