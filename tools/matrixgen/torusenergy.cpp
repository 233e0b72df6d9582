#include "torusenergy.h"

#include <algorithm>

namespace matrixgen {

namespace {

std::size_t Index(int value)
{
    return static_cast<std::size_t>(value);
}

} // namespace

CTorusEnergy::CTorusEnergy(int side)
    : m_side(side), m_blockCount((side + BLOCK_CELLS - 1) / BLOCK_CELLS), m_value(Index(side * side)),
      m_blockLowest(Index(side * m_blockCount)), m_rowLowest(Index(side)), m_touched(Index(side), ~0U)
{}

void CTorusEnergy::Reset(std::int32_t level, const std::vector<std::uint8_t>& start)
{
    std::transform(start.begin(), start.end(), m_value.begin(),
                   [level](std::uint8_t value) { return level + static_cast<std::int32_t>(value); });
    std::fill(m_touched.begin(), m_touched.end(), ~0U);
}

template <int Sign>
void CTorusEnergy::ApplyRun(int row, int column, const std::int32_t* weights, int count)
{
    std::int32_t* value = m_value.data() + Index(row * m_side + column);
    for (int i = 0; i < count; ++i)
        value[i] += Sign * weights[i];
    const auto first = static_cast<unsigned>(column / BLOCK_CELLS);
    const auto last = static_cast<unsigned>((column + count - 1) / BLOCK_CELLS);
    m_touched[Index(row)] |= (~0U << first) & (~0U >> (31U - last));
}

template <int Sign>
void CTorusEnergy::Apply(int cell, const CKernel& kernel)
{
    const int centreRow = cell / m_side;
    const int centreColumn = cell % m_side;
    const int radius = kernel.Radius();
    for (int dy = -radius; dy <= radius; ++dy) {
        const int row = (centreRow + dy + m_side) % m_side;
        const int halfWidth = kernel.HalfWidth(dy);
        const int column = (centreColumn - halfWidth + m_side) % m_side;
        const int count = 2 * halfWidth + 1;
        const int head = std::min(count, m_side - column); // the rest continues at column 0
        const std::int32_t* weights = kernel.Row(dy);
        ApplyRun<Sign>(row, column, weights, head);
        if (head < count)
            ApplyRun<Sign>(row, 0, weights + head, count - head);
    }
}

void CTorusEnergy::Add(int cell, const CKernel& kernel)
{
    Apply<1>(cell, kernel);
}

void CTorusEnergy::Subtract(int cell, const CKernel& kernel)
{
    Apply<-1>(cell, kernel);
}

void CTorusEnergy::Offset(int cell, std::int32_t amount)
{
    m_value[Index(cell)] += amount;
    m_touched[Index(cell / m_side)] |= 1U << static_cast<unsigned>(cell % m_side / BLOCK_CELLS);
}

void CTorusEnergy::RefreshRow(int row)
{
    const std::int32_t* value = m_value.data() + Index(row * m_side);
    std::int32_t* blockLowest = m_blockLowest.data() + Index(row * m_blockCount);
    for (int block = 0; block < m_blockCount; ++block) {
        if ((m_touched[Index(row)] >> static_cast<unsigned>(block) & 1U) == 0)
            continue;
        const int first = block * BLOCK_CELLS;
        const int end = std::min(first + BLOCK_CELLS, m_side);
        std::int32_t lowest = value[first];
        for (int i = first + 1; i < end; ++i)
            lowest = std::min(lowest, value[i]);
        blockLowest[block] = lowest;
    }
    m_rowLowest[Index(row)] = *std::min_element(blockLowest, blockLowest + m_blockCount);
    m_touched[Index(row)] = 0;
}

int CTorusEnergy::Lowest()
{
    for (int row = 0; row < m_side; ++row)
        if (m_touched[Index(row)] != 0)
            RefreshRow(row);
    const auto lowestRow = std::min_element(m_rowLowest.begin(), m_rowLowest.end());
    const auto first = m_value.begin() + (lowestRow - m_rowLowest.begin()) * m_side;
    return static_cast<int>(std::find(first, first + m_side, *lowestRow) - m_value.begin());
}

} // namespace matrixgen
