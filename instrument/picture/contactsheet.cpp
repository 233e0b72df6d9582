#include "picture/contactsheet.h"

#include "picture/pixelpaint.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace dotweave {

namespace {

constexpr std::uint8_t PAPER = 255, BACKGROUND = 225;
constexpr int GAP = 10; // between two masks
constexpr int TOP = LETTER_HEIGHT + GAP;

/// Sizes of a sheet.
struct SPlan {
    int left; // of the first mask
    int maskWidth;
    int maskHeight;
    std::int64_t width;
    std::int64_t height;
};

std::string Color_Label(int color)
{
    return "colour " + std::to_string(color);
}

SPlan Plan(const CMaskView& view, int reduction)
{
    const SMaskLines first = view.Lines(0, 0);
    SPlan plan = {};
    plan.left = Text_Width(Color_Label(view.ColorCount() - 1)) + GAP;
    plan.maskWidth = (first.width + reduction - 1) / reduction;
    plan.maskHeight = (first.height + reduction - 1) / reduction;
    plan.width = plan.left + std::int64_t{view.PositionCount()} * (plan.maskWidth + GAP);
    plan.height = TOP + std::int64_t{view.ColorCount()} * (plan.maskHeight + GAP);
    return plan;
}

/// One mask, reduced. Blocks at the right and the lower edge may be smaller.
void Mask_Paint(SPixelPicture& picture, const SMaskLines& lines, int reduction, int left, int top)
{
    const int width = (lines.width + reduction - 1) / reduction;
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(lines.width));
    std::vector<int> dotCounts(static_cast<std::size_t>(width));
    for (int firstLine = 0; firstLine < lines.height; firstLine += reduction) {
        const int lineCount = std::min(reduction, lines.height - firstLine);
        std::fill(dotCounts.begin(), dotCounts.end(), 0);
        for (int y = firstLine; y < firstLine + lineCount; ++y) {
            lines.Line_Unpack(y, pixels.data());
            for (std::size_t x = 0; x < pixels.size(); ++x)
                dotCounts[x / static_cast<std::size_t>(reduction)] += pixels[x] != 0 ? 1 : 0;
        }
        for (int x = 0; x < width; ++x) {
            const int cells = lineCount * std::min(reduction, lines.width - x * reduction);
            const int share = PAPER * (cells - dotCounts[static_cast<std::size_t>(x)]) / cells;
            Rect_Paint(picture, left + x, top + firstLine / reduction, 1, 1,
                       static_cast<std::uint8_t>(share));
        }
    }
}

} // namespace

std::int64_t ContactSheet_Pixels(const CMaskView& view, int reduction)
{
    const SPlan plan = Plan(view, reduction);
    return plan.width * plan.height;
}

int ContactSheet_Reduction(const CMaskView& view, int width)
{
    int reduction = 1;
    while (Plan(view, reduction).width > width && Plan(view, reduction).maskWidth > 1)
        ++reduction;
    return reduction;
}

SPixelPicture ContactSheet_Make(const CMaskView& view, int reduction)
{
    const SPlan plan = Plan(view, reduction);
    SPixelPicture picture =
        Picture_Make(static_cast<int>(plan.width), static_cast<int>(plan.height), 1, BACKGROUND);
    for (int position = 0; position < view.PositionCount(); ++position) {
        const int x = plan.left + position * (plan.maskWidth + GAP);
        const std::string number = std::to_string(position);
        const std::string label = "position " + number;
        Text_Paint(picture, x, GAP / 2, Text_Width(label) <= plan.maskWidth ? label : number);
    }
    for (int color = 0; color < view.ColorCount(); ++color) {
        const int y = TOP + color * (plan.maskHeight + GAP);
        Text_Paint(picture, GAP / 2, y, Color_Label(color));
        for (int position = 0; position < view.PositionCount(); ++position)
            Mask_Paint(picture, view.Lines(color, position), reduction,
                       plan.left + position * (plan.maskWidth + GAP), y);
    }
    return picture;
}

} // namespace dotweave
