#pragma once

#include "dotweave/export.h"

#include <cstdint>

/// An owned rectangle of mask bytes.
/// Shape:         Height() rows of Width() bytes, row-major: row y, column x at index y * Width() + x.
/// Lifetime:      every public operation that allocates the buffer zeroes it, so a fresh block has no pixel
///                set.
/// Copies:        shallow. After a copy both blocks share the buffer, and only one may go on owning it.
/// Thread-safety: none of its own; threads may write disjoint bytes of one block.
class DOTWEAVE_API CMaskBlock {
public:
    /// An empty block: width 0, height 0, no buffer.
    CMaskBlock() = default;
    /// A zeroed block; see Initialize.
    CMaskBlock(int width, int height);
    CMaskBlock(const CMaskBlock&) = default;
    CMaskBlock& operator=(const CMaskBlock&) = default;
    ~CMaskBlock();

    /// Frees the old buffer and allocates a zeroed one.
    /// @param width   bytes per row
    /// @param height  rows; width * height is taken as a signed 32-bit product, 0 gives an empty allocation
    /// @throws std::bad_alloc when memory runs out or the product is negative. The block then has the
    ///         new sizes and no buffer.
    void Initialize(int width, int height);

    /// The buffer, writable; null when there is none.
    std::uint8_t* MaskData() { return m_maskData; }
    /// The buffer, read-only; null when there is none.
    const std::uint8_t* MaskData_Const() const { return m_maskData; }
    /// Clears every pixel.
    void ClearMaskData();
    /// Width() * Height(), as a signed 32-bit product.
    int MaskDataBytesCount() const;
    int Width() const { return m_width; }
    int Height() const { return m_height; }

private:
    /// A block whose bytes are whatever the allocation contained, for the assembly alone: its workers write
    /// every byte once, so clearing them before would touch all memory twice.
    static CMaskBlock* New_Unwritten(int width, int height);

    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    std::uint8_t* m_maskData = nullptr;

    friend class CMaskData_Base;
};
