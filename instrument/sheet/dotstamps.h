#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace dotweave {

// A cell of the patch is 4 by 4 sample points, one bit each: bit 4 * row + column. Places are counted in
// eighths of a cell, so that points and centres are whole numbers.

inline constexpr int CELL_POINTS = 4;        ///< sample points of a cell, in either direction
inline constexpr int CELL_EIGHTHS = 8;       ///< places of a cell, in either direction
inline constexpr int VOLUME_UNIT = 64;       ///< the wanted volume
inline constexpr int VOLUME_MAX_UNITS = 256; ///< larger volumes count as this one

/// Volumes from the least to the largest, in 1 / VOLUME_UNIT.
struct SVolumeRange {
    int least;
    int most;
};

/// The sample points of one dot, in whole cells around its centre's cell.
struct SDotStamp {
    int left = 0; ///< first column of cells, relative to the centre's cell
    int top = 0;  ///< first row of cells, relative to the centre's cell
    int rowCount = 0;
    int rowCells = 0;                 ///< cells of a row, a multiple of 4; padded with empty ones
    std::vector<std::uint16_t> cells; ///< rowCount rows of rowCells
};

/// The shape of the dots of a patch.
struct SDotShape {
    double diameter; ///< row pitches
    int cellsX;      ///< cells of a row pitch along the row
    int cellsY;      ///< cells of a row pitch along the paper

    /// Sample points of a dot: its area, rounded to the nearest. @param volume  in 1 / VOLUME_UNIT
    int PointCount(int volume) const;
    /// Cells around a centre's cell that the dot does not reach beyond, in either direction.
    int ReachX(int volume) const;
    int ReachY(int volume) const;
};

/// One sample point around a dot.
struct SDotPoint {
    std::int64_t distance; ///< squared, in a unit that is whole in both directions
    std::int64_t offsetY;  ///< of equally near points, opposite ones follow each other:
    int quadrant;          ///< so the dot stays in balance when not all of them belong to it
    int y, x;              ///< place in sample points, relative to the first one of the centre's cell
};

/// The sample points of a dot: the PointCount(volume) ones that are nearest to its centre, nearest first. So a
/// dot of a smaller volume is the first of these points.
/// @param phaseX, phaseY  the centre's place in its cell, 0 to CELL_EIGHTHS - 1
/// @param volume          0 to VOLUME_MAX_UNITS
std::vector<SDotPoint> DotPoints(const SDotShape& shape, int phaseX, int phaseY, int volume);

/// Stamps of one shape, made when they are first wanted.
class CDotStamps {
public:
    explicit CDotStamps(const SDotShape& shape);

    const SDotShape& Shape() const { return m_shape; }
    /// Makes the stamps of some volumes that are not there yet. Not to be called while other threads read.
    void Make(int phaseX, int phaseY, const SVolumeRange& volumes);
    /// A stamp that has been made. Any number of threads may ask at once.
    const SDotStamp& Get(int phaseX, int phaseY, int volume) const
    {
        return *m_stamps[Index(phaseX, phaseY, volume)];
    }

private:
    static std::size_t Index(int phaseX, int phaseY, int volume)
    {
        return (static_cast<std::size_t>(phaseY) * CELL_EIGHTHS + static_cast<std::size_t>(phaseX)) *
                   (VOLUME_MAX_UNITS + 1) +
               static_cast<std::size_t>(volume);
    }

    SDotShape m_shape;
    std::vector<std::unique_ptr<SDotStamp>> m_stamps; ///< null where none has been made
};

} // namespace dotweave
