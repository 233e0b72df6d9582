#include "sheet/inklayers.h"
#include "sheet/patchrows.h"
#include "sheet/printedpatch.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <tuple>

namespace dotweave {

namespace {

/// Every sample point of a patch and its layers of ink.
struct SPoints {
    int width;
    int height;
    int layersMax; ///< more layers make no difference
    std::vector<int> layers;

    int& At(std::int64_t x, std::int64_t y) { return layers[static_cast<std::size_t>(y * width + x)]; }
    bool Has(std::int64_t x, std::int64_t y) const { return x >= 0 && x < width && y >= 0 && y < height; }
};

/// Divides, rounding down.
std::int64_t Cell_Of(std::int64_t eighths)
{
    return (eighths - (eighths % CELL_EIGHTHS + CELL_EIGHTHS) % CELL_EIGHTHS) / CELL_EIGHTHS;
}

/// The points of the dots that have been printed so far, by phases and volume: the same ones again and again.
using CKnownDots = std::map<std::tuple<int, int, int>, std::vector<SDotPoint>>;

void Dot_Print(SPoints& points, const SDotShape& shape, std::int64_t centreX, std::int64_t centreY,
               int volume, CKnownDots& dots)
{
    const std::int64_t cellX = Cell_Of(centreX);
    const std::int64_t cellY = Cell_Of(centreY);
    const auto phaseX = static_cast<int>(centreX - cellX * CELL_EIGHTHS);
    const auto phaseY = static_cast<int>(centreY - cellY * CELL_EIGHTHS);
    auto dot = dots.find({phaseX, phaseY, volume});
    if (dot == dots.end())
        dot =
            dots.emplace(std::tuple(phaseX, phaseY, volume), DotPoints(shape, phaseX, phaseY, volume)).first;
    for (const SDotPoint& point : dot->second) {
        const std::int64_t x = cellX * CELL_POINTS + point.x;
        const std::int64_t y = cellY * CELL_POINTS + point.y;
        if (points.Has(x, y))
            points.At(x, y) = std::min(points.At(x, y) + 1, points.layersMax);
    }
}

/// Layers of the points of one square.
CLayerCounts Layers_Count(SPoints& points, int x, int y, int side)
{
    CLayerCounts counts{};
    for (int row = y; row < y + side; ++row) {
        for (int column = x; column < x + side; ++column)
            ++counts[static_cast<std::size_t>(points.At(column, row))];
    }
    return counts;
}

} // namespace

void Patch_PrintPlain(const CMaskData_Base& mask, int color, const CBitImage* image,
                      const SSheetErrors& errors, const SPatchOptions& options, const CPatchSink& sink)
{
    if (const std::string reason = PatchOptions_Refusal(options); !reason.empty())
        throw std::invalid_argument(reason);
    const CPatchRows rows(mask, color, image, errors, options);
    const int side = options.supersample * CELL_POINTS;
    SPoints points = {options.window.columnCount * side,
                      options.window.lineCount * side,
                      options.overlap == EOverlap::Union ? 1 : LAYERS_MAX,
                      {}};
    points.layers.resize(static_cast<std::size_t>(points.width) * static_cast<std::size_t>(points.height));
    CKnownDots dots;
    SFiredColumns fired = rows.Fired_Make();
    for (const SRowPrint& print : rows.Rows(0, options.window.lineCount)) {
        rows.Fire(print, fired);
        for (const int column : fired.columns)
            Dot_Print(points, rows.Shape(), rows.CentreX(print, column), print.centreY,
                      rows.Volume(print, column), dots);
    }

    const CInkLaw law(options);
    std::vector<float> reflectance, cells;
    for (int y = 0; y < points.height; y += side) {
        for (int x = 0; x < points.width; x += side)
            reflectance.push_back(law.Reflectance(Layers_Count(points, x, y, side)));
    }
    for (int y = 0; options.wantsCells && y < points.height; y += CELL_POINTS) {
        for (int x = 0; x < points.width; x += CELL_POINTS)
            cells.push_back(law.Reflectance(Layers_Count(points, x, y, CELL_POINTS)));
    }
    sink({0, options.window.lineCount, options.window.columnCount, options.supersample, reflectance.data(),
          options.wantsCells ? cells.data() : nullptr});
}

} // namespace dotweave
