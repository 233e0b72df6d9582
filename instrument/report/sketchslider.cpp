#include "report/sketchslider.h"

#include "report/htmltext.h"
#include "report/reportsections.h"
#include "sheet/passlayout.h"

namespace dotweave {

namespace {

/// A constant error must not take back the whole move of the paper.
double Advance_Least(const CPassLayout& layout)
{
    return layout.AdvanceLines() > layout.YResPass() ? -SKETCH_ADVANCE_MOST : 0;
}

int Decimals(const SSketchSlider& slider)
{
    return slider.step >= 1 ? 0 : slider.step >= 0.01 ? 2 : 4;
}

/// A value without the zeros that say nothing.
std::string Value_Text(double value, const SSketchSlider& slider)
{
    std::string text = Number_Text(value, Decimals(slider));
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text;
}

/// A button that sets a slider to a value. @param id  of the slider
std::string Mark_Html(const SSketchSlider& slider, const std::string& id, double mark)
{
    const std::string share = Number_Text((mark - slider.least) / (slider.most - slider.least), 4);
    const std::string value = Value_Text(mark, slider);
    const std::string text = slider.member == nullptr && mark < 0 ? "none" : value;
    return "<button type='button' data-for='" + id + "' data-value='" + value + "' style='--share: " + share +
           "' aria-label='" + slider.name + ' ' + text + "'>" + text + "</button>";
}

} // namespace

std::vector<SSketchSlider> SketchSliders_Get(const CMaskData_Base& mask)
{
    const CPassLayout layout(mask);
    return {
        {"advance",
         "Advance error",
         "row pitches a move",
         Advance_Least(layout),
         SKETCH_ADVANCE_MOST,
         0.05,
         {0, 0.25, 0.5, 1},
         &SSheetErrors::advanceConstant},
        {"tilt",
         "Head tilt",
         "row pitches a row",
         -SKETCH_TILT_MOST,
         SKETCH_TILT_MOST,
         0.0005,
         {0, 0.0025, 0.005},
         &SSheetErrors::tilt},
        {"bidirectional",
         "Bidirectional offset",
         "row pitches",
         -SKETCH_BIDIRECTIONAL_MOST,
         SKETCH_BIDIRECTIONAL_MOST,
         0.05,
         {0, 0.5, 1},
         &SSheetErrors::bidirectional},
        {"dead",
         "Dead nozzle row",
         "-1 is none",
         -1,
         layout.RowCount() - 1.0,
         1,
         {-1, static_cast<double>(Report_DeadRow(mask))},
         nullptr},
    };
}

std::string SketchSlider_Html(const SSketchSlider& slider)
{
    const std::string id = std::string("sketch-") + slider.id;
    const double start = slider.marks.front();
    std::string html = "<div class='slider'>\n<label for='" + id + "'>" + slider.name + ", " + slider.unit +
                       ": <output id='" + id + "-value' for='" + id + "'>" + Value_Text(start, slider) +
                       "</output></label>\n<input type='range' id='" + id + "' data-error='" + slider.id +
                       "' min='" + Value_Text(slider.least, slider) + "' max='" +
                       Value_Text(slider.most, slider) + "' step='" + Value_Text(slider.step, slider) +
                       "' value='" + Value_Text(start, slider) + "'>\n<div class='marks'>";
    for (const double mark : slider.marks)
        html += Mark_Html(slider, id, mark);
    return html + "</div>\n</div>\n";
}

} // namespace dotweave
