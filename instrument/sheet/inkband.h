#pragma once

#include "sheet/dotstamps.h"
#include "sheet/inklayers.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace dotweave {

/// The ink on some lines of a patch: how many layers every sample point has, as bit planes. Plane 0 has the ones
/// of the counts, plane 1 the twos, and so on, so a dot is added to many points in one step. With one plane a
/// point has ink or none.
class CInkBand {
public:
    /// @param width        cells of a row
    /// @param rowCount     rows of cells
    /// @param marginCells  cells of the widest stamp's row
    /// @param planeCount   1, or 4 to count up to LAYERS_MAX
    CInkBand(int width, int rowCount, int marginCells, int planeCount);

    /// Takes all ink away.
    void Clear();
    /// Adds a dot. What lies beside the band is left out.
    /// @param x, y  cell of the dot's centre; any
    void Dot_Add(const SDotStamp& stamp, std::int64_t x, std::int64_t y);
    /// Counts the layers of the points of a square of cells.
    /// @param x, y  upper left cell, inside the band
    /// @param side  cells, at least 1
    CLayerCounts Layers(int x, int y, int side) const;

private:
    std::size_t Cell(std::int64_t x, std::int64_t y) const
    {
        return static_cast<std::size_t>(y) * m_stride + static_cast<std::size_t>(x + m_marginCells);
    }

    int m_width;
    int m_rowCount;
    int m_marginCells;
    std::size_t m_stride;
    std::vector<std::vector<std::uint16_t>> m_planes;
};

} // namespace dotweave
