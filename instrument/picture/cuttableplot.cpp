#include "picture/cuttableplot.h"

#include "picture/svgparts.h"

#include <algorithm>
#include <cstddef>
#include <locale>
#include <sstream>

namespace dotweave {

namespace {

constexpr int SCALE_MAX = 65535;                            // thresholds; top of the scale
constexpr int SCALE_GRID = 13107;                           // a fifth of the scale between two grid lines
constexpr int LEFT = 70, TOP = 30, RIGHT = 90, BOTTOM = 50; // margins in units of the picture
constexpr int WIDTH = 640, HEIGHT = 640;                    // of the plot itself
constexpr std::size_t STEP_LABELS_MAX = 48;

double Scale_X(int threshold)
{
    return LEFT + static_cast<double>(threshold) * WIDTH / SCALE_MAX;
}

/// Top of a row's bar.
double Row_Y(std::size_t row, std::size_t rowCount)
{
    return TOP + static_cast<double>(row) * HEIGHT / static_cast<double>(rowCount);
}

void Head_Add(std::ostream& svg)
{
    const int width = LEFT + WIDTH + RIGHT;
    const int height = TOP + HEIGHT + BOTTOM;
    Svg_Begin(svg, width, height, "Cut table: threshold ranges of the nozzle rows",
              ".grid {stroke: #ddd}\n.step {stroke: #c33; stroke-dasharray: 4 3}\n"
              ".bar {fill: #3b6ea5; shape-rendering: crispEdges}\n.frame {fill: none; stroke: #333}\n");
    Rect_Add(svg, "paper", 0, 0, width, height);
}

void Grid_Add(std::ostream& svg, std::size_t rowCount)
{
    for (int threshold = 0; threshold <= SCALE_MAX; threshold += SCALE_GRID) {
        Line_Add(svg, "grid", Scale_X(threshold), TOP, Scale_X(threshold), TOP + HEIGHT);
        Text_Add(svg, "middle", Scale_X(threshold), TOP + HEIGHT + 16, std::to_string(threshold));
    }
    for (std::size_t row = 0; row <= rowCount; row += Ruler_Rows(rowCount)) {
        const double y = Row_Y(row, rowCount);
        Line_Add(svg, "grid", LEFT, y, LEFT + WIDTH, y);
        Text_Add(svg, "end", LEFT - 6, y + 4, std::to_string(row));
    }
}

void Bars_Add(std::ostream& svg, const std::vector<SCutTable>& rows)
{
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const SCutTable& range = rows[row];
        if (CutRange_Size(range) == 0)
            continue;
        const double x = Scale_X(range.lowerLimit);
        const double y = Row_Y(row, rows.size());
        Rect_Add(svg, "bar", x, y, Scale_X(range.upperLimit) - x, Row_Y(row + 1, rows.size()) - y);
    }
}

void Steps_Add(std::ostream& svg, std::size_t rowCount, std::size_t stepRows)
{
    const bool isLabelled = rowCount / stepRows <= STEP_LABELS_MAX; // more labels would overlap
    for (std::size_t step = 1; step * stepRows <= rowCount; ++step) {
        const double y = Row_Y(step * stepRows, rowCount);
        Line_Add(svg, "step", LEFT, y, LEFT + WIDTH + 6, y);
        if (isLabelled)
            Text_Add(svg, "start", LEFT + WIDTH + 10, y + 4,
                     "step " + std::to_string(step) + ": " + std::to_string(step * stepRows));
    }
}

void Titles_Add(std::ostream& svg)
{
    Rect_Add(svg, "frame", LEFT, TOP, WIDTH, HEIGHT);
    Text_Add(svg, "middle", LEFT + WIDTH / 2.0, TOP + HEIGHT + 38,
             "threshold; a bar covers lower &lt; threshold &lt;= upper");
    svg << "<text text-anchor='middle' transform='translate(16 " << TOP + HEIGHT / 2
        << ") rotate(-90)'>nozzle row</text>\n";
}

} // namespace

std::string CutTablePlot_Svg(const SCutTableView& view)
{
    std::ostringstream svg;
    svg.imbue(std::locale::classic());
    Head_Add(svg);
    Grid_Add(svg, view.rows.size());
    Bars_Add(svg, view.rows);
    Steps_Add(svg, view.rows.size(), static_cast<std::size_t>(std::max(view.stepRows, 1)));
    Titles_Add(svg);
    svg << "</svg>\n";
    return svg.str();
}

} // namespace dotweave
