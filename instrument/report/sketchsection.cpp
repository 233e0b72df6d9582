#include "report/sketchsection.h"

#include "figures/patchfigures.h"
#include "report/htmltext.h"
#include "report/reportsections.h"
#include "report/sketchslider.h"
#include "view/maskview.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace dotweave {

namespace {

using nlohmann::ordered_json;

constexpr int WINDOW_LINES = 272, WINDOW_COLUMNS = 64;
/// Bits, eight a byte, the first one in the most significant bit.
class CBits {
public:
    void Add(bool isSet)
    {
        if (m_count % 8 == 0)
            m_bytes.push_back(0);
        if (isSet)
            m_bytes.back() = static_cast<std::uint8_t>(m_bytes.back() | 0x80U >> m_count % 8U);
        ++m_count;
    }
    std::string Text() const { return Base64_Text(m_bytes); }

private:
    std::vector<std::uint8_t> m_bytes;
    unsigned int m_count = 0;
};

/// How far dots may come into the window from beside it, in lines and columns.
struct SMargin {
    int lines;
    int columns;
};

SMargin Margin(const CPassLayout& layout, const SPatchOptions& options)
{
    const double reach = options.dotDiameter / 2 + 2; // row pitches
    const double shiftX = SKETCH_TILT_MOST * layout.RowCount() / 2 + SKETCH_BIDIRECTIONAL_MOST;
    std::int64_t passes = 1; // an advance error grows from pass 0 on
    for (const SHeadPass& pass : layout.Passes(options.window.firstLine, options.window.lineCount))
        passes = std::max(passes, std::abs(pass.number));
    const double shiftY = SKETCH_ADVANCE_MOST * static_cast<double>(passes + 2);
    return {static_cast<int>(std::ceil((reach + shiftY) * layout.YResPass())),
            static_cast<int>(std::ceil((reach + shiftX) * layout.XResPass()))};
}

void Prints_Add(ordered_json& data, const CMaskData_Base& mask, const SPatchOptions& options)
{
    const CPassLayout layout(mask);
    const SMargin margin = Margin(layout, options);
    const std::int64_t first = options.window.firstLine - margin.lines;
    const std::int64_t count = options.window.lineCount + 2 * std::int64_t{margin.lines};
    auto passes = ordered_json::array(), prints = ordered_json::array();
    CBits fired;
    for (const SHeadPass& pass : layout.Passes(first, count)) {
        const SMaskLines lines = CMaskView(mask).Lines(REPORT_COLOR, pass.position);
        for (int row = 0; row < layout.RowCount(); ++row) {
            const std::int64_t line = layout.Line(pass, row);
            if (line < first || line >= first + count)
                continue;
            prints.push_back({passes.size(), row, line - options.window.firstLine});
            for (int column = -margin.columns; column < WINDOW_COLUMNS + margin.columns; ++column) {
                const int width = layout.MaskWidth();
                const int maskColumn = (column % width + width) % width;
                fired.Add(maskColumn % layout.XResPass() == pass.xPass &&
                          lines.Pixel(maskColumn, layout.MaskLine(pass, row)) != 0);
            }
        }
        passes.push_back({pass.number, pass.position, pass.xPass});
    }
    auto wanted = ordered_json::array();
    for (const double tint : REPORT_TINTS) {
        const std::unique_ptr<CBitImage> image = Report_Tint(tint);
        CBits bits;
        for (std::int64_t line = -margin.lines; line < options.window.lineCount + margin.lines; ++line) {
            for (int column = -margin.columns; column < WINDOW_COLUMNS + margin.columns; ++column)
                bits.Add(image == nullptr || image->Pixel(column, line));
        }
        wanted.push_back({{"tint", tint}, {"bits", bits.Text()}});
    }
    data["marginLines"] = margin.lines;
    data["marginColumns"] = margin.columns;
    data["passes"] = std::move(passes);
    data["prints"] = std::move(prints);
    data["fired"] = fired.Text();
    data["wanted"] = std::move(wanted);
}

/// Figures with as many digits as anybody reads.
double Rounded(double value)
{
    return std::round(value * 1e5) / 1e5;
}

ordered_json Mark(const CMaskData_Base& mask, double tint, const SSheetErrors& errors,
                  const SPatchOptions& options, const SViewing& viewing)
{
    const std::unique_ptr<CBitImage> image = Report_Tint(tint);
    const SPatchFigures figures = PatchFigures(mask, REPORT_COLOR, image.get(), errors, options, viewing);
    auto lines = ordered_json::array();
    for (const double lightness : figures.lines)
        lines.push_back(std::round(lightness * 1e3) / 1e3);
    return {{"tint", tint},
            {"advance", errors.advanceConstant},
            {"tilt", errors.tilt},
            {"bidirectional", errors.bidirectional},
            {"dead", errors.deadRows.empty() ? -1 : errors.deadRows.front()},
            {"meanLightness", Rounded(figures.meanLightness)},
            {"bandingRms", Rounded(figures.banding.rms)},
            {"plainRms", Rounded(figures.banding.plainRms)},
            {"lines", std::move(lines)}};
}

ordered_json Marks(const CMaskData_Base& mask, const SPatchOptions& options, const SViewing& viewing)
{
    auto marks = ordered_json::array();
    for (const double tint : REPORT_TINTS) {
        marks.push_back(Mark(mask, tint, {}, options, viewing));
        for (const SSketchSlider& slider : SketchSliders_Get(mask)) {
            for (std::size_t i = 1; i < slider.marks.size(); ++i) { // the first one means no error
                SSheetErrors errors;
                if (slider.member != nullptr)
                    errors.*slider.member = slider.marks[i];
                else
                    errors.deadRows = {static_cast<int>(slider.marks[i])};
                marks.push_back(Mark(mask, tint, errors, options, viewing));
            }
        }
    }
    return marks;
}

ordered_json Weights(const CPassLayout& layout, int lineCount, const SViewing& viewing)
{
    const double length = lineCount * RowPitchMm(viewing) / layout.YResPass();
    auto weights = ordered_json::array();
    for (int waves = 0; waves <= lineCount / 2; ++waves)
        weights.push_back(Rounded(ContrastSensitivity(CyclesPerDegree(waves / length, viewing.distanceMm))));
    return weights;
}

} // namespace

std::string SketchSection_Html(const CMaskData_Base& mask)
{
    std::string html =
        "<p>Your browser prints the same small window of the sheet again, by the same model, with the "
        "errors that you set. The buttons under a slider are settings that Dotweave has printed "
        "itself: there the profile shows its line dashed, and the table compares both.</p>\n"
        "<div class='sliders'>\n";
    for (const SSketchSlider& slider : SketchSliders_Get(mask))
        html += SketchSlider_Html(slider);
    html += "<div class='slider'><label for='sketch-tint'>Tint</label>\n<select id='sketch-tint'>";
    for (std::size_t i = 0; i < std::size(REPORT_TINTS); ++i)
        html += "<option value='" + std::to_string(i) + "'>" + Number_Text(100 * REPORT_TINTS[i], 0) +
                " %</option>";
    return html +
           "</select>\n<button type='button' id='sketch-reset'>No errors</button></div>\n</div>\n"
           "<p id='sketch-status' role='status'>This part needs JavaScript.</p>\n"
           "<div class='bench'>\n<canvas id='sketch-sheet' role='img' aria-label='The sheet with "
           "these "
           "errors'></canvas>\n<div id='sketch-profile'></div>\n"
           "<div class='table'><table id='sketch-figures'>\n<caption>Figures of this window</caption>\n"
           "<thead><tr><th scope='col'>figure</th><th scope='col'>browser</th><th "
           "scope='col'>Dotweave</th>"
           "</tr></thead>\n<tbody></tbody></table></div>\n</div>\n";
}

ordered_json SketchSection_Data(const CMaskData_Base& mask, const SReportOptions& options)
{
    const CPassLayout layout(mask);
    const SPatchOptions patch =
        Report_PatchOptions(Report_Window(mask, WINDOW_LINES, WINDOW_COLUMNS), options);
    ordered_json data = {{"window",
                          {{"firstLine", patch.window.firstLine},
                           {"lineCount", patch.window.lineCount},
                           {"columnCount", patch.window.columnCount},
                           {"dotDiameter", patch.dotDiameter},
                           {"supersample", patch.supersample},
                           {"paperReflectance", patch.paperReflectance},
                           {"inkReflectance", patch.inkReflectance},
                           {"xResPass", layout.XResPass()},
                           {"yResPass", layout.YResPass()},
                           {"rowCount", layout.RowCount()},
                           {"stepLines", layout.StepLines()}}}};
    Prints_Add(data, mask, patch);
    data["weights"] = Weights(layout, patch.window.lineCount, options.viewing);
    data["marks"] = Marks(mask, patch, options.viewing);
    return data;
}

} // namespace dotweave
