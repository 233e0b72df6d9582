#include "sheet/inkband.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace dotweave {

namespace {

constexpr int WORD_CELLS = 4; // cells of 16 points that one step works on
constexpr std::size_t PLANES_MAX = 4;

std::uint64_t Word_Load(const std::uint16_t* cells)
{
    std::uint64_t word = 0;
    std::memcpy(&word, cells, sizeof word);
    return word;
}

void Word_Store(std::uint16_t* cells, std::uint64_t word)
{
    std::memcpy(cells, &word, sizeof word);
}

/// Sorts the points of a set by their layers: those with a bit in the topmost plane, those without, and so on.
/// @param planeCount  planes that are still to be asked
void Layers_Count(std::uint64_t points, const std::uint64_t* planes, std::size_t planeCount,
                  std::size_t layers, CLayerCounts& counts)
{
    if (points == 0)
        return;
    if (planeCount == 0) {
        counts[layers] += std::popcount(points);
        return;
    }
    const std::uint64_t plane = planes[planeCount - 1];
    Layers_Count(points & plane, planes, planeCount - 1, layers * 2 + 1, counts);
    Layers_Count(points & ~plane, planes, planeCount - 1, layers * 2, counts);
}

} // namespace

CInkBand::CInkBand(int width, int rowCount, int marginCells, int planeCount)
    : m_width(width), m_rowCount(rowCount), m_marginCells(marginCells),
      m_stride(static_cast<std::size_t>(width) + 2 * static_cast<std::size_t>(marginCells)),
      m_planes(static_cast<std::size_t>(planeCount),
               std::vector<std::uint16_t>(m_stride * static_cast<std::size_t>(rowCount)))
{}

void CInkBand::Clear()
{
    for (std::vector<std::uint16_t>& plane : m_planes)
        std::fill(plane.begin(), plane.end(), std::uint16_t{0});
}

void CInkBand::Dot_Add(const SDotStamp& stamp, std::int64_t x, std::int64_t y)
{
    const std::int64_t left = x + stamp.left;
    const std::int64_t top = y + stamp.top;
    if (left < -m_marginCells || left > m_width)
        return;
    const std::int64_t firstRow = std::max<std::int64_t>(top, 0);
    const std::int64_t endRow = std::min<std::int64_t>(top + stamp.rowCount, m_rowCount);
    const std::uint16_t* cells = stamp.cells.data() + (firstRow - top) * stamp.rowCells;
    for (std::int64_t row = firstRow; row < endRow; ++row) {
        const std::size_t first = Cell(left, row);
        for (int i = 0; i < stamp.rowCells; i += WORD_CELLS, cells += WORD_CELLS) {
            std::uint64_t carry = Word_Load(cells);
            const std::size_t cell = first + static_cast<std::size_t>(i);
            if (m_planes.size() == 1) {
                std::uint16_t* ink = m_planes[0].data() + cell;
                Word_Store(ink, Word_Load(ink) | carry);
                continue;
            }
            for (std::size_t plane = 0; carry != 0 && plane < m_planes.size(); ++plane) {
                std::uint16_t* ink = m_planes[plane].data() + cell;
                const std::uint64_t word = Word_Load(ink);
                Word_Store(ink, word ^ carry);
                carry &= word;
            }
            if (carry == 0)
                continue;
            for (std::vector<std::uint16_t>& plane : m_planes) // as many layers as can be counted
                Word_Store(plane.data() + cell, Word_Load(plane.data() + cell) | carry);
        }
    }
}

CLayerCounts CInkBand::Layers(int x, int y, int side) const
{
    CLayerCounts counts{};
    int inked = 0;
    for (int row = y; row < y + side; ++row) {
        for (int column = x; column < x + side; column += WORD_CELLS) {
            const auto bytes =
                static_cast<std::size_t>(std::min(WORD_CELLS, x + side - column)) * sizeof(std::uint16_t);
            std::array<std::uint64_t, PLANES_MAX> words{};
            std::uint64_t any = 0;
            for (std::size_t plane = 0; plane < m_planes.size(); ++plane) {
                std::memcpy(&words[plane], m_planes[plane].data() + Cell(column, row), bytes);
                any |= words[plane];
            }
            inked += std::popcount(any);
            Layers_Count(any, words.data(), m_planes.size(), 0, counts);
        }
    }
    counts[0] = side * side * CELL_POINTS * CELL_POINTS - inked;
    return counts;
}

} // namespace dotweave
