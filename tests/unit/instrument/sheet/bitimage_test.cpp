#include "sheet/bitimage.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

/// Ink where 3 x + 5 y is a multiple of 7; 11 by 6 pixels.
CBitImage Image(EImageEdge edge)
{
    CBitImage image(11, 6, edge);
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 11; ++x) {
            if ((3 * x + 5 * y) % 7 == 0)
                image.Pixel_Set(x, y);
        }
    }
    return image;
}

int Remainder(std::int64_t value, int size)
{
    return static_cast<int>((value % size + size) % size);
}

} // namespace

TEST(BitImage, IsBlankOrAgainBesideItself)
{
    const CBitImage blank = Image(EImageEdge::Blank);
    const CBitImage repeated = Image(EImageEdge::Repeat);
    for (int y = -13; y < 20; ++y) {
        for (int x = -25; x < 40; ++x) {
            const bool isInside = x >= 0 && x < 11 && y >= 0 && y < 6;
            const bool isInk = (3 * Remainder(x, 11) + 5 * Remainder(y, 6)) % 7 == 0;
            EXPECT_EQ(blank.Pixel(x, y), isInside && isInk) << x << ' ' << y;
            EXPECT_EQ(repeated.Pixel(x, y), isInk) << x << ' ' << y;
        }
    }
}

TEST(BitImage, UnpacksAnyPartOfALine)
{
    for (const EImageEdge edge : {EImageEdge::Blank, EImageEdge::Repeat}) {
        const CBitImage image = Image(edge);
        for (int y = -2; y < 8; ++y) {
            for (int x = -15; x < 15; ++x) {
                for (const int count : {0, 1, 10, 11, 12, 40}) {
                    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(count) + 1, 9);
                    image.Line_Unpack(x, y, count, pixels.data());
                    EXPECT_EQ(pixels.back(), 9) << "written past the end";
                    for (int i = 0; i < count; ++i)
                        ASSERT_EQ(pixels[static_cast<std::size_t>(i)], image.Pixel(x + i, y) ? 1 : 0);
                }
            }
        }
    }
}

TEST(BitImage, NeedsAPixel)
{
    EXPECT_THROW(CBitImage(0, 5, EImageEdge::Blank), std::invalid_argument);
    EXPECT_THROW(CBitImage(5, -1, EImageEdge::Repeat), std::invalid_argument);
}
