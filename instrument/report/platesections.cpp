#include "picture/cuttableplot.h"
#include "picture/dutyplot.h"
#include "report/htmltext.h"
#include "report/reportsections.h"
#include "view/cuttableview.h"
#include "view/duty.h"

#include <algorithm>
#include <cstddef>

namespace dotweave {

std::string CutTableSection_Html(CMaskData_Base& mask)
{
    const SCutTableView view = CutTable_View(mask);
    const auto idle = std::count_if(view.rows.begin(), view.rows.end(),
                                    [](const SCutTable& range) { return CutRange_Size(range) == 0; });
    const std::string text =
        Count_Text(static_cast<std::int64_t>(view.rows.size()), "nozzle row", "nozzle rows") + ", " +
        Count_Text(view.stepRows, "row", "rows") + " a step; " +
        Count_Text(idle, "row prints", "rows print") + " nothing.";
    return "<p>Each nozzle row prints the pixels whose threshold is in its range. " + Html_Escape(text) +
           " A dashed line marks every step of the paper: rows one step apart print the same line of the "
           "image, one pass apart.</p>\n" +
           Figure_Html(DataUri_Svg(CutTablePlot_Svg(view)), "plate",
                       "Cut table: a bar for the threshold range of every nozzle row. " + text, "");
}

std::string DutySection_Html(const CMaskData_Base& mask)
{
    const int colorCount = std::min<int>(mask.MaskParam_Current().colorCount, DUTY_PLOT_COLORS_MAX);
    std::vector<SColorDuty> colors;
    std::vector<std::vector<std::string>> rows;
    for (int color = 0; color < colorCount; ++color) {
        const SColorDuty duty = Duty_Count(mask, color);
        rows.push_back({"colour " + std::to_string(color), Number_Text(100 * duty.MeanShare(), 2) + " %",
                        Number_Text(100 * duty.Evenness(), 1) + " %", std::to_string(duty.IdleCount()),
                        std::to_string(duty.LongestRun()),
                        Number_Text(100 * duty.TogetherShare(), 1) + " %"});
        colors.push_back(duty);
    }
    return "<p>How much the nozzle rows work in a full tone, over all band positions. Evenness is the mean "
           "share divided by the busiest row's: 100 % when all rows work the same.</p>\n" +
           Table_Html("Work of the nozzle rows",
                      {"plane", "mean share", "evenness", "idle rows", "longest run, dots",
                       "dots beside a neighbour's"},
                      rows) +
           Figure_Html(DataUri_Svg(DutyPlot_Svg(colors)), "plate",
                       "Share of the pixels that each nozzle row prints, a panel for each colour", "");
}

} // namespace dotweave
