#include "picture/maskdrawing.h"

#include "picture/contactsheet.h"
#include "picture/pixelpaint.h"
#include "record/recordfields.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace dotweave;

namespace {

constexpr std::uint8_t BITS[] = {0b10100000, 0b01000000}; // 3 pixels of 2 lines: #.# and .#.
constexpr SMaskLines LINES = {BITS, 3, 2, 1, 1};

/// The picture as text: '#' for black, '.' for white, '+' for anything between.
std::vector<std::string> Rows(const SPixelPicture& picture)
{
    std::vector<std::string> rows(static_cast<std::size_t>(picture.height));
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        rows[i / static_cast<std::size_t>(picture.width)] += picture.pixels[i] == 0     ? '#'
                                                             : picture.pixels[i] == 255 ? '.'
                                                                                        : '+';
    return rows;
}

} // namespace

TEST(MaskDrawing, AWindowIsMagnified)
{
    EXPECT_EQ(Rows(MaskDrawing_Make(LINES, {0, 2, 0, 3, 2}, "", false)),
              (std::vector<std::string>{"##..##", "##..##", "..##..", "..##.."}));
    EXPECT_EQ(Rows(MaskDrawing_Make(LINES, {1, 1, 1, 2, 1}, "", false)), (std::vector<std::string>{"#."}));
    EXPECT_EQ(MaskDrawing_Pixels({0, 2, 0, 3, 2}, "", false), 24);
}

TEST(MaskDrawing, LargePixelsAreSeparatedByAGrid)
{
    const std::vector<std::string> rows = Rows(MaskDrawing_Make(LINES, {0, 2, 0, 2, 6}, "", false));
    EXPECT_EQ(rows,
              (std::vector<std::string>{"#####+.....+", "#####+.....+", "#####+.....+", "#####+.....+",
                                        "#####+.....+", "++++++++++++", ".....+#####+", ".....+#####+",
                                        ".....+#####+", ".....+#####+", ".....+#####+", "++++++++++++"}));
}

/// The ruler's letters are those of the lettering, at the middle of the pixel that they name.
TEST(MaskDrawing, RulersNameLinesAndColumns)
{
    const std::vector<std::uint8_t> bytes(300, 0xFF);
    const SMaskLines lines = {bytes.data(), 24, 100, 3, 1};
    const SPixelPicture picture = MaskDrawing_Make(lines, {40, 30, 0, 24, 4}, "title", true);
    EXPECT_EQ(std::int64_t{picture.width} * picture.height,
              MaskDrawing_Pixels({40, 30, 0, 24, 4}, "title", true));
    const auto has = [&picture](int x, int y, const std::string& text) {
        SPixelPicture letters = Picture_Make(Text_Width(text), 7, 1, 255);
        Text_Paint(letters, 0, 0, text);
        for (int row = 0; row < letters.height; ++row)
            for (int column = 0; column < letters.width; ++column)
                if (letters.pixels[static_cast<std::size_t>(row * letters.width + column)] !=
                    picture.pixels[static_cast<std::size_t>((y + row) * picture.width + x + column)])
                    return false;
        return true;
    };
    // Rows: the title takes 23, column numbers and ticks 15. Columns: two digits 11, tick 4, gap 8.
    const int top = 38, left = 23;
    EXPECT_TRUE(has(left, 4, "title"));
    for (const int line : {40, 50, 60}) // 24 pixels are 6 lines, so every tenth line has a number
        EXPECT_TRUE(has(left - 7 - 11, top + (line - 40) * 4 + 2 - 3, std::to_string(line))) << line;
    // Two digits and a gap at either side are 27 pixels, which is 7 columns, so every tenth has a number.
    EXPECT_TRUE(has(left, top - 15, "0"));
    for (const int column : {10, 20})
        EXPECT_TRUE(has(left + column * 4 + 2 - 5, top - 15, std::to_string(column))) << column;
}

TEST(ContactSheet, ShowsEveryMaskByItsMean)
{
    SMaskParam param = RECORD_DEFAULT;
    param.nozzleCount = 16;
    param.basePass = 2;
    param.colorCount = 3;
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    const CMaskView view(mask);
    const SPixelPicture picture = ContactSheet_Make(view, 4);
    EXPECT_EQ(std::int64_t{picture.width} * picture.height, ContactSheet_Pixels(view, 4));
    // "colour 2" takes 47 pixels and the gap 10; the numbers above take 21.
    const int width = (mask.MaskWidth() + 3) / 4, height = 4;
    EXPECT_EQ(picture.width, 57 + view.PositionCount() * (width + 10));
    EXPECT_EQ(picture.height, 21 + 3 * (height + 10));
    for (int color = 0; color < 3; ++color)
        for (int position = 0; position < view.PositionCount(); ++position)
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    const SMaskLines lines = view.Lines(color, position);
                    int paper = 0;
                    for (int i = 0; i < 16; ++i)
                        paper += lines.Pixel(x * 4 + i % 4, y * 4 + i / 4) == 0 ? 1 : 0;
                    const int left = 57 + position * (width + 10), top = 21 + color * (height + 10);
                    ASSERT_EQ(picture.pixels[static_cast<std::size_t>((top + y) * picture.width + left + x)],
                              255 * paper / 16)
                        << color << ' ' << position << ' ' << x << ' ' << y;
                }
}

TEST(ContactSheet, IsReducedUntilItFits)
{
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(RECORD_DEFAULT)); // 4 positions of 544 columns
    const CMaskView view(mask);
    EXPECT_EQ(ContactSheet_Reduction(view, 57 + 4 * 554), 1);
    EXPECT_EQ(ContactSheet_Reduction(view, 57 + 4 * 554 - 1), 2);
    EXPECT_EQ(ContactSheet_Reduction(view, 57 + 4 * (136 + 10)), 4);
    EXPECT_EQ(ContactSheet_Reduction(view, 1), 544); // one pixel a mask is as narrow as it gets
}
