#include "sheet/inkplanes.h"

#include "sheet/tint.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

using namespace dotweave;

namespace {

using CAmounts = std::vector<std::uint8_t>;

/// White, black, red, mid grey, and a colour of no special kind.
const SPixelPicture COLOURS = {5, 1, 3, {255, 255, 255, 0, 0, 0, 255, 0, 0, 128, 128, 128, 200, 100, 50}};

} // namespace

TEST(InkPlanes, ReplaceWhatThreeInksShareByBlack)
{
    const std::vector<SInkPlane> planes = InkPlanes_Colour(COLOURS);
    ASSERT_EQ(planes.size(), 4U);
    EXPECT_EQ(planes[0].amounts, (CAmounts{0, 255, 0, 127, 55})); // black
    EXPECT_EQ(planes[1].amounts, (CAmounts{0, 0, 0, 0, 0}));      // cyan
    EXPECT_EQ(planes[2].amounts, (CAmounts{0, 0, 255, 0, 100}));  // magenta
    EXPECT_EQ(planes[3].amounts, (CAmounts{0, 0, 255, 0, 150}));  // yellow
    EXPECT_EQ(planes[3].width, 5);
    EXPECT_EQ(planes[3].height, 1);
}

/// What one ink takes away of its colour and what black takes away make up the picture again, for every colour.
TEST(InkPlanes, AddUpToThePicture)
{
    SPixelPicture picture = {0, 1, 3, {}};
    for (int red = 0; red < 256; red += 15) {
        for (int green = 0; green < 256; green += 17) {
            for (int blue = 0; blue < 256; blue += 5) {
                for (const int channel : {red, green, blue})
                    picture.pixels.push_back(static_cast<std::uint8_t>(channel));
                ++picture.width;
            }
        }
    }
    const std::vector<SInkPlane> planes = InkPlanes_Colour(picture);
    for (std::size_t i = 0; i < planes[0].amounts.size(); ++i) {
        int least = 255;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const int amount = planes[channel + 1].amounts[i];
            ASSERT_EQ(255 - amount - planes[0].amounts[i], picture.pixels[3 * i + channel]);
            least = std::min(least, amount);
        }
        ASSERT_EQ(least, 0); // no pixel has all three
    }
}

TEST(InkPlanes, OfGreyPicturesAreBlackAlone)
{
    const SPixelPicture grey = {3, 1, 1, {0, 100, 255}};
    const std::vector<SInkPlane> planes = InkPlanes_Colour(grey);
    EXPECT_EQ(planes[0].amounts, (CAmounts{255, 155, 0}));
    for (std::size_t ink = 1; ink < 4; ++ink)
        EXPECT_EQ(planes[ink].amounts, (CAmounts{0, 0, 0}));
    EXPECT_EQ(InkPlane_Grey(grey).amounts, planes[0].amounts);
}

/// Luma: red is 76.245, so black takes 179; (299 * 200 + 587 * 100 + 114 * 50) / 1000 = 124.2.
TEST(InkPlanes, WeighColoursByLuma)
{
    EXPECT_EQ(InkPlane_Grey(COLOURS).amounts, (CAmounts{0, 255, 179, 127, 131}));
}

/// An even plane of 51 is a tint of 20 %, pixel for pixel.
TEST(InkPlanes, AreScreenedAsTintsAre)
{
    for (const std::uint8_t amount : {std::uint8_t{0}, std::uint8_t{51}, std::uint8_t{255}}) {
        const SInkPlane plane = {600, 3, CAmounts(1800, amount)};
        const CBitImage image = InkPlane_Screen(plane, 2);
        const CBitImage tint = Tint_Make(amount / 255.0, 2);
        EXPECT_EQ(image.Edge(), EImageEdge::Blank);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 600; ++x)
                ASSERT_EQ(image.Pixel(x, y), tint.Pixel(x, y)) << x << ' ' << y;
        }
    }
}
