#include "picture/paperpicture.h"

#include "picture/pixelpaint.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace dotweave;

namespace {

std::array<int, 3> Pixel(const SPixelPicture& picture, int x, int y)
{
    const std::uint8_t* const pixel =
        picture.pixels.data() + (static_cast<std::ptrdiff_t>(y) * picture.width + x) * 3;
    return {pixel[0], pixel[1], pixel[2]};
}

constexpr std::array WHITE = {255, 255, 255};

/// Black pixels of a line, from the left side on; the words of the bar are further to the right.
int BarLength(const SPixelPicture& picture, int y)
{
    int x = 6;
    while (x < picture.width && Pixel(picture, x, y)[0] == 0)
        ++x;
    return x - 6;
}

} // namespace

TEST(PaperPicture, MakesPixelsSquare)
{
    const SPaperScale scale = {600, 2, 3}; // the least common multiple is 6 pixels a row pitch
    EXPECT_EQ(scale.ColumnTimes(), 3);
    EXPECT_EQ(scale.LineTimes(), 2);
    EXPECT_DOUBLE_EQ(scale.PixelsPerMm(), 3600 / 25.4);
    SPixelPicture picture = Picture_Make(100, 40, 3, 255);
    picture.pixels[(3 * 100 + 7) * 3] = 9; // column 7, line 3
    const SPixelPicture paper = PaperPicture_Make(picture, scale);
    EXPECT_EQ(paper.width, 300);
    int changed = 0;
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 300; ++x)
            changed += Pixel(paper, x, y) != WHITE ? 1 : 0;
    EXPECT_EQ(changed, 3 * 2);
    EXPECT_EQ(Pixel(paper, 21, 6)[0], 9);
    EXPECT_EQ(Pixel(paper, 23, 7)[0], 9);
}

TEST(PaperPicture, ScaleBarIsARoundLength)
{
    const struct {
        double rowsPerInch;
        int width;
        int bar; ///< pixels
    } CASES[] = {
        {254, 400, 100},  // 10 pixels a mm: a third is 13.3 mm, the bar 10 mm
        {254, 200, 50},   // 6.7 mm: 5 mm
        {2540, 300, 100}, // 100 pixels a mm: a third is 1 mm
        {25400, 210, 50}, // 1000 pixels a mm: 0.07 mm: 50 um
    };
    for (const auto& [rowsPerInch, width, bar] : CASES) {
        const SPixelPicture paper = PaperPicture_Make(Picture_Make(width, 5, 3, 255), {rowsPerInch, 1, 1});
        EXPECT_EQ(BarLength(paper, 5 + 7), bar) << rowsPerInch;
    }
}

TEST(PaperPicture, LegendIsBelow)
{
    const SPixelPicture plain = PaperPicture_Make(Picture_Make(200, 50, 3, 255), {600, 1, 1});
    const SPixelPicture paper = PaperPicture_Make(Picture_Make(200, 50, 3, 255), {600, 1, 1},
                                                  {{{1, 2, 3}, "one"}, {{4, 5, 6}, "two"}});
    EXPECT_GT(paper.height, plain.height);
    EXPECT_EQ(Pixel(paper, 8, plain.height + 2), (std::array{1, 2, 3}));
    EXPECT_EQ(Pixel(paper, 8, plain.height + 2 + LETTER_HEIGHT + 2), (std::array{4, 5, 6}));
}
