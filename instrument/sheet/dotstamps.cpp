#include "sheet/dotstamps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numbers>
#include <span>
#include <tuple>

namespace dotweave {

namespace {

constexpr int WORD_CELLS = 4; // cells that are combined in one step

/// Rounds down, also below 0.
constexpr int CellOf(int point)
{
    return (point >= 0 ? point : point - (CELL_POINTS - 1)) / CELL_POINTS;
}

int Reach(double diameter, int volume, int cells)
{
    // The nearest points fill a disc of the dot's area to within one point; two cells are ample.
    const double radius = diameter / 2 * std::sqrt(static_cast<double>(volume) / VOLUME_UNIT);
    return static_cast<int>(std::ceil(radius * cells)) + 2;
}

/// Points at one distance and one height are at most four, one in each quadrant, so no two are equal.
bool Point_IsNearer(const SDotPoint& a, const SDotPoint& b)
{
    return std::tie(a.distance, a.offsetY, a.quadrant) < std::tie(b.distance, b.offsetY, b.quadrant);
}

/// Packs sample points into cells.
SDotStamp Stamp_Make(std::span<const SDotPoint> points)
{
    SDotStamp stamp;
    if (points.empty()) // a dot of no volume
        return stamp;
    const auto isHigher = [](const SDotPoint& a, const SDotPoint& b) { return a.y < b.y; };
    const auto isFurtherLeft = [](const SDotPoint& a, const SDotPoint& b) { return a.x < b.x; };
    const auto [top, bottom] = std::minmax_element(points.begin(), points.end(), isHigher);
    const auto [left, right] = std::minmax_element(points.begin(), points.end(), isFurtherLeft);
    stamp.top = CellOf(top->y);
    stamp.left = CellOf(left->x);
    stamp.rowCount = CellOf(bottom->y) - stamp.top + 1;
    stamp.rowCells = (CellOf(right->x) - stamp.left + WORD_CELLS) / WORD_CELLS * WORD_CELLS;
    stamp.cells.resize(static_cast<std::size_t>(stamp.rowCount) * static_cast<std::size_t>(stamp.rowCells));
    for (const SDotPoint& point : points) {
        const int y = point.y - stamp.top * CELL_POINTS;
        const int x = point.x - stamp.left * CELL_POINTS;
        const std::ptrdiff_t row = y / CELL_POINTS;
        std::uint16_t& cell = stamp.cells[static_cast<std::size_t>(row * stamp.rowCells + x / CELL_POINTS)];
        cell = static_cast<std::uint16_t>(cell | 1U << (y % CELL_POINTS * CELL_POINTS + x % CELL_POINTS));
    }
    return stamp;
}

} // namespace

int SDotShape::PointCount(int volume) const
{
    const double area = std::numbers::pi / 4 * diameter * diameter * cellsX * cellsY * volume / VOLUME_UNIT;
    return static_cast<int>(std::lround(area * CELL_POINTS * CELL_POINTS));
}

int SDotShape::ReachX(int volume) const
{
    return Reach(diameter, volume, cellsX);
}

int SDotShape::ReachY(int volume) const
{
    return Reach(diameter, volume, cellsY);
}

std::vector<SDotPoint> DotPoints(const SDotShape& shape, int phaseX, int phaseY, int volume)
{
    constexpr int POINT_EIGHTHS = CELL_EIGHTHS / CELL_POINTS;
    const int reachX = shape.ReachX(volume);
    const int reachY = shape.ReachY(volume);
    std::vector<SDotPoint> points;
    for (int y = -reachY * CELL_POINTS; y < (reachY + 1) * CELL_POINTS; ++y) {
        for (int x = -reachX * CELL_POINTS; x < (reachX + 1) * CELL_POINTS; ++x) {
            // From the centre to the middle of the point, in eighths; then both in the same unit.
            const std::int64_t dx =
                std::int64_t{x * POINT_EIGHTHS + POINT_EIGHTHS / 2 - phaseX} * shape.cellsY;
            const std::int64_t dy =
                std::int64_t{y * POINT_EIGHTHS + POINT_EIGHTHS / 2 - phaseY} * shape.cellsX;
            const int quadrant = (dx < 0) == (dy < 0) ? (dx < 0 ? 1 : 0) : (dx < 0 ? 3 : 2);
            points.push_back({dx * dx + dy * dy, std::abs(dy), quadrant, y, x});
        }
    }
    const int count = shape.PointCount(volume);
    std::nth_element(points.begin(), points.begin() + count, points.end(), Point_IsNearer);
    points.resize(static_cast<std::size_t>(count));
    std::sort(points.begin(), points.end(), Point_IsNearer);
    return points;
}

CDotStamps::CDotStamps(const SDotShape& shape)
    : m_shape(shape), m_stamps(Index(CELL_EIGHTHS - 1, CELL_EIGHTHS - 1, VOLUME_MAX_UNITS) + 1)
{}

void CDotStamps::Make(int phaseX, int phaseY, const SVolumeRange& volumes)
{
    std::vector<SDotPoint> points; // of the largest volume, when any stamp is wanted
    for (int volume = volumes.least; volume <= volumes.most; ++volume) {
        std::unique_ptr<SDotStamp>& stamp = m_stamps[Index(phaseX, phaseY, volume)];
        if (stamp != nullptr)
            continue;
        if (points.empty())
            points = DotPoints(m_shape, phaseX, phaseY, volumes.most);
        const auto count = static_cast<std::size_t>(m_shape.PointCount(volume));
        stamp = std::make_unique<SDotStamp>(Stamp_Make(std::span(points).first(count)));
    }
}

} // namespace dotweave
