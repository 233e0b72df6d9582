#include "picture/paperpicture.h"

#include "picture/picturepng.h"
#include "picture/pixelpaint.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace dotweave {

namespace {

constexpr double MM_PER_INCH = 25.4;
constexpr int MARGIN = 6;
constexpr int BAR_HEIGHT = 4;
constexpr int SWATCH = 8;
constexpr int WIDTH_LEAST = 160; // room for the words below a narrow picture
constexpr std::size_t CHANNELS = 3;

void Pixel_Set(SPixelPicture& picture, int x, int y, const std::uint8_t* color)
{
    std::copy_n(color, CHANNELS,
                picture.pixels.begin() + (static_cast<std::ptrdiff_t>(y) * picture.width + x) *
                                             static_cast<std::ptrdiff_t>(CHANNELS));
}

void Picture_Copy(const SPixelPicture& from, int xTimes, int yTimes, SPixelPicture& to)
{
    for (int y = 0; y < from.height * yTimes; ++y)
        for (int x = 0; x < from.width * xTimes; ++x)
            Pixel_Set(to, x, y,
                      from.pixels.data() +
                          (static_cast<std::ptrdiff_t>(y / yTimes) * from.width + x / xTimes) *
                              static_cast<std::ptrdiff_t>(CHANNELS));
}

/// Length of the scale bar.
double Bar_Mm(double widthMm)
{
    const double most = widthMm / 3;
    const double power = std::pow(10.0, std::floor(std::log10(most)));
    for (const double factor : {5.0, 2.0})
        if (factor * power <= most)
            return factor * power;
    return power;
}

std::string Length_Text(double mm)
{
    const bool isMm = mm >= 0.999;
    return std::to_string(std::lround(isMm ? mm : mm * 1000)) + (isMm ? " mm" : " um");
}

void Bar_Paint(SPixelPicture& picture, int top, double widthMm, double pixelsPerMm)
{
    const double mm = Bar_Mm(widthMm);
    const int length = std::max(1, static_cast<int>(std::lround(mm * pixelsPerMm)));
    Rect_Paint(picture, MARGIN, top + MARGIN, length, BAR_HEIGHT, 0);
    Text_Paint(picture, MARGIN + length + MARGIN, top + MARGIN - 2, Length_Text(mm));
}

void Legend_Paint(SPixelPicture& picture, int top, const std::vector<SLegendEntry>& legend)
{
    for (const SLegendEntry& entry : legend) {
        for (int y = 0; y < SWATCH; ++y)
            for (int x = 0; x < SWATCH; ++x)
                Pixel_Set(picture, MARGIN + x, top + y, entry.color.data());
        Text_Paint(picture, 2 * MARGIN + SWATCH, top, entry.text);
        top += LETTER_HEIGHT + 2;
    }
}

} // namespace

int SPaperScale::ColumnTimes() const
{
    return std::lcm(columnsPerRow, linesPerRow) / columnsPerRow;
}

int SPaperScale::LineTimes() const
{
    return std::lcm(columnsPerRow, linesPerRow) / linesPerRow;
}

double SPaperScale::PixelsPerMm() const
{
    return rowsPerInch / MM_PER_INCH * std::lcm(columnsPerRow, linesPerRow);
}

SPixelPicture PaperPicture_Make(const SPixelPicture& picture, const SPaperScale& scale,
                                const std::vector<SLegendEntry>& legend)
{
    const int width = picture.width * scale.ColumnTimes();
    const int height = picture.height * scale.LineTimes();
    const int barHeight = 2 * MARGIN + LETTER_HEIGHT;
    const int legendHeight =
        static_cast<int>(legend.size()) * (LETTER_HEIGHT + 2) + (legend.empty() ? 0 : MARGIN);
    SPixelPicture paper = Picture_Make(std::max(width, WIDTH_LEAST), height + barHeight + legendHeight,
                                       static_cast<int>(CHANNELS), 255);
    Picture_Copy(picture, scale.ColumnTimes(), scale.LineTimes(), paper);
    Bar_Paint(paper, height, width / scale.PixelsPerMm(), scale.PixelsPerMm());
    Legend_Paint(paper, height + barHeight, legend);
    return paper;
}

std::vector<std::uint8_t> PaperPicture_Png(const SPixelPicture& picture, const SPaperScale& scale,
                                           const std::vector<SLegendEntry>& legend)
{
    return Picture_Png(PaperPicture_Make(picture, scale, legend),
                       static_cast<int>(std::lround(scale.PixelsPerMm() * 1000)));
}

} // namespace dotweave
