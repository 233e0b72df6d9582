#pragma once

#include "sheet/passlayout.h"
#include "view/cuttableview.h"
#include "view/maskshape.h"

#include <dotweave/maskdata_base.h>
#include <dotweave/sinemask.h>

#include <cstdint>
#include <vector>

namespace dotweave {

/// What one mask line should be, a value for each pixel.
struct SMaskLawLine {
    std::vector<int> thresholds;           ///< the level that decides the pixel
    std::vector<std::uint8_t> tableDots;   ///< 1 where the cut table alone says print
    std::vector<std::uint8_t> dots;        ///< 1 where the mask has a dot: the same but for the sine edge
    std::vector<std::uint8_t> movedPixels; ///< 1 where the sine edge takes dots away or lays them down
};

/// What every pixel of a mode's masks should be, from the threshold matrices and the cut table: a second,
/// plain way to the bytes that the library builds.
///
/// Table:  nozzle row y of band p prints a pixel when lower < t <= upper, t being the level of the matrix at
///         row p step + y + r step / YResPass and column x + 544 k / XResPass (docs/mask-bytes.md). Bands
///         count without wrapping; a mode repeats after its positions when the law does.
/// Sine:   the last sine rows of a band print nothing outside the curve. The sine rows among its first
///         feather rows print their own dots and those that the same place in the last ones gives up
///         (docs/cut-tables.md, "The sine edge").
/// Source: the matrices, the cut table and the sine mask as the library exports them.
/// Thread-safety: read-only after construction; any number of threads.
class CMaskLaw {
public:
    /// @param mask  a created object; must outlive the law
    explicit CMaskLaw(CMaskData_Base& mask);

    const CPassLayout& Layout() const { return m_layout; }
    const SMaskShape& Shape() const { return m_shape; }
    /// Largest level that any row prints.
    int Level_Max() const { return m_levelMax; }
    bool HasSineEdge() const { return m_sineRows > 0; }
    /// Nozzle rows at each end of the band whose dots the sine edge moves; 0 without one.
    int SineRows() const { return m_sineRows; }
    /// Bands after which the thresholds under the head repeat. The masks wrap without a seam when the number
    /// of positions is a multiple of it.
    std::int64_t RepeatBands() const;
    /// Computes a mask line.
    /// @param color     0 to colorCount - 1
    /// @param band      any from 0 on; a mask is that of band position
    /// @param maskLine  0 to height - 1 of the shape
    /// @param law       takes the line; its vectors are reused
    void Line(int color, std::int64_t band, int maskLine, SMaskLawLine& law) const;

private:
    int Threshold(const std::uint16_t* matrix, std::int64_t row, int x, int k) const;
    bool IsTableDot(int row, int threshold) const;
    bool IsHandedOver(int sineRow, int x) const;

    CPassLayout m_layout;
    SMaskShape m_shape;
    SCutTableView m_table;
    int m_matrixRows;
    int m_matrixColumns;
    int m_levelMax = 0;
    int m_featherRows = 0; ///< first rows of a band that overlap the last ones of an earlier band
    int m_sineRows = 0;
    std::vector<std::uint8_t> m_isUnderCurve; ///< sine rows of matrix columns
};

} // namespace dotweave
