#pragma once

#include "dotweave/export.h"

#include <cstdint>

/// How CSineMask::Create produces the Down buffer.
enum ESinMaskType : std::int32_t {
    SinMaskType_Stored = 1, ///< computed and kept; what the generator uses
    SinMaskType_Probe = 2,  ///< computed and thrown away; the object keeps no Down buffer and no size
};

/// Raised-cosine mask for one band edge: short runs at the sides, full height in the middle.
/// In every column a run of rows from row 0 down is marked in the Down buffer; the Up buffer is its bitwise
/// complement. The mask covers the last MaskHeight_Get() rows of a feather region of FeatherHeight_Get()
/// rows.
/// Shape:         MaskHeight_Get() rows of MaskWidth_Get() bytes, row-major, one byte per dot.
/// Lifetime:      built once by Create; a second Create loses the buffers of the first.
/// Copies:        shallow. Both objects then share the buffers, and only one may be destroyed.
/// Thread-safety: after Create any number of threads may read it.
/// Source:        docs/cut-tables.md, "The sine edge", with the derivation of the curve.
class DOTWEAVE_API CSineMask {
public:
    CSineMask() = default;
    CSineMask(const CSineMask&) = default;
    CSineMask& operator=(const CSineMask&) = default;
    ~CSineMask();

    /// Builds both buffers.
    /// @param featherHeight  rows of the feather region; the mask takes at most half of them
    /// @param maskWidth      columns, which is bytes per row; below 10 the mask is empty
    /// @param dotBits        bits per dot, 0 to 2, not checked: a marked byte has the value of a full dot
    /// @param type           SinMaskType_Stored or SinMaskType_Probe (keeps no Down buffer)
    /// @return true on success; false with one log record for any other type
    /// @throws std::bad_alloc, also when the mask's size is negative or does not fit into 32 bits; the object
    ///         is then safe to destroy
    bool Create(int featherHeight, int maskWidth, int dotBits, ESinMaskType type);

    /// Marked bytes carry the dot value, all others 0. Null until created and for SinMaskType_Probe.
    const std::uint8_t* MaskBuffer_Down_Get() const { return m_maskBuffer_Down; }
    /// The bitwise complement of the Down buffer, byte for byte. Null until created.
    const std::uint8_t* MaskBuffer_Up_Get() const { return m_maskBuffer_Up; }
    int MaskWidth_Get() const { return m_maskWidth; }
    int MaskHeight_Get() const { return m_maskHeight; }
    /// Bytes of each buffer: MaskWidth_Get() * MaskHeight_Get(); 0 until created and for SinMaskType_Probe.
    int MaskSize_Get() const { return m_maskSize; }
    int FeatherHeight_Get() const { return m_featherHeight; }
    /// Bytes of the whole feather region.
    int FeatherMask_Size() const;
    /// Bytes from the start of the feather region to the first row of the mask.
    int SineMask_Offset_InFeather() const;

private:
    bool GenerateMaskData_Down();
    bool GenerateMaskData_Byte_Down(unsigned char* buffer, int size);
    bool GenerateMaskData_Up_By_Down();

    std::int32_t m_featherHeight = 0;
    ESinMaskType m_sinMaskType = SinMaskType_Stored;
    std::int32_t m_maskHeight = 0;
    std::int32_t m_maskWidth = 0;
    std::int32_t m_dotBits = 0;
    std::uint8_t* m_maskBuffer_Down = nullptr;
    std::uint8_t* m_maskBuffer_Up = nullptr;
    std::int32_t m_maskSize = 0;
};
