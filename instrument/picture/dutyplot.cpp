#include "picture/dutyplot.h"

#include "picture/svgparts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <locale>
#include <sstream>

namespace dotweave {

namespace {

constexpr int LEFT = 70, TOP = 46, RIGHT = 20, BOTTOM = 56; // margins
constexpr int HEIGHT = 480, GAP = 14;
constexpr int WIDTH_MOST = 960, PANEL_MOST = 220, PANEL_LEAST = 36;
constexpr int PANEL_LABELLED = 90; // narrower panels have no room for numbers at both ends

/// Where things are.
struct SPlan {
    std::size_t colorCount;
    std::size_t rowCount;
    int panelWidth;
    int scalePercent; ///< at the right edge of a panel
    double Panel_X(std::size_t color) const { return LEFT + static_cast<double>(color) * (panelWidth + GAP); }
    double Row_Y(std::size_t row) const
    {
        return TOP + static_cast<double>(row) * HEIGHT / static_cast<double>(rowCount);
    }
};

SPlan Plan(std::span<const SColorDuty> colors)
{
    SPlan plan = {std::min(colors.size(), DUTY_PLOT_COLORS_MAX), 1, PANEL_MOST, 1};
    double most = 0.0;
    for (const SColorDuty& color : colors) {
        plan.rowCount = std::max(plan.rowCount, color.rows.size());
        for (const SRowDuty& row : color.rows)
            most = std::max(most, color.Share(row));
    }
    plan.scalePercent = std::max(5, static_cast<int>(std::ceil(most * 20.0)) * 5);
    plan.panelWidth =
        std::clamp(WIDTH_MOST / static_cast<int>(std::max<std::size_t>(plan.colorCount, 1)) - GAP,
                   PANEL_LEAST, PANEL_MOST);
    return plan;
}

/// One outline for all rows of a colour: a step for each.
void Rows_Add(std::ostream& svg, const SPlan& plan, const SColorDuty& color, double left)
{
    svg << "<path class='duty' d='M" << left << ' ' << plan.Row_Y(0);
    for (std::size_t row = 0; row < color.rows.size(); ++row) {
        const double share = color.Share(color.rows[row]) * 100.0 / plan.scalePercent;
        svg << 'H' << left + share * plan.panelWidth << 'V' << plan.Row_Y(row + 1);
    }
    svg << 'H' << left << "Z'/>\n";
}

void Panel_Add(std::ostream& svg, const SPlan& plan, const SColorDuty& color, std::size_t number)
{
    const double left = plan.Panel_X(number);
    const double right = left + plan.panelWidth;
    for (std::size_t row = 0; row <= plan.rowCount; row += Ruler_Rows(plan.rowCount))
        Line_Add(svg, "grid", left, plan.Row_Y(row), right, plan.Row_Y(row));
    Rows_Add(svg, plan, color, left);
    const double mean = left + color.MeanShare() * 100.0 / plan.scalePercent * plan.panelWidth;
    Line_Add(svg, "mean", mean, TOP, mean, TOP + HEIGHT);
    Rect_Add(svg, "frame", left, TOP, plan.panelWidth, HEIGHT);
    const bool isLabelled = plan.panelWidth >= PANEL_LABELLED;
    Text_Add(svg, "middle", (left + right) / 2, TOP - 8,
             (isLabelled ? "colour " : "") + std::to_string(number));
    if (isLabelled || number == 0)
        Text_Add(svg, "start", left, TOP + HEIGHT + 16, "0");
    if (isLabelled || number + 1 == plan.colorCount)
        Text_Add(svg, "end", right, TOP + HEIGHT + 16, std::to_string(plan.scalePercent) + " %");
}

} // namespace

std::string DutyPlot_Svg(std::span<const SColorDuty> colors)
{
    const SPlan plan = Plan(colors);
    std::ostringstream svg;
    svg.imbue(std::locale::classic());
    const int panels = static_cast<int>(plan.colorCount) * (plan.panelWidth + GAP) - GAP;
    const int width = LEFT + std::max(panels, PANEL_MOST) + RIGHT;
    const int height = TOP + HEIGHT + BOTTOM;
    Svg_Begin(svg, width, height, "Work of the nozzle rows in a full tone",
              ".grid {stroke: #ddd}\n.duty {fill: #3b6ea5}\n.mean {stroke: #c33; stroke-dasharray: 4 3}\n"
              ".frame {fill: none; stroke: #333}\n");
    Rect_Add(svg, "paper", 0, 0, width, height);
    for (std::size_t row = 0; row <= plan.rowCount; row += Ruler_Rows(plan.rowCount))
        Text_Add(svg, "end", LEFT - 6, plan.Row_Y(row) + 4, std::to_string(row));
    for (std::size_t color = 0; color < plan.colorCount; ++color)
        Panel_Add(svg, plan, colors[color], color);
    std::string caption = "share of the pixels that a nozzle row prints; dashed: mean";
    if (plan.colorCount < colors.size())
        caption += "; " + std::to_string(colors.size() - plan.colorCount) + " more colours";
    Text_Add(svg, "start", LEFT, TOP + HEIGHT + 40, caption);
    svg << "<text text-anchor='middle' transform='translate(16 " << TOP + HEIGHT / 2
        << ") rotate(-90)'>nozzle row</text>\n</svg>\n";
    return svg.str();
}

} // namespace dotweave
