#include "figures/patchfigures.h"
#include "picture/picturepng.h"
#include "report/htmltext.h"
#include "report/lineplot.h"
#include "report/reportsections.h"
#include "sheet/idealsheet.h"
#include "sheet/inkcolours.h"
#include "sheet/tint.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <memory>

namespace dotweave {

namespace {

constexpr int FIGURE_LINES = 272, FIGURE_COLUMNS = 272;
constexpr int CLOSE_LINES = 64, CLOSE_COLUMNS = 128;

std::vector<std::string> Figure_Head(const std::string& first)
{
    return {first,     "mean L*",    "banding",   "its period, mm", "its period, steps",
            "streaks", "graininess", "worst line"};
}

std::vector<std::string> Figure_Row(const std::string& name, const SPatchFigures& figures)
{
    const SBanding& banding = figures.banding;
    const bool isEven = banding.peakAmplitude < 0.0005; // what is shown of it is 0: then it has no period
    return {name,
            Number_Text(figures.meanLightness, 2),
            Number_Text(banding.rms, 3),
            isEven ? "none" : Number_Text(banding.peakPeriodMm, 2),
            isEven ? "none" : Number_Text(banding.peakPeriodSteps, 2),
            Number_Text(figures.streaks.rms, 3),
            Number_Text(figures.graininess, 3),
            Number_Text(banding.worstDifference, 2)};
}

std::string Tint_Text(double share)
{
    return share == 1 ? "full tone" : "tint of " + Number_Text(100 * share, 0) + " %";
}

std::string Patch_Html(const SPatch& patch, const SPatchOptions& options, const std::string& alt,
                       const std::string& caption)
{
    const int colors[] = {REPORT_COLOR};
    return Figure_Html(DataUri_Png(Picture_Png(InkPicture({&patch, 1}, colors, options))), "patch", alt,
                       caption);
}

/// One tint under all errors of the paper's move: a table, the profiles, the patches.
std::string Tint_Html(const CMaskData_Base& mask, double tint, const SReportOptions& options)
{
    const SPatchOptions patchOptions =
        Report_PatchOptions(Report_Window(mask, FIGURE_LINES, FIGURE_COLUMNS), options);
    const std::unique_ptr<CBitImage> image = Report_Tint(tint);
    std::vector<std::vector<std::string>> rows;
    SLinePlot plot = {"L* of every line, " + Tint_Text(tint), "line", "L*", {}, 0, 0};
    std::string patches;
    for (const double advance : REPORT_ADVANCES) {
        SSheetErrors errors;
        errors.advanceConstant = advance;
        CFigureCollector collector(CPassLayout(mask), patchOptions.window, options.viewing);
        SPatch patch = {patchOptions.window.columnCount, patchOptions.window.lineCount, {}};
        Patch_Print(mask, REPORT_COLOR, image.get(), errors, patchOptions, [&](const SPatchLines& lines) {
            collector(lines);
            patch.reflectance.insert(patch.reflectance.end(), lines.reflectance,
                                     lines.reflectance + std::ptrdiff_t{lines.lineCount} * lines.width);
        });
        const SPatchFigures figures = collector.Figures();
        const std::string name = Number_Text(advance, 2);
        rows.push_back(Figure_Row(name, figures));
        SPlotLine line = {"advance " + name, {}, figures.lines};
        for (std::size_t i = 0; i < figures.lines.size(); ++i)
            line.x.push_back(static_cast<double>(i));
        plot.lines.push_back(std::move(line));
        patches += Patch_Html(patch, patchOptions,
                              "Printed patch, " + Tint_Text(tint) + ", every move of the paper off by " +
                                  name + " row pitches",
                              name + " row pitches");
    }
    const std::string title = tint == 1 ? "Full tone" : "Tint of " + Number_Text(100 * tint, 0) + " %";
    return "<h3>" + title + "</h3>\n" +
           Table_Html(title + ", by the error of every move of the paper",
                      Figure_Head("advance error, row pitches"), rows) +
           "<figure>" + LinePlot_Svg(plot) + "</figure>\n<div class='patches'>\n" + patches + "</div>\n";
}

/// Where a row prints, a steady line at least.
std::int64_t Row_Line(const CPassLayout& layout, int row)
{
    const std::int64_t first = layout.SteadyLine_First();
    for (const SHeadPass& pass : layout.Passes(first, 2 * std::int64_t{layout.StepLines()})) {
        if (pass.xPass == 0 && layout.Line(pass, row) >= first)
            return layout.Line(pass, row);
    }
    return first;
}

SPatch Cells_Print(const CMaskData_Base& mask, const SSheetErrors& errors, SPatchOptions options)
{
    options.wantsCells = true;
    const int side = options.supersample;
    SPatch patch = {options.window.columnCount * side, options.window.lineCount * side, {}};
    Patch_Print(mask, REPORT_COLOR, nullptr, errors, options, [&](const SPatchLines& lines) {
        const std::ptrdiff_t count =
            std::ptrdiff_t{lines.lineCount} * side * std::ptrdiff_t{lines.width} * side;
        patch.reflectance.insert(patch.reflectance.end(), lines.cells, lines.cells + count);
    });
    return patch;
}

} // namespace

int Report_DeadRow(const CMaskData_Base& mask)
{
    return CPassLayout(mask).RowCount() / 2;
}

SPatchOptions Report_PatchOptions(const SSheetWindow& window, const SReportOptions& options)
{
    SPatchOptions patch;
    patch.window = window;
    patch.dotDiameter = options.dotDiameter;
    patch.threadCount = options.threadCount;
    return patch;
}

std::unique_ptr<CBitImage> Report_Tint(double share)
{
    return share == 1 ? nullptr : std::make_unique<CBitImage>(Tint_Make(share, Tint_Matrix(REPORT_COLOR)));
}

SSheetWindow Report_Window(const CMaskData_Base& mask, int aboutLines, int columnCount)
{
    const CPassLayout layout(mask);
    const int steps = std::max(aboutLines / layout.StepLines(), 1);
    // Of a very long step only a part, so that the page stays small.
    const int lines = std::min(steps * layout.StepLines(), 2 * aboutLines);
    return {layout.SteadyLine_First(), lines, columnCount};
}

std::string FigureSection_Html(const CMaskData_Base& mask, const SReportOptions& options)
{
    const SSheetWindow window = Report_Window(mask, FIGURE_LINES, FIGURE_COLUMNS);
    std::string html =
        "<p>Every move of the paper is off by a share of the nozzle row pitch, and dots of " +
        Number_Text(options.dotDiameter, 2) + " row pitches are printed on " +
        Count_Text(window.lineCount, "line", "lines") + " of " +
        Count_Text(window.columnCount, "column", "columns") + " of colour 0; " +
        Number_Text(options.viewing.rowsPerInch, 0) + " nozzle rows an inch, seen from " +
        Number_Text(options.viewing.distanceMm, 0) +
        " mm. Banding, streaks and graininess are root mean squares in L*, weighted by the contrast "
        "sensitivity of the eye; smaller is better.</p>\n";
    for (const double tint : REPORT_TINTS)
        html += Tint_Html(mask, tint, options);
    return html;
}

std::string DeadRowSection_Html(const CMaskData_Base& mask, const SReportOptions& options)
{
    const int dead = Report_DeadRow(mask);
    SSheetErrors errors;
    errors.deadRows = {dead};
    const CPassLayout layout(mask);
    const SPatchOptions wide =
        Report_PatchOptions(Report_Window(mask, FIGURE_LINES, FIGURE_COLUMNS), options);
    const SPatchFigures whole = PatchFigures(mask, REPORT_COLOR, nullptr, {}, wide, options.viewing);
    const SPatchFigures lost = PatchFigures(mask, REPORT_COLOR, nullptr, errors, wide, options.viewing);
    const SPatchOptions close =
        Report_PatchOptions({Row_Line(layout, dead) - CLOSE_LINES / 2, CLOSE_LINES, CLOSE_COLUMNS}, options);
    const std::string row = "row " + std::to_string(dead);
    return "<p>Nozzle " + row + " of " + std::to_string(layout.RowCount()) + " prints nothing. " +
           Number_Text(100 * lost.printShare.WrongShare(), 2) +
           " % of the pixels of a full tone are printed less often than they should be, on " +
           Number_Text(100 * lost.printShare.WrongLineShare(), 2) + " % of the lines.</p>\n" +
           Table_Html("Full tone, with and without " + row, Figure_Head("nozzle rows"),
                      {Figure_Row("all print", whole), Figure_Row(row + " is dead", lost)}) +
           "<div class='patches wide'>\n" +
           Patch_Html(Cells_Print(mask, {}, close), close, "Close view of a full tone, all rows print",
                      "All rows print.") +
           Patch_Html(Cells_Print(mask, errors, close), close,
                      "Close view of the same lines without " + row + ": a light line in the middle",
                      "Nozzle " + row + " is dead.") +
           "</div>\n";
}

} // namespace dotweave
