#include "picture/picturepng.h"
#include "report/htmltext.h"
#include "report/reportsections.h"
#include "sheet/idealsheet.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>

namespace dotweave {

namespace {

constexpr int PICTURE_LINES = 272, PICTURE_COLUMNS = 272;

using CColour = std::array<std::uint8_t, 3>;

/// Colours from dark to light, also told apart in grey: seven of the scale "viridis" of matplotlib.
constexpr CColour SCALE[] = {{68, 1, 84},    {70, 50, 126},  {54, 92, 141}, {39, 127, 142},
                             {31, 161, 135}, {74, 193, 109}, {253, 231, 37}};
constexpr CColour BARE = {255, 255, 255};

CColour Turn_Colour(int turn, int turnCount)
{
    constexpr int LAST = static_cast<int>(std::size(SCALE)) - 1;
    const double place = turnCount < 2 ? 0 : static_cast<double>(LAST) * turn / (turnCount - 1);
    const int below = std::min(static_cast<int>(place), LAST - 1);
    CColour colour = {};
    for (std::size_t i = 0; i < colour.size(); ++i)
        colour[i] = static_cast<std::uint8_t>(SCALE[below][i] +
                                              (SCALE[below + 1][i] - SCALE[below][i]) * (place - below));
    return colour;
}

std::string Colour_Text(const CColour& colour)
{
    return "rgb(" + std::to_string(colour[0]) + ' ' + std::to_string(colour[1]) + ' ' +
           std::to_string(colour[2]) + ')';
}

/// The turn that prints each pixel first, row-major; -1 for none.
std::vector<int> Turns(const CIdealSheet& sheet)
{
    std::vector<int> turns(sheet.Counts().size());
    auto turn = turns.begin();
    for (int line = 0; line < sheet.LineCount(); ++line) {
        for (int column = 0; column < sheet.ColumnCount(); ++column)
            *turn++ = sheet.FirstTurn(line, column);
    }
    return turns;
}

std::string Counts_Html(const CIdealSheet& cycle)
{
    std::map<int, std::int64_t> shares;
    for (const std::uint8_t count : cycle.Counts())
        ++shares[count];
    std::vector<std::vector<std::string>> rows;
    rows.reserve(shares.size());
    for (const auto& [count, pixels] : shares)
        rows.push_back(
            {Count_Text(count, "time", "times"), std::to_string(pixels),
             Number_Text(100.0 * static_cast<double>(pixels) / static_cast<double>(cycle.Counts().size()),
                         2) +
                 " %"});
    return Table_Html("How often a pixel is printed, on " + Count_Text(cycle.LineCount(), "line", "lines") +
                          " of " + Count_Text(cycle.ColumnCount(), "column", "columns"),
                      {"printed", "pixels", "share"}, rows);
}

/// The window after which the sheet repeats, cut off where it would take too long.
SSheetWindow Cycle(const CPassLayout& layout)
{
    constexpr std::int64_t PIXELS_MAX = 8'000'000;
    const std::int64_t lines = std::min<std::int64_t>(
        layout.CycleLines(), std::max<std::int64_t>(PIXELS_MAX / layout.MaskWidth(), layout.StepLines()));
    return {layout.SteadyLine_First(), static_cast<int>(lines), layout.MaskWidth()};
}

} // namespace

std::string SheetSection_Html(const CMaskData_Base& mask)
{
    const CPassLayout layout(mask);
    const SSheetWindow window = Report_Window(mask, PICTURE_LINES, PICTURE_COLUMNS);
    const CIdealSheet sheet(mask, REPORT_COLOR, window);
    const std::vector<int> turns = Turns(sheet);
    const int turnCount = std::max(*std::max_element(turns.begin(), turns.end()), 0) + 1;

    SPixelPicture picture = {window.columnCount, window.lineCount, 3, {}};
    std::vector<std::int64_t> pixels(static_cast<std::size_t>(turnCount));
    for (const int turn : turns) {
        const CColour colour = turn < 0 ? BARE : Turn_Colour(turn, turnCount);
        picture.pixels.insert(picture.pixels.end(), colour.begin(), colour.end());
        if (turn >= 0)
            ++pixels[static_cast<std::size_t>(turn)];
    }
    std::string legend = "<ul class='legend'>\n";
    for (int turn = 0; turn < turnCount; ++turn)
        legend += "<li><span class='chip' style='background: " + Colour_Text(Turn_Colour(turn, turnCount)) +
                  "'></span> pass " + std::to_string(turn + 1) + ": " +
                  Number_Text(100.0 * static_cast<double>(pixels[static_cast<std::size_t>(turn)]) /
                                  static_cast<double>(turns.size()),
                              1) +
                  " %</li>\n";
    legend += "</ul>\n";
    return "<p>Which pass over its line prints each pixel first, on a press without errors: colour 0, " +
           std::to_string(window.lineCount) + " lines from line " + std::to_string(window.firstLine) +
           " on, where the sheet has become steady, and " + std::to_string(window.columnCount) +
           " columns. The paper advances " + Count_Text(layout.StepLines(), "line", "lines") +
           " a step. White pixels are never printed.</p>\n" + legend +
           Figure_Html(DataUri_Png(Picture_Png(picture)), "picture",
                       "The ideal sheet: the pass that prints each pixel, in the colours of the list above",
                       "") +
           Counts_Html(CIdealSheet(mask, REPORT_COLOR, Cycle(layout)));
}

} // namespace dotweave
