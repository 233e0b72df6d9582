#pragma once

#include "kernel.h"

#include <cstdint>
#include <vector>

namespace matrixgen {

/// The energy of every cell of a square torus, and the cell where it is lowest.
/// Shape:    side x side cells, row-major; a cell is its index row * side + column. The torus has no edges.
/// Lowest:   there are minima per block of 32 cells and per row. A search reads only blocks that changed
/// since the
///           last one, so it costs little compared with the change before it.
/// Threads:  not safe; Lowest updates the minima and is therefore not const.
class CTorusEnergy {
public:
    /// @param side  cells per row and rows, SIDE_MIN to SIDE_MAX, not checked
    explicit CTorusEnergy(int side);

    [[nodiscard]] int Side() const { return m_side; }
    [[nodiscard]] int CellCount() const { return m_side * m_side; }

    /// Sets every cell to level plus its own small start value.
    /// @param start  one random value for each cell, to decide between cells of equal energy
    void Reset(std::int32_t level, const std::vector<std::uint8_t>& start);
    /// Adds the kernel around a cell: the cell becomes set.
    void Add(int cell, const CKernel& kernel);
    /// Subtracts the kernel around a cell again.
    void Subtract(int cell, const CKernel& kernel);
    /// Adds an amount to one cell, such as a ban.
    void Offset(int cell, std::int32_t amount);

    [[nodiscard]] std::int32_t Value(int cell) const { return m_value[static_cast<std::size_t>(cell)]; }
    /// The cell of lowest value, and the first one of equals.
    int Lowest();

    static constexpr int SIDE_MIN = 8;
    static constexpr int SIDE_MAX = 1024; ///< one bit for each block of a row

private:
    template <int Sign>
    void Apply(int cell, const CKernel& kernel);
    template <int Sign>
    void ApplyRun(int row, int column, const std::int32_t* weights, int count);
    void RefreshRow(int row);

    static constexpr int BLOCK_CELLS = 32;

    int m_side;
    int m_blockCount; // in a row
    std::vector<std::int32_t> m_value;
    std::vector<std::int32_t> m_blockLowest;
    std::vector<std::int32_t> m_rowLowest;
    std::vector<std::uint32_t> m_touched; // one bit for each block of a row
};

} // namespace matrixgen
