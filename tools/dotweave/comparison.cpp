#include "comparison.h"

#include "figuretexts.h"
#include "picture/pixelpaint.h"
#include "record/recordjson.h"
#include "sheet/inkcolours.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ostream>

namespace dotweave {

namespace {

using nlohmann::ordered_json;

constexpr double NOTICEABLE = 0.05; // share by which two figures differ before one of them wins
constexpr int CELL_SIDE = 260;      // pixels of a print on the contact sheet
constexpr int CELL_GAP = 10;

struct SJudgedFigure {
    const char* name;
    double (*value)(const SPatchFigures&);
};

constexpr SJudgedFigure JUDGED[] = {
    {"banding", [](const SPatchFigures& figures) { return figures.banding.rms; }},
    {"worst line", [](const SPatchFigures& figures) { return std::abs(figures.banding.worstDifference); }},
    {"graininess", [](const SPatchFigures& figures) { return figures.graininess; }},
};

template <typename... TValues>
std::string Formatted(const char* format, TValues... values)
{
    std::array<char, 200> text = {};
    static_cast<void>(std::snprintf(text.data(), text.size(), format, values...));
    return text.data();
}

/// -1 where the mode is better than its partner, 1 where it is worse, 0 where nobody sees the difference.
int Verdict(const SJudgedFigure& figure, const SPatchFigures& mode, const SPatchFigures& hard)
{
    const double ratio = (figure.value(mode) + 1e-9) / (figure.value(hard) + 1e-9);
    return ratio < 1 - NOTICEABLE ? -1 : ratio > 1 + NOTICEABLE ? 1 : 0;
}

std::string Advances_Text(const SComparison& comparison, const SComparedMode& mode,
                          const SJudgedFigure& figure, int verdict)
{
    const SComparedMode& hard = comparison.modes[static_cast<std::size_t>(mode.hardEdges)];
    std::string text;
    for (std::size_t i = 0; i < comparison.advances.size(); ++i)
        if (Verdict(figure, mode.figures[i], hard.figures[i]) == verdict)
            text += Formatted("%s%g", text.empty() ? "" : ", ", comparison.advances[i]);
    return text.empty() ? "-" : text;
}

void Verdicts_Print(const SComparison& comparison, const SComparedMode& mode, std::ostream& out)
{
    out << '\n' << mode.name << " against hard edges with the same step, by advance error:\n";
    for (const SJudgedFigure& figure : JUDGED)
        out << Formatted("  %-11s wins at %-18s loses at %-18s even at %s\n", figure.name,
                         Advances_Text(comparison, mode, figure, -1).c_str(),
                         Advances_Text(comparison, mode, figure, 1).c_str(),
                         Advances_Text(comparison, mode, figure, 0).c_str());
}

void Patch_Paint(const SPatchOptions& options, const SPatch& patch, int left, int top, SPixelPicture& sheet)
{
    const int color = 0;
    const SPixelPicture print = InkPicture({&patch, 1}, {&color, 1}, options);
    for (int y = 0; y < std::min(print.height, CELL_SIDE); ++y)
        std::copy_n(print.pixels.begin() + std::ptrdiff_t{y} * print.width * 3,
                    std::ptrdiff_t{std::min(print.width, CELL_SIDE)} * 3,
                    sheet.pixels.begin() + (std::ptrdiff_t{top + y} * sheet.width + left) * 3);
}

} // namespace

void Comparison_Print(const SComparison& comparison, std::ostream& out)
{
    int width = 4;
    for (const SComparedMode& mode : comparison.modes)
        width = std::max(width, static_cast<int>(mode.name.size()));
    out << Formatted("%-*s  step rows   area  advance  banding  graininess  worst line\n", width, "mode");
    for (const SComparedMode& mode : comparison.modes)
        for (std::size_t i = 0; i < comparison.advances.size(); ++i)
            out << Formatted("%-*s  %9g  %5.2f  %7g  %7.3f  %10.3f  %10.3f\n", width,
                             i == 0 ? mode.name.c_str() : "", mode.stepRows, comparison.RelativeArea(mode),
                             comparison.advances[i], mode.figures[i].banding.rms, mode.figures[i].graininess,
                             mode.figures[i].banding.worstDifference);
    for (const SComparedMode& mode : comparison.modes)
        if (mode.hardEdges >= 0)
            Verdicts_Print(comparison, mode, out);
}

ordered_json Comparison_Json(const SComparison& comparison)
{
    ordered_json modes = ordered_json::array();
    for (const SComparedMode& mode : comparison.modes) {
        ordered_json prints = ordered_json::array();
        for (std::size_t i = 0; i < comparison.advances.size(); ++i)
            prints.push_back(
                {{"advance", comparison.advances[i]}, {"figures", Figures_Json(mode.figures[i])}});
        modes.push_back({{"name", mode.name},
                         {"mode", Record_Json(mode.param)},
                         {"stepRows", mode.stepRows},
                         {"relativeArea", comparison.RelativeArea(mode)},
                         {"prints", prints}});
        if (mode.hardEdges >= 0)
            modes.back()["hardEdges"] = comparison.modes[static_cast<std::size_t>(mode.hardEdges)].name;
    }
    return {{"modes", modes}};
}

SPixelPicture Comparison_Sheet(const SComparison& comparison, const SPatchOptions& options)
{
    const int cell = CELL_SIDE + CELL_GAP;
    const int row = cell + LETTER_HEIGHT;
    SPixelPicture sheet = Picture_Make(CELL_GAP + static_cast<int>(comparison.advances.size()) * cell,
                                       CELL_GAP + static_cast<int>(comparison.modes.size()) * row, 3, 255);
    for (std::size_t m = 0; m < comparison.modes.size(); ++m)
        for (std::size_t i = 0; i < comparison.advances.size(); ++i) {
            const int left = CELL_GAP + static_cast<int>(i) * cell;
            const int top = CELL_GAP + static_cast<int>(m) * row;
            Text_Paint(sheet, left, top,
                       Formatted("%.34s, %g", comparison.modes[m].name.c_str(), comparison.advances[i]));
            Patch_Paint(options, comparison.modes[m].patches[i], left, top + LETTER_HEIGHT, sheet);
        }
    return sheet;
}

} // namespace dotweave
