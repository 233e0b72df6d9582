#include "picture/maskpicture.h"
#include "report/htmltext.h"
#include "report/reportsections.h"
#include "view/maskview.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>

namespace dotweave {

namespace {

constexpr std::int64_t PIXELS_MAX = 9'000'000; // of all masks: about a megabyte and a half in the page
constexpr int SIDE_LEAST = 256;                // masks are cut down to this before some are left out

/// What a report shows of the masks.
struct SShown {
    int colorCount;
    int positionCount;
    int width;
    int height;
};

SShown Shown(const CMaskView& view)
{
    const SMaskLines lines = view.Lines(0, 0);
    SShown shown = {view.ColorCount(), view.PositionCount(), lines.width, lines.height};
    const auto pixels = [&shown] {
        return std::int64_t{shown.colorCount} * shown.positionCount * shown.width * shown.height;
    };
    for (int* side : {&shown.width, &shown.height}) {
        const std::int64_t others = pixels() / *side;
        *side = std::min(*side, std::max(SIDE_LEAST, static_cast<int>(PIXELS_MAX / others)));
    }
    for (int* count : {&shown.positionCount, &shown.colorCount}) {
        const std::int64_t others = pixels() / *count;
        *count = std::clamp(static_cast<int>(PIXELS_MAX / others), 1, *count);
    }
    return shown;
}

std::string Picture(const CMaskView& view, const SShown& shown, int color, int position)
{
    SMaskLines lines = view.Lines(color, position);
    lines.width = shown.width;
    lines.height = shown.height;
    return DataUri_Png(MaskPicture_Png(lines));
}

std::string Slider_Html(const std::string& id, const std::string& name, int count)
{
    return "<label for='" + id + "'>" + name + " <output id='" + id + "-value' for='" + id +
           "'>0</output></label>\n<input type='range' id='" + id + "' min='0' max='" +
           std::to_string(count - 1) + "' value='0' step='1'" + (count < 2 ? " disabled" : "") + ">\n";
}

} // namespace

std::string MaskSection_Html(const CMaskData_Base& mask)
{
    const CMaskView view(mask);
    const SShown shown = Shown(view);
    const SMaskLines lines = view.Lines(0, 0);
    std::string html = "<p>What one pass prints of a full tone. A pixel of the picture is a pixel of the "
                       "mask, black where a dot is set. A mask has " +
                       Count_Text(lines.height, "line", "lines") + " of " +
                       Count_Text(lines.width, "pixel", "pixels") + ".";
    if (shown.width < lines.width || shown.height < lines.height)
        html += " Shown are the first " + std::to_string(shown.height) + " lines and " +
                std::to_string(shown.width) + " columns.";
    if (shown.colorCount < view.ColorCount() || shown.positionCount < view.PositionCount())
        html += " Shown are " + std::to_string(shown.colorCount) + " of " +
                Count_Text(view.ColorCount(), "colour", "colours") + " and " +
                std::to_string(shown.positionCount) + " of " +
                Count_Text(view.PositionCount(), "position", "positions") + ".";
    html += "</p>\n<div class='sliders'>\n<div>" + Slider_Html("mask-color", "Colour", shown.colorCount) +
            "</div>\n<div>" + Slider_Html("mask-position", "Position", shown.positionCount) +
            "</div>\n</div>\n";
    return html + "<figure class='picture'><img id='mask-picture' width='" + std::to_string(shown.width) +
           "' height='" + std::to_string(shown.height) + "' alt='Mask of colour 0, position 0' src='" +
           Picture(view, shown, 0, 0) +
           "'><figcaption id='mask-caption' aria-live='polite'>Colour 0, position 0.</figcaption>"
           "</figure>\n";
}

nlohmann::ordered_json MaskSection_Data(const CMaskData_Base& mask)
{
    const CMaskView view(mask);
    const SShown shown = Shown(view);
    auto pictures = nlohmann::ordered_json::array();
    for (int color = 0; color < shown.colorCount; ++color) {
        auto positions = nlohmann::ordered_json::array();
        for (int position = 0; position < shown.positionCount; ++position)
            positions.push_back(color == 0 && position == 0 ? std::string() // the page has it already
                                                            : Picture(view, shown, color, position));
        pictures.push_back(std::move(positions));
    }
    return {{"pictures", std::move(pictures)}};
}

} // namespace dotweave
