#include "picture/maskdrawing.h"

#include "picture/pixelpaint.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace dotweave {

namespace {

constexpr std::uint8_t PAPER = 255, INK = 0, GRID = 200, TICK = 120;
constexpr int TICK_LENGTH = 4;
constexpr int MARGIN = 4;
constexpr int GAP = 8;                              // between things
constexpr int LINE_LABEL_LEAST = 24;                // pixels between two labels
constexpr int NUMBER_WIDTH_MAX = 10 * LETTER_WIDTH; // of an int

/// Where the dots of a drawing begin, and its size.
struct SPlan {
    int left;
    int top;
    std::int64_t width;
    std::int64_t height;
};

SPlan Plan(const SMaskWindow& window, const std::string& title, bool rulers)
{
    SPlan plan = {};
    plan.left =
        rulers ? Text_Width(std::to_string(window.firstLine + window.lineCount)) + TICK_LENGTH + GAP : 0;
    plan.top =
        (title.empty() ? 0 : MARGIN + LETTER_HEIGHT + GAP) + (rulers ? LETTER_HEIGHT + TICK_LENGTH : 0);
    const std::int64_t dots = std::int64_t{window.columnCount} * window.magnification;
    plan.width = plan.left + std::max<std::int64_t>(dots, title.empty() ? 0 : Text_Width(title)) +
                 (rulers ? NUMBER_WIDTH_MAX / 2 : 0);
    plan.height = plan.top + std::int64_t{window.lineCount} * window.magnification + (rulers ? GAP : 0);
    return plan;
}

void Dots_Paint(SPixelPicture& picture, const SMaskLines& lines, const SMaskWindow& window, const SPlan& plan)
{
    const int size = window.magnification;
    const int gap = size >= MAGNIFICATION_GRID ? 1 : 0;
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(lines.width));
    for (int y = 0; y < window.lineCount; ++y) {
        lines.Line_Unpack(window.firstLine + y, pixels.data());
        const std::uint8_t* const first = pixels.data() + window.firstColumn;
        for (int x = 0; x < window.columnCount; ++x) {
            if (first[x] != 0)
                Rect_Paint(picture, plan.left + x * size, plan.top + y * size, size - gap, size - gap, INK);
        }
    }
}

void Grid_Paint(SPixelPicture& picture, const SMaskWindow& window, const SPlan& plan)
{
    const int size = window.magnification;
    if (size < MAGNIFICATION_GRID)
        return;
    for (int x = 1; x <= window.columnCount; ++x)
        Rect_Paint(picture, plan.left + x * size - 1, plan.top, 1, window.lineCount * size, GRID);
    for (int y = 1; y <= window.lineCount; ++y)
        Rect_Paint(picture, plan.left, plan.top + y * size - 1, window.columnCount * size, 1, GRID);
}

/// Numbers of lines at the left and of columns at the top, each with a tick at the middle of its pixels.
void Rulers_Paint(SPixelPicture& picture, const SMaskWindow& window, const SPlan& plan)
{
    const int size = window.magnification;
    const int middle = size / 2;
    const auto least = [size](int pixels) { return (pixels + size - 1) / size; };
    const int lineStep = Ruler_Step(least(LINE_LABEL_LEAST));
    for (int line = window.firstLine; line < window.firstLine + window.lineCount; ++line) {
        if (line % lineStep != 0)
            continue;
        const std::string number = std::to_string(line);
        const int y = plan.top + (line - window.firstLine) * size + middle;
        Rect_Paint(picture, plan.left - TICK_LENGTH - 1, y, TICK_LENGTH, 1, TICK);
        Text_Paint(picture, plan.left - TICK_LENGTH - 3 - Text_Width(number), y - 3, number);
    }
    Rect_Paint(picture, plan.left - 1, plan.top - 1, 1, window.lineCount * size + 1, TICK);
    Rect_Paint(picture, plan.left - 1, plan.top - 1, window.columnCount * size + 1, 1, TICK);
    const int widest = Text_Width(std::to_string(window.firstColumn + window.columnCount));
    const int columnStep = Ruler_Step(least(widest + 2 * GAP));
    for (int column = window.firstColumn; column < window.firstColumn + window.columnCount; ++column) {
        if (column % columnStep != 0)
            continue;
        const std::string number = std::to_string(column);
        const int x = plan.left + (column - window.firstColumn) * size + middle;
        Rect_Paint(picture, x, plan.top - TICK_LENGTH - 1, 1, TICK_LENGTH, TICK);
        Text_Paint(picture, std::max(plan.left, x - Text_Width(number) / 2),
                   plan.top - TICK_LENGTH - LETTER_HEIGHT, number);
    }
}

} // namespace

std::int64_t MaskDrawing_Pixels(const SMaskWindow& window, const std::string& title, bool rulers)
{
    const SPlan plan = Plan(window, title, rulers);
    return plan.width * plan.height;
}

SPixelPicture MaskDrawing_Make(const SMaskLines& lines, const SMaskWindow& window, const std::string& title,
                               bool rulers)
{
    const SPlan plan = Plan(window, title, rulers);
    SPixelPicture picture =
        Picture_Make(static_cast<int>(plan.width), static_cast<int>(plan.height), 1, PAPER);
    if (!title.empty())
        Text_Paint(picture, plan.left, MARGIN, title);
    if (rulers)
        Rulers_Paint(picture, window, plan);
    Grid_Paint(picture, window, plan);
    Dots_Paint(picture, lines, window, plan);
    return picture;
}

} // namespace dotweave
