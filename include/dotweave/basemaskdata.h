#pragma once

#include "dotweave/export.h"

#include <cstdint>

/// The thresholds that colours are cut from: one plane per colour, plane i from matrix i modulo 16. Create
/// copies them; in the library's own assembly they are rows of the table.
/// Shape:         every plane has Height() rows of Width() thresholds, row-major.
/// Lifetime:      create once on a fresh object; the destructor frees the planes that were copied.
/// Copies:        shallow. Both objects then share the planes, and only one may be destroyed.
/// Thread-safety: belongs to the thread that made it; the planes may be read by any number of threads.
class DOTWEAVE_API CBaseMaskData {
public:
    CBaseMaskData() = default;
    CBaseMaskData(const CBaseMaskData&) = default;
    CBaseMaskData& operator=(const CBaseMaskData&) = default;
    ~CBaseMaskData();

    /// Builds the planes. A second call on the same object loses the planes of the first.
    /// @param width   columns; up to 544 every cell is filled. Wider rows repeat the matrix row in runs of
    ///                544, of which only the first half of the cells is written (deliberate, see
    ///                docs/deliberate-behaviour.md); the other cells are unspecified.
    /// @param height  rows; row 544 onward comes from the matrices that follow, which must exist
    /// @param count   planes, >= 0
    /// @return true
    /// @throws std::bad_alloc when memory runs out, for a negative count and for planes whose cells are
    ///         negative or do not fit into 32 bits; the sizes are stored by then, and the destructor frees
    ///         what was built
    bool Create(int width, int height, int count);

    /// The cells of one plane, writable.
    /// @param index  0 to count - 1, not checked
    std::uint16_t* MaskData(int index) const { return m_maskData[index]; }
    /// Columns of every plane; undefined before Create.
    int Width() const { return m_width; }
    /// Rows of every plane; undefined before Create.
    int Height() const { return m_height; }

private:
    /// As Create, but planes that would equal rows of the table as they are, 544 columns and up to 544 rows,
    /// point into the table. For the assembly alone, which reads planes once and never writes them: a copy
    /// would take longer than the cut. Nobody may write such a plane.
    bool Create_OnTable(int width, int height, int count);
    void Release();

    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    std::int32_t m_count = 0;
    std::uint16_t** m_maskData = nullptr;

    friend class CMaskData_Base;
    friend struct SBaseMaskData_Peek; // the tests' only key to private operations; defined in tests/support
};
