#include "picture/pixelpaint.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

/// A grey picture as text: '#' for 0, '.' for 255.
std::vector<std::string> Rows(const SPixelPicture& picture)
{
    std::vector<std::string> rows(static_cast<std::size_t>(picture.height));
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        rows[i / static_cast<std::size_t>(picture.width)] += picture.pixels[i] == 0 ? '#' : '.';
    return rows;
}

SPixelPicture Letters(const std::string& text)
{
    SPixelPicture picture = Picture_Make(Text_Width(text), LETTER_HEIGHT, 1, 255);
    Text_Paint(picture, 0, 0, text);
    return picture;
}

} // namespace

TEST(PixelPaint, ATextIsSevenPixelsHigh)
{
    EXPECT_EQ(Rows(Letters("4g")),
              (std::vector<std::string>{"...#.......", "..##.......", ".#.#...####", "#..#..#...#",
                                        "#####.#...#", "...#..#...#", "...#...####", "..........#",
                                        ".......###.", "...........", "..........."}));
}

TEST(PixelPaint, AllLettersDiffer)
{
    std::set<std::vector<std::uint8_t>> pictures;
    for (char letter = ' '; letter <= '~'; ++letter)
        EXPECT_TRUE(pictures.insert(Letters(std::string{letter}).pixels).second) << letter;
    EXPECT_TRUE(pictures.insert(Letters("\xC3").pixels).second) << "a box";
}

TEST(PixelPaint, AScaledTextIsThatMuchLarger)
{
    EXPECT_EQ(Text_Width(""), 0);
    EXPECT_EQ(Text_Width("ab"), 11);
    EXPECT_EQ(Text_Width("ab", 3), 33);
    SPixelPicture small = Letters("1");
    SPixelPicture large = Picture_Make(15, 33, 3, 255);
    Text_Paint(large, 0, 0, "1", 0, 3);
    for (int y = 0; y < large.height; ++y)
        for (int x = 0; x < large.width; ++x)
            for (int channel = 0; channel < 3; ++channel)
                EXPECT_EQ(large.pixels[static_cast<std::size_t>((y * large.width + x) * 3 + channel)],
                          small.pixels[static_cast<std::size_t>(y / 3 * small.width + x / 3)]);
}

TEST(PixelPaint, WhatIsOutsideIsNotDrawn)
{
    SPixelPicture picture = Picture_Make(3, 2, 1, 255);
    Rect_Paint(picture, -5, -5, 6, 6, 0);
    Rect_Paint(picture, 2, 1, 100, 100, 0);
    Rect_Paint(picture, 5, 0, 4, 4, 0);
    Rect_Paint(picture, 1, 0, 0, 2, 0);
    EXPECT_EQ(Rows(picture), (std::vector<std::string>{"#..", "..#"}));
    Text_Paint(picture, -100, 0, "far away");
    EXPECT_EQ(Rows(picture), (std::vector<std::string>{"#..", "..#"}));
}

TEST(PixelPaint, RulersCountInOnesTwosAndFives)
{
    const std::vector<int> expected = {1, 2, 5, 5, 5, 10, 10, 10, 10, 10, 20};
    for (int least = 1; least <= 11; ++least)
        EXPECT_EQ(Ruler_Step(least), expected[static_cast<std::size_t>(least - 1)]) << least;
    EXPECT_EQ(Ruler_Step(51), 100);
    EXPECT_EQ(Ruler_Step(2001), 5000);
}
